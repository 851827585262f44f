// vlib recover FILE
#include <ostream>
#include <stdexcept>

#include "Arguments.h"
#include "Commands.h"
#include "LibraryFiles.h"

namespace vlib {

int recoverCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(1, "FILE");
    const std::string& path = args.positional()[0];
    // A writable open undoes what a stopped program left unfinished; nothing else is written.
    const auto library = openLibrary(path, false);
    if (library->isReadOnly())
        throw std::runtime_error(path + ": library is read-only; it can only be recovered where it may be written");
    out << path << ": ready\n";
    return 0;
}

}  // namespace vlib
