#include <map>
#include <ostream>

#include "Arguments.h"
#include "Commands.h"

namespace vlib {

void printUsage(std::ostream& out) {
    out << "Usage: vlib COMMAND [ARGUMENTS]\n"
           "\n"
           "  create FILE [--imperial]            create an empty library (metric, millimetres, by default)\n"
           "  info FILE                           schema version, unit and the number of objects of each kind\n"
           "  list FILE KIND [--class C] [--tag T]\n"
           "                                      names of the objects of a kind, optionally filtered\n"
           "  list FILE profile [--standard S] [--shape SH] [--type T] [--text X]\n"
           "                                      profiles as the profiles dialog filters and sorts them\n"
           "  show FILE composition NAME          a composition's plies with their physical values, its R, U\n"
           "                                      and mass per area\n"
           "  show FILE material NAME             a material's fields and physical values\n"
           "  show FILE profile \"FULL NAME\"       a profile's standard, type, shape, dimensions, area, extents\n"
           "                                      and centroid\n"
           "  check FILE [--central LIBRARY]      verify integrity and references (of a drawing's entities too);\n"
           "                                      exit 1 when broken\n"
           "  copy SRC DST KIND NAME... [--on-clash skip|overwrite|rename]\n"
           "                                      copy named objects (and what they use) between libraries\n"
           "  export FILE DOCUMENT.json [KIND...] write the library (or the objects of some kinds and what\n"
           "                                      they use) as a JSON exchange document\n"
           "  import FILE DOCUMENT.json [--on-clash skip|overwrite|rename]\n"
           "                                      read a JSON exchange document into the library, all or nothing\n"
           "  import-cards FILE PATH... [--on-clash skip|overwrite|rename]\n"
           "                                      import material cards (.FCMat files, or folders holding them)\n"
           "  import-profiles FILE TABLE... [--on-clash skip|overwrite|rename]\n"
           "                                      import steel section tables (.blt YAML, .csv presets, .ifc\n"
           "                                      profile libraries); unreadable rows are reported and skipped\n"
           "  export-profiles FILE LIBRARY.ifc    write the library's profiles as an IFC4 project library\n"
           "  psets FILE list [--namespace N]     property-set definitions: namespaces, sets, their IFC classes\n"
           "                                      and definitions with their types\n"
           "  psets FILE import PATH... [--namespace N]\n"
           "                                      import property-set definition files (PSD XML, or folders\n"
           "                                      holding them) into one namespace, all or nothing\n"
           "  psets FILE export FOLDER|FILE.xml [--namespace N] [--set S]...\n"
           "                                      write property sets as definition files, one per set\n"
           "  recover FILE                        finish the recovery of a library whose writer stopped midway\n"
           "  demo DIR                            write the demo drawing and its central library into DIR\n"
           "  help                                this text\n"
           "\n"
           "FILE is a library (.vlib) or a drawing (.vldwg) with an embedded project library.\n"
           "KIND is one of: material, composition, material-class, composition-class, tag, layer,\n"
           "custom-property; export also takes profile.\n";
}

int dispatch(const Words& words, std::ostream& out) {
    using Command = int (*)(const Words&, std::ostream&);
    static const std::map<std::string, Command> commands{
        {"create", createCommand}, {"info", infoCommand}, {"list", listCommand},
        {"check", checkCommand},   {"copy", copyCommand}, {"demo", demoCommand},
        {"recover", recoverCommand}, {"show", showCommand}, {"export", exportCommand}, {"import", importCommand},
        {"import-cards", importCardsCommand}, {"import-profiles", importProfilesCommand},
        {"export-profiles", exportProfilesCommand}, {"psets", psetsCommand},
    };
    if (words.empty())
        throw UsageError("no command given");
    const std::string& name = words.front();
    if (name == "help" || name == "--help" || name == "-h") {
        printUsage(out);
        return 0;
    }
    const auto it = commands.find(name);
    if (it == commands.end())
        throw UsageError("unknown command '" + name + "'");
    return it->second(Words(words.begin() + 1, words.end()), out);
}

}  // namespace vlib
