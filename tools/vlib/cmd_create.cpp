// vlib create FILE [--imperial]
#include <filesystem>
#include <ostream>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

int createCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {"imperial"}, {});
    args.requirePositional(1, "FILE");
    const std::string& path = args.positional()[0];
    // Creating never adds tables to a file that is already there, whatever it holds.
    if (std::filesystem::exists(path))
        throw std::runtime_error(path + ": file already exists");
    const OdDb::UnitsValue unit = args.has("imperial") ? OdDb::kUnitsInches : OdDb::kUnitsMillimeters;
    const auto library = vantlib::Library::create(toOd(path), unit);
    out << "Created " << path << " (" << unitName(library->unit()) << ", schema version "
        << vantlib::Library::kSchemaVersion << ")\n";
    return 0;
}

}  // namespace vlib
