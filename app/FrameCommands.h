#pragma once
// The work behind the module's own studio commands, kept apart from the commands' windows.
#include <functional>
#include <memory>

#include <wx/arrstr.h>
#include <wx/string.h>

#include <CaApp.h>

namespace vantlib {
class Library;
}

namespace vl_app {

struct LibraryCopyReport {
    unsigned copied = 0;               // materials and compositions stored (new, replaced or renamed)
    unsigned skippedMaterials = 0;     // clashes of materials answered with skip
    unsigned skippedCompositions = 0;  // clashes of compositions answered with skip
    bool cancelled = false;            // the copy was cancelled and the target left unchanged
};

// Called before each object is copied with the number done so far, the total and the object's
// name; returning false cancels the copy.
using CopyProgress = std::function<bool(unsigned done, unsigned total, const wxString& name)>;

// Copies every material, then every composition, of `source` into `target` in one transaction,
// putting the name clashes of both kinds to the user. A cancelled or failed copy leaves `target`
// as it was; failures of the library arrive as vantlib::Exception.
LibraryCopyReport copyMaterialsAndCompositions(const std::shared_ptr<vantlib::Library>& target,
                                               const std::shared_ptr<const vantlib::Library>& source,
                                               const CopyProgress& progress);

// The command-line report of a finished copy, one sentence per line: how many objects were
// stored, then how many materials and how many compositions were skipped (a kind with none
// skipped is not mentioned).
wxArrayString copyReportLines(const LibraryCopyReport& report);

// Describes the files that travel with a drawing in a transmittal package, one line each.
wxString transmittalFileLine(const std::pair<OdString, ca::TransmittalGraphNode::EFileType>& file);

}  // namespace vl_app
