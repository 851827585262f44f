#include "DlgUpdateProfile.h"

#include <wx/intl.h>

#include "CaApp.h"

namespace wxg {

DlgUpdateProfile::DlgUpdateProfile(wxWindow* parent, const wxString& fullName, unsigned entityCount)
    : DlgQuestion(parent, ca::appName()) {
    setPrompts(wxString::Format(wxPLURAL("The profile '%s' is used by %u entity in the drawing.",
                                         "The profile '%s' is used by %u entities in the drawing.", entityCount),
                                fullName, entityCount),
               _("Choose one of the following actions:"));
    addAnswer(kFirstAnswer, _("Update"), _("Apply the changed profile to the entities that use it."));
    addAnswer(kSecondAnswer, _("Keep entities"),
              _("Change the profile; the entities keep their current shape through a copy of the old profile."));
    addAnswer(kThirdAnswer, _("Cancel"), _("Abandon the change. The profile stays as it was."));
    setAnswersMask(7);
}

}  // namespace wxg
