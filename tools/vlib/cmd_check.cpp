// vlib check FILE [--central LIBRARY]
#include <ostream>
#include <stdexcept>

#include <OdDbDatabase.h>

#include <vantlib/Integrity.h>
#include <vantlib/Library.h>

#include "Arguments.h"
#include "Commands.h"
#include "DrawingCheck.h"
#include "Kinds.h"

namespace vlib {

int checkCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"central"});
    args.requirePositional(1, "FILE");
    const std::string& path = args.positional()[0];
    const bool isDrawing = OdDbDatabase::isDrawingFile(toOd(path));
    if (args.has("central") && !isDrawing)
        throw UsageError("--central applies to drawings only");

    std::vector<std::string> problems;
    // A drawing without a project library has no library tables to check.
    if (!isDrawing || vantlib::Library::containsLibrary(toOd(path)))
        for (const OdString& problem : vantlib::checkIntegrity(toOd(path)))
            problems.push_back(toUtf8(problem));
    if (isDrawing) {
        const DrawingCheck drawing = checkDrawingReferences(path, args.value("central"));
        problems.insert(problems.end(), drawing.problems.begin(), drawing.problems.end());
        out << path << ": " << drawing.checkedReferences << " uses of library objects checked";
        if (drawing.uncheckedCentralReferences)
            out << ", " << drawing.uncheckedCentralReferences << " uses of the central library not checked (no --central)";
        out << '\n';
    }
    if (problems.empty()) {
        out << path << ": OK\n";
        return 0;
    }
    for (const std::string& problem : problems)
        out << path << ": " << problem << '\n';
    throw std::runtime_error(path + ": " + std::to_string(problems.size()) +
                             (problems.size() == 1 ? " problem found" : " problems found"));
}

}  // namespace vlib
