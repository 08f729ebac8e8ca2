// What both simulator programs share: an output that appears whole or not at
// all, lines read with either line end, and the exit status and message of main.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/atomic_file.h"
#include "common/file_error.h"
#include "common/program_main.h"
#include "common/text_lines.h"
#include "support/test_folder.h"

using namespace hydro;
using osm::test::TestFolder;
namespace fs = std::filesystem;

namespace {
template <typename F>
std::string errorText(F&& f) {
    try {
        f();
    } catch (const FileError& e) {
        return e.text;
    }
    return "no error";
}
}  // namespace

TEST(AtomicFile, CommitReplacesTheTargetWhileAnAbandonedWriterLeavesItAsItWas) {
    TestFolder f;
    const std::string target = f.Write("out.dat", "old\r\n"), fresh = f.File("fresh.dat");
    try {
        AtomicFile out(target), other(fresh);
        std::fprintf(out.Stream(), "half a fi");
        std::fprintf(other.Stream(), "half a fi");
        throw std::runtime_error("the writer failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(f.Read("out.dat"), "old\r\n");
    for (const auto& p : {target + ".part", fresh, fresh + ".part"}) EXPECT_FALSE(fs::exists(p)) << p;
    {
        AtomicFile out(target);
        std::fprintf(out.Stream(), "new %d\r\n", 7);
        EXPECT_EQ(f.Read("out.dat"), "old\r\n");
        out.Commit();
    }
    EXPECT_EQ(f.Read("out.dat"), "new 7\r\n");
    EXPECT_FALSE(fs::exists(target + ".part"));
}

TEST(AtomicFile, AMissingFolderOrAFailedRenameNamesTheTargetAndCleansUp) {
    TestFolder f;
    const std::string lost = f.File("no_such_folder/out.dat");
    EXPECT_EQ(errorText([&] { AtomicFile out(lost); }), lost + ": cannot be written");
    // A folder with something in it cannot be replaced by a file.
    const std::string taken = f.File("taken");
    f.Write("taken/inside.txt", "x");
    AtomicFile out(taken);
    std::fprintf(out.Stream(), "text\n");
    EXPECT_EQ(errorText([&] { out.Commit(); }), taken + ": cannot be written");
    EXPECT_FALSE(fs::exists(taken + ".part"));
    EXPECT_EQ(f.Read("taken/inside.txt"), "x");
}

TEST(TextLines, EitherLineEndALastLineWithoutOneAndAMissingFile) {
    TestFolder f;
    f.Write("mixed.txt", "one\r\ntwo\n\r\nlast");
    EXPECT_EQ(ReadLines(f.File("mixed.txt")), (std::vector<std::string>{"one", "two", "", "last"}));
    f.Write("empty.txt", "");
    EXPECT_TRUE(ReadLines(f.File("empty.txt")).empty());
    const std::string path = f.File("absent.txt");
    EXPECT_EQ(errorText([&] { ReadLines(path); }), path + ": cannot be opened");
}

TEST(ProgramMain, ExitStatusAndMessageByOutcome) {
    char name[] = "prog", control[] = "run.ctr", extra[] = "more";
    char* none[] = {name, nullptr};
    char* one[] = {name, control, nullptr};
    char* two[] = {name, control, extra, nullptr};
    auto run = [&](int argc, char** argv, auto body, int status, const std::string& err) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunWithControlFile("prog", argc, argv, body), status);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), err);
    };
    std::string seen;
    run(2, one, [&](const std::string& c) { seen = c; }, 0, "");
    EXPECT_EQ(seen, "run.ctr");
    bool ran = false;
    run(1, none, [&](const std::string&) { ran = true; }, 2, "usage: prog CONTROL-FILE\n");
    run(3, two, [&](const std::string&) { ran = true; }, 2, "usage: prog CONTROL-FILE\n");
    EXPECT_FALSE(ran);
    run(2, one, [](const std::string&) { throw FileError{"run.ctr:3: expected x"}; }, 1, "prog: run.ctr:3: expected x\n");
    run(2, one, [](const std::string&) { throw std::runtime_error("no solution"); }, 1, "prog: no solution\n");
}
