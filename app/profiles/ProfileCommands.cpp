// Studio commands of the profiles dialog: the manager, the manager starting a new profile, and
// the two pickers.
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Profiles.h>

#include "app/common/ErrorMessages.h"
#include "app/ModuleCommands.h"
#include "app/profiles/DlgProfiles.h"
#include "app/profiles/NamedProfile.h"

namespace vl_app {

namespace {

void runProfiles(vl_db::EMode mode, bool startNew = false) {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    try {
        QcSmartPtr<vantlib::Profile> chosen;
        // The host's profile services, when it offers them; the dialog works without.
        auto* host = static_cast<ProfilesInfo*>(ca::CaApp::instance()->service(kProfilesInfoService));
        DlgProfiles::CustomProfileInfo picked;
        // A profile named after the command ("profiles IPE 200") is selected at the start.
        vl_db::EDbType library = vl_db::kDbNone;
        const wxString named = startNew ? wxString() : ca::CaApp::instance()->commandArgument();
        const QcSmartPtr<vantlib::Profile> preselected =
            named.empty() ? QcSmartPtr<vantlib::Profile>() : findProfileByName(vl_db::docLibs(db), named, library);
        if (!named.empty() && !preselected) {
            ca::prompt(wxString::Format(_("There is no profile named \"%s\"."), named));
            return;
        }
        const DlgProfiles::EButton answer =
            startNew ? DlgProfiles::createProfile(vl_db::docLibs(db), chosen, &picked, host)
                     : DlgProfiles::selectProfiles(preselected ? preselected->id() : 0, vl_db::docLibs(db), chosen,
                                                   &picked, host, library, mode);
        if (mode != vl_db::kModePicker && mode != vl_db::kModeProfilePicker)
            return;
        if (answer == DlgProfiles::kButtonOk && chosen)
            ca::prompt(wxString::Format(_("Profile: %s"), toWx(vl_db::fullProfileName(*chosen))));
        else if (answer == DlgProfiles::kButtonUnselect)
            ca::prompt(_("The profile was unselected."));
        else
            ca::prompt(_("No profile was picked."));
    } catch (const std::exception& error) {
        ca::prompt(wxString::Format(_("The profiles could not be shown: %s"), errorText(error)));
    }
}

const ModuleCommandRegistration g_profiles("profiles", wxTRANSLATE("Profiles"),
                                           [] { runProfiles(vl_db::kModeManager); });
const ModuleCommandRegistration g_newProfile("new-profile", wxTRANSLATE("New profile"),
                                             [] { runProfiles(vl_db::kModeManager, true); });
const ModuleCommandRegistration g_pickProfile("pick-profile", wxTRANSLATE("Pick a profile"),
                                              [] { runProfiles(vl_db::kModePicker); });
const ModuleCommandRegistration g_pickProfileOrNone("pick-profile-or-none", wxTRANSLATE("Pick a profile or none"),
                                                    [] { runProfiles(vl_db::kModeProfilePicker); });

}  // namespace

}  // namespace vl_app
