// vlib import-profiles LIBRARY FILE... [--on-clash skip|overwrite|rename]
// vlib export-profiles LIBRARY FILE.ifc
#include <cstdio>
#include <fstream>
#include <ostream>

#include <vantlib/ProfileCatalogues.h>

#include "Arguments.h"
#include "Commands.h"
#include "ExchangeReport.h"
#include "LibraryFiles.h"
#include "Progress.h"

namespace vlib {

int importProfilesCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"on-clash"});
    args.requirePositional(2, "LIBRARY FILE...", true);
    const ImportTarget target = importTarget(args);
    vantlib::CatalogueImportReport report;
    try {
        TerminalProgress progress("Importing");
        report = vantlib::importProfileCatalogues(target.library, target.files, target.answer,
                                                  [&](size_t done, size_t total) { progress(done, total); });
    } catch (const vantlib::CatalogueError& e) {
        throw std::runtime_error(std::string(e.what()) + "; nothing was imported");
    }
    for (const auto& skipped : report.skipped)
        out << skipped.what() << " (skipped)\n";
    size_t read = 0;
    for (const auto& entry : report.classes) {
        out << entry.first << ": " << entry.second << '\n';
        read += entry.second;
    }
    printImportReport(report.import, out);
    out << read << " profiles read, " << report.skipped.size() << " rows or entities skipped\n";
    return 0;
}

int exportProfilesCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(2, "LIBRARY FILE.ifc");
    const std::string& libraryPath = args.positional()[0];
    const std::string& filePath = args.positional()[1];
    const auto library = openLibrary(libraryPath, true);
    const vantlib::IfcExport exported = vantlib::exportIfcProfiles(*library);
    // Written beside the target first, so a failed write never leaves half a file.
    const std::string partial = filePath + ".partial";
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        file << exported.text;
        file.close();
        if (!file)
            throw std::runtime_error(filePath + ": cannot be written");
    }
    if (std::rename(partial.c_str(), filePath.c_str()) != 0) {
        std::remove(partial.c_str());
        throw std::runtime_error(filePath + ": cannot be written");
    }
    out << "Exported " << exported.written << " profiles of " << libraryPath << " to " << filePath;
    if (exported.leftOut != 0)
        out << " (" << exported.leftOut << " without a parametric form in IFC4 left out)";
    out << '\n';
    return 0;
}

}  // namespace vlib
