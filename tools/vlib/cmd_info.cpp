// vlib info FILE
#include <ostream>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

int infoCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(1, "FILE");
    const std::string& path = args.positional()[0];
    const auto library = openLibrary(path, true);
    out << "file: " << path << '\n'
        << "schema version: " << library->schemaVersion() << '\n'
        << "unit: " << unitName(library->unit()) << (library->isImperial() ? " (imperial)" : " (metric)") << '\n'
        << "guid: " << toUtf8(library->guid()) << '\n';
    if (!library->description().isEmpty())
        out << "description: " << toUtf8(library->description()) << '\n';
    for (const Kind& kind : kinds())
        out << kind.plural << ": " << kind.count(*library) << '\n';
    return 0;
}

}  // namespace vlib
