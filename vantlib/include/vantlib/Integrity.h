#pragma once
// Consistency check of a library file, for tools.
#include <vector>

#include <OdString.h>

namespace vantlib {

// Opens the file read-only and returns every problem found (storage integrity, broken
// references, duplicate names, values out of range); empty when the library is sound.
// Throws FileMissing / NotALibrary / NewerSchema like Library::open.
std::vector<OdString> checkIntegrity(const OdString& path);

}  // namespace vantlib
