#include "common/program_main.h"

#include <cstdio>
#include <exception>

#include "common/file_error.h"

namespace hydro {

int RunWithControlFile(const char* program, int argc, char** argv,
                       const std::function<void(const std::string& controlFile)>& run) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CONTROL-FILE\n", program);
        return 2;
    }
    try {
        run(argv[1]);
    } catch (const FileError& e) {
        std::fprintf(stderr, "%s: %s\n", program, e.text.c_str());
        return 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", program, e.what());
        return 1;
    }
    return 0;
}

}  // namespace hydro
