#pragma once
// A temporary folder for tests, removed at the end.
#include <string>

namespace osm::test {

class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::string& path() const { return path_; }
    // Writes a file (relative name) with the given text; returns its full path.
    std::string Write(const std::string& name, const std::string& text) const;
    std::string Read(const std::string& name) const;
    static std::string ReadFile(const std::string& path);
    std::string File(const std::string& name) const;

private:
    std::string path_;
};

// A river of three reaches (a dam row and two run reaches) with every start-up
// file a physical-only or whole-model start needs.
void WriteSmallRiver(const TestFolder& f);

}  // namespace osm::test
