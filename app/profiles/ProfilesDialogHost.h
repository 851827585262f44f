#pragma once
// The calls through which the profiles dialog reaches the drawing: the standards the host
// allows, the project information dialog, and geometry picked in the model. Every call of this
// base does nothing and answers "nothing"; a host passes an object of a derived class.
#include <set>
#include <vector>

#include <OdDbObjectId.h>
#include <OdString.h>
#include <OdUnits.h>
#include <QcSmartPtr.h>

#include <vantlib/Profile.h>

#include <vl_db/DocumentLibraries.h>

class OdDbDatabase;

namespace vl_app {

// A profile made from entities the user picked in the drawing.
struct CustomProfileInfo {
    std::vector<OdDbObjectId> entities;
    QcSmartPtr<vantlib::CustomProfile> profile;
    OdDb::UnitsValue unit = OdDb::kUnitsMillimeters;
};

class ProfilesDialogHost {
public:
    virtual ~ProfilesDialogHost() = default;

    virtual bool openProjectInfoDlg(OdDbDatabase&, vl_db::DocumentLibraries*, int) { return false; }
    virtual CustomProfileInfo getProfileFromGeometricSel(OdDb::UnitsValue) { return CustomProfileInfo(); }
    // The standards the host allows (empty: every standard).
    virtual void getAllowedProfileStandards(std::set<OdString>&) {}
    // Turns the allowed standards into those the drawing's libraries contain; false when they
    // contain none of them.
    virtual bool expandProfileStandards(OdDbDatabase*, std::set<OdString>&) { return false; }
};

}  // namespace vl_app
