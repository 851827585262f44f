#pragma once
// Export and import of a drawing's project or central library as an exchange document: the
// work and the report, kept apart from the windows of the two studio commands.
#include <functional>
#include <memory>

#include <wx/arrstr.h>
#include <wx/string.h>

#include <vantlib/Exchange.h>

namespace vl_app {

// Called during the work with the objects done and their total; returning false cancels.
using ExchangeStep = std::function<bool(size_t done, size_t total)>;

// Thrown out of the work when the user cancelled it; a cancelled import leaves the library as
// it was, a cancelled export writes no file.
class ExchangeCancelled : public std::exception {
public:
    const char* what() const noexcept override { return "cancelled"; }
};

// Writes the whole library into `path` (replacing the file only once the document is complete).
void exportLibraryFile(const vantlib::Library& library, const wxString& path, const ExchangeStep& step);

// Reads the document at `path` into the library in one transaction.
vantlib::ImportReport importLibraryFile(const std::shared_ptr<vantlib::Library>& library, const wxString& path,
                                        vantlib::ClashAnswer onClash, const ExchangeStep& step);

// The report of a finished import, one whole sentence per line: the conversion of lengths, how
// many objects were created, skipped, overwritten and renamed (a count of none is left out).
wxArrayString importReportLines(const vantlib::ImportReport& report);

}  // namespace vl_app
