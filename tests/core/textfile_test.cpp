#include <gtest/gtest.h>

#include <filesystem>

#include "core/fault.h"
#include "core/textfile.h"
#include "core/util.h"
#include "support/test_folder.h"

using namespace osm;
using osm::test::TestFolder;

TEST(TextReader, ReadsFieldsAsTheProgramWritesThem) {
    TestFolder f;
    const std::string p = f.Write("a.txt",
                                  "\"Title, with comma\",3, 2 ,#TRUE#\r\n"
                                  "bare text , -1,#FALSE#,,\"q\"\n"
                                  "1 2 3\r\n"
                                  "whole line, kept\r\n");
    TextReader in(p);
    EXPECT_EQ(in.Text("title"), "Title, with comma");
    EXPECT_EQ(in.Int16("n"), 3);
    EXPECT_EQ(in.Single("x"), 2.0f);
    EXPECT_TRUE(in.Flag("flag"));
    EXPECT_EQ(in.line(), 2);
    EXPECT_EQ(in.Text("bare"), "bare text");
    EXPECT_TRUE(in.Flag("-1 is True"));
    EXPECT_FALSE(in.Flag("false"));
    EXPECT_EQ(in.Number("empty"), 0.0);
    EXPECT_EQ(in.Text("quoted"), "q");
    // A number field ends at a blank.
    EXPECT_EQ(in.Number("a"), 1);
    EXPECT_EQ(in.Number("b"), 2);
    EXPECT_EQ(in.Number("c"), 3);
    EXPECT_EQ(in.Line("line"), "whole line, kept");
    EXPECT_TRUE(in.AtEnd());
    EXPECT_THROW(in.Text("more"), FileFault);
}

TEST(TextReader, ErrorsNameFileLineAndWhatWasExpected) {
    TestFolder f;
    const std::string p = f.Write("bad.phy", "\"HeatEx\",0.5\r\n\"ErodeRate\",fast\r\n");
    TextReader in(p);
    in.Text("key");
    in.Single("HeatEx");
    in.Text("key");
    try {
        in.Single("ErodeRate");
        FAIL();
    } catch (const FileFault& e) {
        const std::string text = e.what();
        EXPECT_NE(text.find("bad.phy:2"), std::string::npos) << text;
        EXPECT_NE(text.find("ErodeRate"), std::string::npos);
        EXPECT_NE(text.find("'fast'"), std::string::npos);
        EXPECT_EQ(e.line(), 2);
    }
    EXPECT_THROW(TextReader(f.File("missing.txt")), FileFault);

    // A value that is read and then refused by its reader names its own line,
    // though the reader has already passed the line end; so does a number that
    // a blank-separated file carries over to the next line.
    TextReader again(p);
    again.Text("key");
    const float heatEx = again.Single("HeatEx");
    EXPECT_EQ(again.line(), 2);
    try {
        if (heatEx < 1) again.Fail("HeatEx of 1 or more", "0.5");
        FAIL();
    } catch (const FileFault& e) {
        EXPECT_EQ(e.line(), 1);
    }
    const std::string q = f.Write("bad.mde", "2\r\n\r\n x\r\n");
    TextReader blanks(q, TextReader::Mode::Blanks);
    blanks.Int16("count");
    try {
        blanks.Int16("id");
        FAIL();
    } catch (const FileFault& e) {
        EXPECT_EQ(e.line(), 3);
    }
}

TEST(TextReader, BlanksModeSeparatesOnBlanksAndLineEnds) {
    TestFolder f;
    const std::string p = f.Write("m.mde", "2\r\nFirst legend name\r\n  7 1\r\nnoaction  steady\r\n");
    TextReader in(p, TextReader::Mode::Blanks);
    EXPECT_EQ(in.Int16("count"), 2);
    EXPECT_EQ(in.Line("name"), "First legend name");
    EXPECT_EQ(in.Int16("id"), 7);
    EXPECT_EQ(in.Int16("set"), 1);
    EXPECT_EQ(in.Text("a"), "noaction");
    EXPECT_EQ(in.Text("b"), "steady");
    EXPECT_TRUE(in.AtEnd());
}

TEST(TextWriter, RoundTripAndNoLossOnFailure) {
    TestFolder f;
    const std::string p = f.File("out.grs");
    {
        TextWriter w(p);
        w.Text("TimeWindow").Number(10);
        w.EndRecord();
        w.Text("x").Number(0.25f).Flag(true).FlagNumber(true);
        w.Commit();
    }
    EXPECT_EQ(f.Read("out.grs"), "\"TimeWindow\",10\r\n\"x\",0.25,#TRUE#,-1\r\n");
    {
        // A save that never commits leaves the old file and no temporary file.
        TextWriter w(p);
        w.Text("half");
    }
    EXPECT_EQ(f.Read("out.grs"), "\"TimeWindow\",10\r\n\"x\",0.25,#TRUE#,-1\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(f.path()), {}), 1);
    TextReader in(p);
    EXPECT_EQ(in.Text("k"), "TimeWindow");
    EXPECT_EQ(in.Int16("v"), 10);
    EXPECT_THROW(TextWriter(f.File("no/such/folder/x.txt")), FileFault);
}

TEST(FileHelpers, StemDropsTheLastThreeCharacters) {
    EXPECT_EQ(Stem("Reaches.csv"), "Reaches.");
    EXPECT_EQ(Stem("Reaches.csv") + "qsvw", "Reaches.qsvw");
    EXPECT_EQ(Stem("ab"), "");
    TestFolder f;
    EXPECT_TRUE(FileExists(f.Write("x.txt", "")));
    EXPECT_FALSE(FileExists(f.File("y.txt")));
}
