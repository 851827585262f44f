// vlib export LIBRARY FILE.json [KIND...]
// vlib import LIBRARY FILE.json [--on-clash skip|overwrite|rename]
#include <cstdio>
#include <fstream>
#include <ostream>
#include <sstream>

#include <vantlib/Exchange.h>

#include "Arguments.h"
#include "Commands.h"
#include "ExchangeReport.h"
#include "Kinds.h"
#include "LibraryFiles.h"
#include "Progress.h"

namespace vlib {

namespace {

std::string readWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error(path + ": cannot be read");
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

int exportCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(2, "LIBRARY FILE.json [KIND...]", true);
    const std::string& libraryPath = args.positional()[0];
    const std::string& documentPath = args.positional()[1];
    std::set<vantlib::ObjectType> chosen;
    for (size_t i = 2; i < args.positional().size(); ++i) {
        const std::string& word = args.positional()[i];
        // Profiles come with their standards and profile names.
        chosen.insert(isProfileWord(word) ? vantlib::kConstructionProfile : kindFromWord(word).type);
    }

    const auto library = openLibrary(libraryPath, true);
    std::string document;
    {
        TerminalProgress progress("Exporting");
        document = vantlib::exportLibrary(*library, chosen, [&](size_t done, size_t total) { progress(done, total); });
    }
    // Written beside the target first, so a failed write never leaves half a document.
    const std::string partial = documentPath + ".partial";
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        file << document;
        file.close();
        if (!file)
            throw std::runtime_error(documentPath + ": cannot be written");
    }
    if (std::rename(partial.c_str(), documentPath.c_str()) != 0) {
        std::remove(partial.c_str());
        throw std::runtime_error(documentPath + ": cannot be written");
    }
    out << "Exported " << libraryPath << " to " << documentPath << " (" << document.size() << " bytes)\n";
    return 0;
}

int importCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"on-clash"});
    args.requirePositional(2, "LIBRARY FILE.json");
    const std::string& libraryPath = args.positional()[0];
    const std::string& documentPath = args.positional()[1];
    const std::string document = readWholeFile(documentPath);
    const ImportTarget target = importTarget(args);
    vantlib::ImportReport report;
    try {
        TerminalProgress progress("Importing");
        report = vantlib::importLibrary(target.library, document, target.answer,
                                        [&](size_t done, size_t total) { progress(done, total); });
    } catch (const vantlib::ExchangeError& e) {
        throw std::runtime_error(documentPath + ": " + e.what() + "; nothing was imported");
    }

    printImportReport(report, out);
    out << "Imported " << documentPath << " into " << libraryPath << '\n';
    return 0;
}

}  // namespace vlib
