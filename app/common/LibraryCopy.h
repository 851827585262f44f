#pragma once
// Copying the selected objects of one list into the other list's library, by command or by
// drop. While it runs, name clashes of the list's kind (and of the kinds it brings along) are
// put to the user as the keep / replace / rename question; objects kept out are reported.
#include <memory>
#include <set>

#include <wx/string.h>

#include <vantlib/Library.h>
#include <vantlib/Types.h>

class wxWindow;

namespace vl_app {

struct CopyOutcome {
    unsigned copied = 0;   // objects of the list's kind now in the destination
    unsigned skipped = 0;  // clashes of the list's kind answered with "keep the existing one"
};

// The kinds whose clashes the user is asked about while objects of `kind` are copied.
std::set<vantlib::ObjectType> clashQuestionTypes(vantlib::ObjectType kind);

// Copies `keys` from `source` into `target` in one transaction; a failure is shown to the
// user and nothing is copied. Objects that were skipped are reported in a message.
CopyOutcome copyObjects(wxWindow* parent, const std::shared_ptr<const vantlib::Library>& source,
                        const std::shared_ptr<vantlib::Library>& target, const std::set<vantlib::ObjectKey>& keys,
                        vantlib::ObjectType kind);

// "1 material was not copied ..." in the plural form of `count`; empty for 0.
wxString skippedMessage(vantlib::ObjectType kind, unsigned count);

}  // namespace vl_app
