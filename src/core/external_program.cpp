#include "core/external_program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "core/fault.h"
#include "core/numbers.h"

extern char** environ;

namespace osm {

namespace {

std::string nameOf(const std::string& program) { return std::filesystem::path(program).filename().string(); }

// The last non-blank line the program wrote, as a hint of why it failed.
std::string lastLine(const std::string& path) {
    std::ifstream in(path);
    std::string line, last;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.find_first_not_of(" \t") != std::string::npos) last = line;
    }
    return last.empty() ? "" : ": " + last;
}

}  // namespace

void RunProgram(const ProgramRun& run) {
    namespace fs = std::filesystem;
    const std::string name = nameOf(run.program);
    std::error_code ec;
    if (!fs::is_regular_file(run.program, ec) || access(run.program.c_str(), X_OK) != 0)
        throw Fault("The program " + name + " was not found (looked for " + run.program +
                    "); build it or copy it into the hydro folder.");
    if (!fs::is_directory(run.workDir, ec)) throw Fault("The folder " + run.workDir + " of " + name + " does not exist.");

    // The spawn changes into the work folder before it opens the log: both are
    // named absolutely, so a relative folder is not taken twice.
    const std::string workDir = fs::absolute(run.workDir).string();
    const std::string log = run.logFile.empty() ? "/dev/null" : (fs::path(workDir) / run.logFile).string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, workDir.c_str());
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const std::string exe = fs::absolute(run.program).string();
    std::vector<std::string> words{exe};
    words.insert(words.end(), run.args.begin(), run.args.end());
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int rc = posix_spawn(&pid, exe.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) throw Fault("The program " + name + " could not be started: " + std::strerror(rc));

    // Poll for the end, with a short sleep that grows: the simulators run for
    // tens of milliseconds, and the time limit must hold without a signal handler.
    const auto start = std::chrono::steady_clock::now();
    auto pause = std::chrono::microseconds(100);
    int status = 0;
    for (;;) {
        const pid_t w = waitpid(pid, &status, WNOHANG);
        if (w == pid) break;
        if (w < 0 && errno != EINTR) throw Fault("Waiting for " + name + " failed: " + std::strerror(errno));
        if (std::chrono::steady_clock::now() - start > run.timeLimit) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            throw Fault("The program " + name + " did not finish within " +
                        NumText(static_cast<double>(run.timeLimit.count()) / 1000.0) + " s and was stopped.");
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::microseconds(5000));
    }
    if (WIFSIGNALED(status))
        throw Fault("The program " + name + " was ended by signal " + std::to_string(WTERMSIG(status)) + lastLine(log));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
        throw Fault("The program " + name + " failed with exit status " + std::to_string(WEXITSTATUS(status)) +
                    lastLine(log));
}

void RequireOutput(const std::string& program, const std::string& path) {
    if (!std::filesystem::exists(path))
        throw Fault("The program " + nameOf(program) + " wrote no output file " + path + ".");
}

}  // namespace osm
