// What both simulator programs share: an output that appears whole or not at
// all, lines read with either line end, and the exit status and message of main.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "common/atomic_file.h"
#include "common/file_error.h"
#include "common/program_main.h"
#include "common/text_lines.h"
#include "support/test_folder.h"

using namespace hydro;
using osm::test::TestFolder;
namespace fs = std::filesystem;

TEST(AtomicFile, CommitReplacesTheTargetAndLeavesNoTemporaryFile) {
    TestFolder f;
    const std::string target = f.Write("out.dat", "old\r\n");
    {
        AtomicFile out(target);
        EXPECT_EQ(out.TempPath(), target + ".part");
        std::fprintf(out.Stream(), "new %d\r\n", 7);
        // Until the commit a reader still finds the old file whole.
        EXPECT_EQ(f.Read("out.dat"), "old\r\n");
        out.Commit();
    }
    EXPECT_EQ(f.Read("out.dat"), "new 7\r\n");
    EXPECT_FALSE(fs::exists(target + ".part"));
}

TEST(AtomicFile, AnAbandonedWriterLeavesTheTargetAsItWas) {
    TestFolder f;
    const std::string target = f.Write("out.dat", "old\r\n");
    const std::string fresh = f.File("fresh.dat");
    try {
        AtomicFile out(target);
        AtomicFile other(fresh);
        std::fprintf(out.Stream(), "half a fi");
        std::fprintf(other.Stream(), "half a fi");
        throw std::runtime_error("the writer failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(f.Read("out.dat"), "old\r\n");
    EXPECT_FALSE(fs::exists(target + ".part"));
    EXPECT_FALSE(fs::exists(fresh));
    EXPECT_FALSE(fs::exists(fresh + ".part"));
}

TEST(AtomicFile, AFolderThatIsNotThereIsReportedWithTheTargetName) {
    TestFolder f;
    const std::string target = f.File("no_such_folder/out.dat");
    try {
        AtomicFile out(target);
        ADD_FAILURE() << "a file was opened in a missing folder";
    } catch (const FileError& e) {
        EXPECT_EQ(e.text, target + ": cannot be written");
    }
}

TEST(AtomicFile, AFailedRenameRemovesTheTemporaryFile) {
    TestFolder f;
    // A folder with something in it cannot be replaced by a file.
    const std::string target = f.File("taken");
    f.Write("taken/inside.txt", "x");
    AtomicFile out(target);
    std::fprintf(out.Stream(), "text\n");
    try {
        out.Commit();
        ADD_FAILURE() << "a folder was replaced by a file";
    } catch (const FileError& e) {
        EXPECT_EQ(e.text, target + ": cannot be written");
    }
    EXPECT_FALSE(fs::exists(target + ".part"));
    EXPECT_TRUE(fs::is_directory(target));
    EXPECT_EQ(f.Read("taken/inside.txt"), "x");
}

TEST(TextLines, EitherLineEndAndALastLineWithoutOne) {
    TestFolder f;
    f.Write("mixed.txt", "one\r\ntwo\n\r\nlast");
    const auto lines = ReadLines(f.File("mixed.txt"));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "one");
    EXPECT_EQ(lines[1], "two");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "last");
    f.Write("empty.txt", "");
    EXPECT_TRUE(ReadLines(f.File("empty.txt")).empty());
}

TEST(TextLines, AMissingFileIsNamed) {
    TestFolder f;
    const std::string path = f.File("absent.txt");
    try {
        ReadLines(path);
        ADD_FAILURE() << "a missing file was read";
    } catch (const FileError& e) {
        EXPECT_EQ(e.text, path + ": cannot be opened");
    }
}

TEST(ProgramMain, ExitStatusAndMessageByOutcome) {
    char name[] = "prog";
    char control[] = "run.ctr";
    char extra[] = "more";
    char* one[] = {name, control, nullptr};
    char* none[] = {name, nullptr};
    char* two[] = {name, control, extra, nullptr};

    std::string seen;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunWithControlFile("prog", 2, one, [&](const std::string& c) { seen = c; }), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(seen, "run.ctr");

    bool ran = false;
    for (auto* args : {none, two}) {
        const int argc = args == none ? 1 : 3;
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunWithControlFile("prog", argc, args, [&](const std::string&) { ran = true; }), 2);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "usage: prog CONTROL-FILE\n");
    }
    EXPECT_FALSE(ran);

    testing::internal::CaptureStderr();
    EXPECT_EQ(RunWithControlFile("prog", 2, one, [](const std::string&) { throw FileError{"run.ctr:3: expected x"}; }), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "prog: run.ctr:3: expected x\n");

    testing::internal::CaptureStderr();
    EXPECT_EQ(RunWithControlFile("prog", 2, one, [](const std::string&) { throw std::runtime_error("no solution"); }), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "prog: no solution\n");
}
