#include "LibraryInfo.h"

#include <wx/translation.h>

#include <OdStringWx.h>

#include <vl_db/DocumentLibraries.h>

namespace vl_db {

namespace {

wxString state(const DocumentLibraries& libs, EDbType type) {
    const auto library = type == kDbProject ? libs.primary() : libs.secondary();
    switch (libs.fileError(type)) {
    case LibraryFileError::kMissing: return _("file missing");
    case LibraryFileError::kLoadingError: return _("not a library or of a newer version");
    case LibraryFileError::kUnknownError: return _("cannot be read");
    case LibraryFileError::kNone: break;
    }
    if (!library)
        return wxString();
    return library->isReadOnly() ? _("read-only") : _("writable");
}

}  // namespace

wxString describeLibraries(OdDbDatabase* db) {
    const DocumentLibraries* libs = docLibs(db);
    if (!libs)
        return _("No drawing is open.");
    wxString text;
    if (libs->primaryPath().isEmpty())
        text << _("Project library: none") << "\n";
    else if (libs->isPrimaryEmbedded())
        text << wxString::Format(_("Project library: embedded in %s (%s)"), toWx(libs->primaryPath()),
                                 state(*libs, kDbProject)) << "\n";
    else
        text << wxString::Format(_("Project library: %s (%s)"), toWx(libs->primaryPath()), state(*libs, kDbProject))
             << "\n";
    if (libs->secondaryPath().isEmpty())
        text << _("Central library: none set in the preferences");
    else
        text << wxString::Format(_("Central library: %s (%s)"), toWx(libs->secondaryPath()), state(*libs, kDbCentral));
    return text;
}

}  // namespace vl_db
