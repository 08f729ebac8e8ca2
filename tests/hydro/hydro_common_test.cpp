#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "common/atomic_file.h"
#include "common/file_error.h"
#include "common/program_main.h"
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

TEST(AtomicFile, AnAbandonedOrFailedWriterLeavesTheTargetAndACommitReplacesIt) {
    TestFolder f;
    const std::string target = f.Write("out.dat", "old\r\n");
    try {
        AtomicFile out(target);
        std::fprintf(out.Stream(), "half a fi");
        throw std::runtime_error("the writer failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(f.Read("out.dat"), "old\r\n");
    {
        AtomicFile out(target);
        std::fprintf(out.Stream(), "new %d\r\n", 7);
        out.Commit();
    }
    EXPECT_EQ(f.Read("out.dat"), "new 7\r\n");
    // A folder with something in it cannot be replaced by a file.
    const std::string taken = f.File("taken");
    f.Write("taken/inside.txt", "x");
    AtomicFile out(taken);
    EXPECT_EQ(errorText([&] { out.Commit(); }), taken + ": cannot be written");
    for (const auto& p : {target + ".part", taken + ".part"}) EXPECT_FALSE(fs::exists(p)) << p;
}

TEST(ProgramMain, ExitStatusAndMessageByOutcome) {
    char name[] = "prog", control[] = "run.ctr";
    char* none[] = {name, nullptr};
    char* one[] = {name, control, nullptr};
    auto run = [&](int argc, char** argv, auto body, int status, const std::string& err) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunWithControlFile("prog", argc, argv, body), status);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), err);
    };
    std::string seen;
    run(2, one, [&](const std::string& c) { seen = c; }, 0, "");
    EXPECT_EQ(seen, "run.ctr");
    run(1, none, [](const std::string&) {}, 2, "usage: prog CONTROL-FILE\n");
    run(2, one, [](const std::string&) { throw FileError{"run.ctr:3: expected x"}; }, 1, "prog: run.ctr:3: expected x\n");
}
