#include "fuzz_support.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/messages.h"
#include "core/start_up.h"

namespace osm::fuzz {

namespace fs = std::filesystem;

namespace {

// Model messages (warnings of odd but accepted input) are not findings.
class QuietSink : public MessageSink {
public:
    void Show(const ModelMessage&) override {}
};

void removeWorkFolder() {
    std::error_code ec;
    fs::remove_all(WorkFolder(), ec);
}

}  // namespace

const Model& StartedModel() {
    static QuietSink sink;
    static const Model started = [] {
        Model m;
        m.messages = &sink;
        // OSM_FUZZ_DATA names a copy of the data set, for a long run beside a
        // working tree that changes.
        const char* data = std::getenv("OSM_FUZZ_DATA");
        StartUp(m, StartOptions{data != nullptr ? data : OSM_DEFAULT_FOLDER, false, {}});
        // No reader needs the results store, and copying it would be most of the
        // time of an input.
        m.main.Results = Table<float, 5>{"Results"};
        return m;
    }();
    return started;
}

const std::string& WorkFolder() {
    static const std::string folder = [] {
        const char* base = std::getenv("OSM_FUZZ_TMP");
        const fs::path p = (base != nullptr ? fs::path(base) : fs::temp_directory_path()) /
                           ("osm-fuzz-" + std::to_string(getpid()));
        fs::create_directories(p);
        return p.string();
    }();
    static const bool cleanup = std::atexit(removeWorkFolder) == 0;
    (void)cleanup;
    return folder;
}

std::string WriteInput(const std::string& name, const uint8_t* data, size_t size) {
    const std::string path = WorkFolder() + "/" + name;
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    if (!out.flush()) Finding("cannot write the input to " + path);
    return path;
}

std::string FileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void Finding(const std::string& text) {
    std::fprintf(stderr, "FINDING: %s\n", text.c_str());
    std::abort();
}

}  // namespace osm::fuzz
