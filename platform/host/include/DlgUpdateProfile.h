#pragma once
// Asks whether a changed profile should be re-applied to the drawing entities that use it.
// Results: 5300 update the entities, 5301 keep the entities as they are (the profile changes;
// the entities move to a copy of it as it was), 5302 abandon the change.
#include "DlgQuestion.h"

namespace wxg {

class DlgUpdateProfile : public DlgQuestion {
public:
    DlgUpdateProfile(wxWindow* parent, const wxString& fullName, unsigned entityCount);
};

}  // namespace wxg
