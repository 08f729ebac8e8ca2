// Bad input: mutated copies of the small test river, each run through the batch
// runner. Every run must either end with exit status 0 and finite, plausible
// results, or with exit status 1 and a message that names the mutated file;
// never a signal, a sanitizer report or a hang. The mutations are drawn from a fixed seed, so
// every run of the test makes the same ones.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <regex>
#include <sstream>
#include <vector>

#include "support/test_folder.h"

using osm::test::TestFolder;
namespace fs = std::filesystem;

namespace {

struct Mutation {
    std::string kind;
    std::string text;  // the file's new content
};

// [begin, end) of each number in the text.
std::vector<std::pair<size_t, size_t>> numbers(const std::string& s) {
    static const std::regex number(R"(-?\d+(\.\d+)?([eE][-+]?\d+)?)");
    std::vector<std::pair<size_t, size_t>> out;
    for (auto it = std::sregex_iterator(s.begin(), s.end(), number); it != std::sregex_iterator(); ++it) {
        const size_t b = static_cast<size_t>(it->position()), e = b + static_cast<size_t>(it->length());
        // Digits inside a word (a name such as RC90) are not a number.
        if ((b > 0 && std::isalpha(static_cast<unsigned char>(s[b - 1]))) ||
            (e < s.size() && std::isalpha(static_cast<unsigned char>(s[e]))))
            continue;
        out.emplace_back(b, e);
    }
    return out;
}

std::vector<std::string> lines(const std::string& s) {
    std::vector<std::string> out;
    size_t b = 0;
    while (b < s.size()) {
        const size_t e = s.find('\n', b);
        out.push_back(s.substr(b, e == std::string::npos ? std::string::npos : e + 1 - b));
        b = e == std::string::npos ? s.size() : e + 1;
    }
    return out;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string s;
    for (const std::string& p : parts) s += p;
    return s;
}

size_t pick(std::mt19937& rng, size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(rng); }

// One draw of each kind.
std::vector<Mutation> mutations(const std::string& text, std::mt19937& rng) {
    std::vector<Mutation> out{{"emptied", ""}};
    const auto nums = numbers(text);
    const std::vector<std::string> ls = lines(text);
    const std::string garble = "\",\n -.eE9x#";
    {
        out.push_back({"truncated", text.substr(0, 1 + pick(rng, text.size() - 1))});
        std::string g = text;
        for (int k = 0; k < 3; ++k) g[pick(rng, g.size())] = garble[pick(rng, garble.size())];
        out.push_back({"garbled", g});
        for (const auto& [kind, value] : std::vector<std::pair<std::string, std::string>>{
                 {"huge number", "1e40"}, {"negative number", "-"}, {"zero", "0"}, {"NaN", "NaN"}}) {
            if (nums.empty()) break;
            const auto [b, e] = nums[pick(rng, nums.size())];
            std::string old = text.substr(b, e - b);
            if (old[0] == '-') old.erase(0, 1);
            const std::string repl = value == "-" ? "-" + (old.find_first_not_of("0.") == std::string::npos ? "1" : old) : value;
            out.push_back({kind, text.substr(0, b) + repl + text.substr(e)});
        }
        std::vector<std::string> dropped = ls, doubled = ls;
        const size_t i = pick(rng, ls.size()), j = pick(rng, ls.size());
        dropped.erase(dropped.begin() + static_cast<long>(i));
        doubled.insert(doubled.begin() + static_cast<long>(j), ls[j]);
        out.push_back({"line dropped", joined(dropped)});
        out.push_back({"line doubled", joined(doubled)});
    }
    return out;
}

// The files of the small river that hold something to mutate; the one-line
// placeholders are never read.
std::vector<std::string> riverFiles() {
    TestFolder f;
    osm::test::WriteSmallRiver(f);
    std::vector<std::string> out;
    for (const auto& e : fs::recursive_directory_iterator(f.path()))
        if (e.is_regular_file() && e.file_size() > 2)
            out.push_back(fs::relative(e.path(), f.path()).generic_string());
    std::sort(out.begin(), out.end());
    return out;
}

// What a message must name: a sheet by its name, any other file by its own.
std::string nameOf(const std::string& file) {
    const fs::path p(file);
    return p.has_parent_path() ? p.stem().string() : p.filename().string();
}

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The value column of the results in long form: each a finite number.
std::string firstNonFinite(const std::string& csv) {
    std::istringstream in(csv);
    std::string line;
    std::getline(in, line);  // the heads
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::string value = line.substr(line.rfind(',') + 1);
        char* end = nullptr;
        const double x = std::strtod(value.c_str(), &end);
        if (value.empty() || *end != '\0' || !std::isfinite(x)) return line;
    }
    return "";
}

// Campsite use (variable 11) is the share of the camp-nights the beaches offer:
// a few at most. Parties stored against beaches that offer no campsite read as
// millions.
std::string firstImplausible(const std::string& csv) {
    std::istringstream in(csv);
    std::string line;
    std::getline(in, line);  // the heads: run,var,sub,reach,month,value
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string run, var;
        std::getline(fields, run, ',');
        std::getline(fields, var, ',');
        if (var == "11" && std::strtod(line.substr(line.rfind(',') + 1).c_str(), nullptr) > 1000) return line;
    }
    return "";
}

class MutatedRiver : public testing::TestWithParam<std::string> {};

TEST_P(MutatedRiver, IsRefusedByNameOrRunsToFiniteResults) {
    const std::string file = GetParam();
    std::mt19937 rng(static_cast<unsigned>(std::hash<std::string>{}(file) % 100000u) + 12u);
    std::string original;
    {
        TestFolder f;
        osm::test::WriteSmallRiver(f);
        original = f.Read(file);
    }
    for (const Mutation& mu : mutations(original, rng)) {
        SCOPED_TRACE(file + ", " + mu.kind);
        TestFolder f;
        osm::test::WriteSmallRiver(f);
        f.Write(file, mu.text);
        const std::string cmd = "timeout 60 " + std::string(OSM_BATCH_EXE) + " --folder " + f.path() +
                                " --years 2 --csv " + f.File("r.csv") + " >" + f.File("out.txt") +
                                " 2>" + f.File("err.txt");
        const int status = std::system(cmd.c_str());
        const std::string err = f.Read("err.txt");
        ASSERT_TRUE(WIFEXITED(status)) << "killed by a signal\n" << err;
        const int code = WEXITSTATUS(status);
        EXPECT_NE(code, 124) << "no end within 60 s";
        EXPECT_EQ(err.find("Sanitizer"), std::string::npos) << err;
        EXPECT_EQ(err.find("runtime error:"), std::string::npos) << err;
        if (code == 0) {
            EXPECT_EQ(firstNonFinite(f.Read("r.csv")), "") << "a result that is not a finite number";
            EXPECT_EQ(firstImplausible(f.Read("r.csv")), "") << "campsite use beyond any capacity";
        } else {
            EXPECT_EQ(code, 1) << err;
            EXPECT_NE(lower(err).find(lower(nameOf(file))), std::string::npos)
                << "the message does not name " << nameOf(file) << ":\n" << err;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(SmallRiver, MutatedRiver, testing::ValuesIn(riverFiles()),
                         [](const testing::TestParamInfo<std::string>& info) {
                             std::string name = info.param;
                             for (char& c : name)
                                 if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                             return name;
                         });

}  // namespace
