#include "LibraryFiles.h"

#include "Kinds.h"

namespace vlib {

std::shared_ptr<vantlib::Library> openLibrary(const std::string& path, bool readOnly) {
    return vantlib::Library::open(toOd(path), readOnly);
}

std::string unitName(OdDb::UnitsValue unit) {
    static const char* const names[] = {
        "unitless",        "inches",        "feet",          "miles",          "millimetres",
        "centimetres",     "metres",        "kilometres",    "microinches",    "mils",
        "yards",           "angstroms",     "nanometres",    "microns",        "decimetres",
        "decametres",      "hectometres",   "gigametres",    "astronomical units", "light years",
        "parsecs",         "US survey feet", "US survey inches", "US survey yards", "US survey miles",
    };
    const int index = static_cast<int>(unit);
    return index >= 0 && index <= OdDb::kUnitsMax ? names[index] : "unknown unit " + std::to_string(index);
}

}  // namespace vlib
