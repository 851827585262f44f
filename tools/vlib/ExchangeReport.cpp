#include "ExchangeReport.h"

#include <ostream>
#include <stdexcept>

#include "Arguments.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

namespace {

std::string countsLine(const vantlib::ImportCounts& c) {
    return std::to_string(c.created) + " created, " + std::to_string(c.skipped) + " skipped, " +
           std::to_string(c.overwritten) + " overwritten, " + std::to_string(c.renamed) + " renamed";
}

}  // namespace

vantlib::ClashAnswer clashAnswerFromWord(const std::string& word) {
    if (word == "skip")
        return vantlib::ClashAnswer::kSkip;
    if (word == "overwrite")
        return vantlib::ClashAnswer::kOverwrite;
    if (word == "rename")
        return vantlib::ClashAnswer::kRename;
    throw UsageError("--on-clash takes skip, overwrite or rename, not '" + word + "'");
}

ImportTarget importTarget(const Arguments& args) {
    const std::string& libraryPath = args.positional()[0];
    ImportTarget target{nullptr, clashAnswerFromWord(args.value("on-clash", "skip")),
                        std::vector<std::string>(args.positional().begin() + 1, args.positional().end())};
    target.library = openLibrary(libraryPath, false);
    if (target.library->isReadOnly())
        throw std::runtime_error(libraryPath + ": library is read-only");
    return target;
}

void printImportReport(const vantlib::ImportReport& report, std::ostream& out) {
    if (report.converted)
        out << "Lengths converted from " << vantlib::exchangeUnitName(report.documentUnit) << " to "
            << vantlib::exchangeUnitName(report.libraryUnit) << '\n';
    for (const auto& entry : report.kinds) {
        const auto& c = entry.counts;
        if (c.created + c.skipped + c.overwritten + c.renamed != 0)
            out << vantlib::exchangeKindKey(entry.type) << ": " << countsLine(c) << '\n';
    }
    for (const auto& rename : report.renames)
        out << "renamed '" << toUtf8(rename.from) << "' to '" << toUtf8(rename.to) << "'\n";
    out << "In all: " << countsLine(report.total()) << '\n';
}

}  // namespace vlib
