#include "app/common/LibraryCopy.h"

#include <wx/intl.h>
#include <wx/msgdlg.h>

#include <vantlib/IdMapping.h>
#include <vantlib/Profile.h>

#include "app/LibraryReactor.h"
#include "app/common/ErrorMessages.h"

namespace vl_app {

std::set<vantlib::ObjectType> clashQuestionTypes(vantlib::ObjectType kind) {
    // A composition brings its materials along; their clashes are the user's choice too.
    if (kind == vantlib::kComposition)
        return {vantlib::kComposition, vantlib::kMaterial};
    return {kind};
}

wxString skippedMessage(vantlib::ObjectType kind, unsigned count) {
    if (count == 0)
        return wxString();
    switch (kind) {
    case vantlib::kMaterial:
        return wxString::Format(wxPLURAL("%u material was not copied: the destination library keeps its own.",
                                         "%u materials were not copied: the destination library keeps its own.", count),
                                count);
    case vantlib::kComposition:
        return wxString::Format(
            wxPLURAL("%u composition was not copied: the destination library keeps its own.",
                     "%u compositions were not copied: the destination library keeps its own.", count),
            count);
    default:
        return wxString::Format(wxPLURAL("%u object was not copied: the destination library keeps its own.",
                                         "%u objects were not copied: the destination library keeps its own.", count),
                                count);
    }
}

namespace {
// Profiles are copied under the keys of their shape classes, all of them of the profile kind.
bool isOfKind(vantlib::ObjectType type, vantlib::ObjectType kind) {
    return type == kind || (kind == vantlib::kConstructionProfile && vantlib::ProfileClass::byType(type));
}
}  // namespace

CopyOutcome copyObjects(wxWindow* parent, const std::shared_ptr<const vantlib::Library>& source,
                        const std::shared_ptr<vantlib::Library>& target, const std::set<vantlib::ObjectKey>& keys,
                        vantlib::ObjectType kind) {
    CopyOutcome outcome;
    if (!source || !target || keys.empty())
        return outcome;
    const std::set<vantlib::ObjectType> asked = clashQuestionTypes(kind);
    try {
        const LibraryReactor::DlgEnabler askAboutClashes(asked);
        vantlib::IdMapping mapping(target);
        target->copy(source, keys, mapping, vantlib::Library::kSingleTransaction);
        for (const auto& entry : mapping)
            if (isOfKind(entry.first.type, kind) && entry.second.state != vantlib::IdMapping::kNotCopied)
                ++outcome.copied;
        // The counts were reset when the copy's transaction began, so they are this copy's.
        outcome.skipped = LibraryReactor::instance()->skipped(kind);
    } catch (const std::exception& error) {
        showError(parent, error, _("The objects could not be copied: %s"));
        return CopyOutcome();
    }
    const wxString message = skippedMessage(kind, outcome.skipped);
    if (!message.empty())
        showMessage(parent, message, wxICON_INFORMATION);
    return outcome;
}

}  // namespace vl_app
