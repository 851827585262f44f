// libFuzzer harness: any text either reads or is refused with PsdError, and whatever reads is
// written and reads back to the same set, and is mapped onto the library's records and back to
// the same set.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <vl_db/PsdLibrary.h>
#include <vl_db/PsdXml.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    vl_db::PsdSet set;
    try {
        set = vl_db::readPsdText(text, "fuzz.xml");
    } catch (const vl_db::PsdError&) {
        return 0;
    }
    const std::string written = vl_db::writePsdText(set);
    if (vl_db::readPsdText(written, "written.xml") != set) {
        std::fprintf(stderr, "the written set reads back differently:\n%s\n", written.c_str());
        std::abort();
    }
    const vl_db::PsdLibrarySet mapped = vl_db::librarySetOf(set);
    if (vl_db::psdSetOf(mapped.set, mapped.properties, {}) != set) {
        std::fprintf(stderr, "the set comes back from the library's records differently:\n%s\n", written.c_str());
        std::abort();
    }
    return 0;
}
