// Studio command that opens the axis offset dialog on a profile named after the command:
// "profile-offset IPE 200" (the project library first, then the central one); and the lookup
// of profiles by the name typed after a command.
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Profiles.h>

#include "app/ModuleCommands.h"
#include "app/common/Distances.h"
#include "app/common/ErrorMessages.h"
#include "app/profiles/DlgAxisOffset.h"
#include "app/profiles/NamedProfile.h"
#include "app/profiles/ProfilesInfo.h"

namespace vl_app {

namespace {

QcSmartPtr<vantlib::Profile> findByFullName(const std::shared_ptr<vantlib::Library>& library, const wxString& name) {
    if (!library)
        return QcSmartPtr<vantlib::Profile>();
    std::vector<QcSmartPtr<vantlib::Profile>> profiles;
    library->get(profiles, vantlib::ProfilesPanelQuery());
    for (const auto& profile : profiles)
        if (toWx(vl_db::fullProfileName(*profile)).IsSameAs(name, false))
            return profile;
    return QcSmartPtr<vantlib::Profile>();
}

}  // namespace

QcSmartPtr<vantlib::Profile> findProfileByName(vl_db::DocumentLibraries* libs, const wxString& fullName,
                                               vl_db::EDbType& library) {
    library = vl_db::kDbProject;
    if (QcSmartPtr<vantlib::Profile> found = findByFullName(libs->primary(false), fullName))
        return found;
    library = vl_db::kDbCentral;
    if (QcSmartPtr<vantlib::Profile> found = findByFullName(libs->secondary(), fullName))
        return found;
    library = vl_db::kDbNone;
    return QcSmartPtr<vantlib::Profile>();
}

namespace {

void runProfileOffset() {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    const wxString name = ca::CaApp::instance()->commandArgument();
    if (name.empty()) {
        ca::prompt(_("Name the profile after the command, for example: profile-offset IPE 200"));
        return;
    }
    try {
        vl_db::EDbType library = vl_db::kDbNone;
        const QcSmartPtr<vantlib::Profile> profile = findProfileByName(vl_db::docLibs(db), name, library);
        if (!profile) {
            ca::prompt(wxString::Format(_("There is no profile named \"%s\"."), name));
            return;
        }
        auto* host = static_cast<ProfilesInfo*>(ca::CaApp::instance()->service(kProfilesInfoService));
        const OdDb::UnitsValue unit = profile->library()->unit();
        DlgAxisOffset dialog(wxg::mainWindow(), profile, unit, host, db);
        if (dialog.ShowModal() == wxID_OK)
            ca::prompt(wxString::Format(_("The axis offset of %s is now %s, %s."), toWx(vl_db::fullProfileName(*profile)),
                                        formatDistance(profile->offset().x, unit, true),
                                        formatDistance(profile->offset().y, unit, true)));
    } catch (const std::exception& error) {
        ca::prompt(wxString::Format(_("The axis offset dialog could not be shown: %s"), errorText(error)));
    }
}

const ModuleCommandRegistration g_profileOffset("profile-offset", wxString(), [] { runProfileOffset(); });

}  // namespace

}  // namespace vl_app
