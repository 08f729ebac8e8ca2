#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "core/fault.h"
#include "core/textfile.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

TEST(TextReader, ReadsFieldsAsTheProgramWritesThem) {
    TestFolder f;
    TextReader in(f.Write("a.txt",
                          "\"Title, with comma\",3, 2 ,#TRUE#\r\n"
                          "bare text , -1,,\"q\"\n"
                          "1 2\r\n"
                          "whole line, kept\r\n"));
    EXPECT_EQ(in.Text("title"), "Title, with comma");
    EXPECT_EQ(in.Int16("n"), 3);
    EXPECT_EQ(in.Single("x"), 2.0f);
    EXPECT_TRUE(in.Flag("flag"));
    EXPECT_EQ(in.Text("bare"), "bare text");
    EXPECT_TRUE(in.Flag("-1 is True"));
    EXPECT_EQ(in.Number("empty"), 0.0);
    EXPECT_EQ(in.Text("quoted"), "q");
    // A number field ends at a blank.
    EXPECT_EQ(in.Number("a"), 1);
    EXPECT_EQ(in.Number("b"), 2);
    EXPECT_EQ(in.Line("line"), "whole line, kept");
    EXPECT_THROW(in.Text("more"), FileFault);
    // Blank-separated files split on blanks and line ends; a line is still whole.
    TextReader blanks(f.Write("m.mde", "2\r\nFirst legend name\r\n  7 1\r\n"), TextReader::Mode::Blanks);
    EXPECT_EQ(blanks.Int16("count"), 2);
    EXPECT_EQ(blanks.Line("name"), "First legend name");
    EXPECT_EQ(blanks.Int16("id"), 7);
}

TEST(TextReader, ErrorsNameFileLineAndWhatWasExpected) {
    TestFolder f;
    TextReader in(f.Write("bad.phy", "\"HeatEx\",0.5\r\n\"ErodeRate\",fast\r\n"));
    in.Text("key");
    in.Single("HeatEx");
    // A value refused after it is read names its own line, though the reader has passed the line end.
    EXPECT_EQ(in.line(), 2);
    EXPECT_TRUE(test::Holds(test::FaultText([&] { in.Fail("HeatEx of 1 or more", "0.5"); }), {"bad.phy:1:"}));
    in.Text("key");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { in.Single("ErodeRate"); }), {"bad.phy:2", "ErodeRate", "'fast'"}));
    // So does a number that a blank-separated file carries over to the next line.
    TextReader blanks(f.Write("bad.mde", "2\r\n\r\n x\r\n"), TextReader::Mode::Blanks);
    blanks.Int16("count");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { blanks.Int16("id"); }), {"bad.mde:3:"}));
}

// Every number of the program's files is kept as a single: one beyond its range
// is refused where it stands, and a huge field is quoted only in part.
TEST(TextReader, NumbersBeyondASingleAndHugeFieldsAreRefusedNamingTheLine) {
    TestFolder f;
    TextReader in(f.Write("huge.phy", "\"ErodeRate\",3E+38\r\n\"HeatEx\",1e40\r\n\"Angle\",-1e39\r\n"));
    in.Text("key");
    EXPECT_FLOAT_EQ(in.Single("ErodeRate"), 3e38f);
    in.Text("key");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { in.Single("HeatEx"); }), {"huge.phy:2", "HeatEx", "single", "'1e40'"}));
    in.Text("key");
    EXPECT_TRUE(test::Holds(test::FaultText([&] { in.Number("Angle"); }), {"huge.phy:3", "'-1e39'"}));
    TextReader big(f.Write("big.phy", std::string(1 << 20, '7') + "x\r\n"));
    const std::string text = test::FaultText([&] { big.Single("HeatEx"); });
    EXPECT_TRUE(test::Holds(text, {"big.phy:1", "1048577 characters"}));
    EXPECT_LT(text.size(), 300u);
}

TEST(TextWriter, RoundTripAndNoLossOnFailure) {
    TestFolder f;
    const std::string p = f.File("out.grs");
    const std::string written = "\"TimeWindow\",10\r\n\"x\",0.25,#TRUE#,-1\r\n";
    TextWriter w(p);
    w.Text("TimeWindow").Number(10);
    w.EndRecord();
    w.Text("x").Number(0.25f).Flag(true).FlagNumber(true);
    w.Commit();
    EXPECT_EQ(f.Read("out.grs"), written);
    TextWriter(p).Text("half");  // a save that never commits leaves the old file and no temporary file
    EXPECT_EQ(f.Read("out.grs"), written);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(f.path()), {}), 1);
    EXPECT_THROW(TextWriter(f.File("no/such/folder/x.txt")), FileFault);
}

// A save killed mid-write leaves its temporary file; the next save of that file
// removes it, but never the temporary file of a program still writing.
TEST(TextWriter, StaleTemporaryFilesOfEndedWritersAreRemovedOnTheNextSave) {
    TestFolder f;
    const std::string p = f.Write("out.grs", "old\r\n");
    const std::string stale = f.Write("out.grs.999999999.3.saving~", "torn");
    const std::string live = f.Write("out.grs." + std::to_string(getpid()) + ".77.saving~", "being written");
    const std::string other = f.Write("other.grs.999999999.1.saving~", "not ours to judge");
    const std::string lookalike = f.Write("out.grs.x.1.saving~", "not our pattern");
    TextWriter w(p);
    w.Line("new");
    w.Commit();
    EXPECT_EQ(f.Read("out.grs"), "new\r\n");
    EXPECT_FALSE(std::filesystem::exists(stale));
    for (const std::string& kept : {live, other, lookalike}) EXPECT_TRUE(std::filesystem::exists(kept)) << kept;
}

// Files of one result are all written out before any replaces its old file.
TEST(TextWriter, CommitAllWritesEveryFileBeforeReplacingAny) {
    TestFolder f;
    const std::string a = f.Write("run.out", "old dump\r\n"), b = f.Write("run.csv", "old csv\r\n");
    TextWriter dump(a), csv(b);
    dump.Line("new dump");
    csv.Line("new csv");
    dump.Finish();
    EXPECT_EQ(f.Read("run.out"), "old dump\r\n");
    CommitAll({&dump, nullptr, &csv});
    EXPECT_EQ(f.Read("run.out"), "new dump\r\n");
    EXPECT_EQ(f.Read("run.csv"), "new csv\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(f.path()), {}), 2);
}
