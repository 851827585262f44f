// vlib list FILE KIND [--class C] [--tag T]
#include <ostream>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

int listCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"class", "tag"});
    args.requirePositional(2, "FILE KIND");
    const Kind& kind = kindFromWord(args.positional()[1]);
    ListFilter filter;
    filter.className = args.value("class");
    filter.tags = args.values("tag");
    if (!kind.filterable && (args.has("class") || args.has("tag")))
        throw UsageError(std::string("--class and --tag apply to materials and compositions, not to ") + kind.plural);
    const auto library = openLibrary(args.positional()[0], true);
    for (const OdString& name : kind.names(*library, filter))
        out << toUtf8(name) << '\n';
    return 0;
}

}  // namespace vlib
