// libFuzzer harness: any bytes are read or refused with step::FileError; what is read keeps its
// promises (instances and faults on lines of the text, references as written).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "StepFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    vantlib::step::File file;
    try {
        file = vantlib::step::parse(text);
    } catch (const vantlib::step::FileError&) {
        return 0;
    }
    const int lines = int(std::count(text.begin(), text.end(), '\n')) + 1;
    for (const auto& entry : file.instances)
        if (entry.second.line < 1 || entry.second.line > lines || entry.first != entry.second.id)
            std::abort();
    for (const auto& fault : file.faults)
        if (fault.line < 1 || fault.line > lines || fault.reason.empty())
            std::abort();
    return 0;
}
