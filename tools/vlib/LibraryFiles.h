#pragma once
// Opening library files for the subcommands.
#include <memory>
#include <string>

#include <OdUnits.h>

#include <vantlib/Library.h>

namespace vlib {

// Opens an existing library (a .vlib file or a drawing with an embedded library). Reading
// commands open read-only so that a file is never touched by them. Errors of vantlib already
// name the file and the cause; they are passed on as they are.
std::shared_ptr<vantlib::Library> openLibrary(const std::string& path, bool readOnly);

// "millimetres", "inches", ...
std::string unitName(OdDb::UnitsValue unit);

}  // namespace vlib
