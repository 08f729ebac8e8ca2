#pragma once
// Shared by the fuzz harnesses. Each harness writes its input to a file of a
// folder of its own process and hands it to one reader on a copy of the model
// started on the default data set. A reader may refuse an input only with a
// fault; anything else (another exception, a sanitizer report, a signal) is a
// finding. A file the reader takes is saved, read again and saved again, and the
// two saves must be equal byte for byte.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/fault.h"
#include "core/model.h"

namespace osm::fuzz {

// The default data set (or the copy that OSM_FUZZ_DATA names), started once
// per process.
const Model& StartedModel();

// A folder of this process, made on first use and removed at exit.
const std::string& WorkFolder();

// Writes the bytes to `name` inside the work folder; returns the full path.
std::string WriteInput(const std::string& name, const uint8_t* data, size_t size);

// The bytes of a file.
std::string FileBytes(const std::string& path);

// Runs `read`; true when it went through, false when it refused with a fault.
template <typename Read>
bool Takes(Read read) {
    try {
        read();
        return true;
    } catch (const Fault&) {
        return false;
    }
}

// Stops the process with a message on stderr (a finding for libFuzzer).
[[noreturn]] void Finding(const std::string& text);

// A file taken by `read` is saved by `save`, read back by `read` into a fresh
// copy of the started model, and saved again: both saves must be equal, and the
// reader must take what the writer wrote. `read` and `save` are called as
// read(Model&, path) and save(const Model&, path).
template <typename Read, typename Save>
void RequireRoundTrip(const Model& taken, const std::string& name, Read read, Save save) {
    const std::string first = WorkFolder() + "/first." + name;
    const std::string second = WorkFolder() + "/second." + name;
    save(taken, first);
    Model again = StartedModel();
    try {
        read(again, first);
    } catch (const Fault& f) {
        Finding("the reader refuses what the writer wrote: " + std::string(f.what()));
    }
    save(again, second);
    if (FileBytes(first) != FileBytes(second))
        Finding("saved, read and saved again, " + name + " changed:\n--- first\n" +
                FileBytes(first) + "\n--- second\n" + FileBytes(second));
}

}  // namespace osm::fuzz
