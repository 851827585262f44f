// vlib import-cards LIBRARY PATH... [--on-clash skip|overwrite|rename]
#include <ostream>

#include <vantlib/MaterialCards.h>

#include "Arguments.h"
#include "Commands.h"
#include "ExchangeReport.h"
#include "LibraryFiles.h"
#include "Progress.h"

namespace vlib {

int importCardsCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"on-clash"});
    args.requirePositional(2, "LIBRARY PATH...", true);
    const ImportTarget target = importTarget(args);
    vantlib::CardImportReport report;
    {
        TerminalProgress progress("Importing");
        report = vantlib::importMaterialCards(target.library, target.files, target.answer,
                                              [&](size_t done, size_t total) { progress(done, total); });
    }
    for (const auto& failure : report.failed)
        out << failure.what() << " (card skipped)\n";
    printImportReport(report.import, out);
    out << report.cardsFound << (report.cardsFound == 1 ? " card" : " cards") << " found, " << report.imported.size()
        << " read, " << report.failed.size() << " could not be read\n";
    return 0;
}

}  // namespace vlib
