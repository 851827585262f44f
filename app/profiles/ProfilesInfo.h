#pragma once
// The host's services to the profiles editor: what the editor needs of the drawing (entities
// using a profile, geometry picked for a custom profile) and of section geometry (areas,
// extents, centroid, same-geometry search). Every operation of this class does nothing and
// returns an empty or false value; a host passes an object of a derived class that does the
// real work, and the editor works (with less) without one.
#include <set>
#include <utility>
#include <vector>

#include <OdArray.h>
#include <OdDbDatabase.h>
#include <OdDbEntity.h>
#include <OdDbObjectId.h>
#include <OdSmartPtr.h>
#include <OdString.h>
#include <OdUnits.h>

#include <vantlib/Profile.h>

namespace vl_db { class DocumentLibraries; }

// Geometry picked in the drawing for a custom profile: the entities, the profile built from
// them and the drawing's unit. The profiles dialog knows it as DlgProfiles::CustomProfileInfo.
struct CustomProfileInfo {
    OdArray<OdSmartPtr<OdDbEntity>> entities;
    QcSmartPtr<vantlib::CustomProfile> profile;
    OdDb::UnitsValue unit = OdDb::kUnitsUndefined;
    // Extents of the profile's section in `unit`; turning the profile swaps them.
    double width = 0.0;
    double height = 0.0;
};

// The name under which a host offers its ProfilesInfo to modules (ca::CaApp::service).
inline constexpr const char* kProfilesInfoService = "ProfilesInfo";

class ProfilesInfo {
public:
    virtual ~ProfilesInfo() = default;

    // The entities of the drawing that use the profile.
    virtual void findProfileId(OdDbDatabase&, unsigned /*profileId*/, OdArray<OdDbObjectId>& /*entities*/) {}
    // Detaches whatever profile the entities use.
    virtual void removeProfileId(const OdArray<OdDbObjectId>& /*entities*/) {}
    // Detaches the profile from every entity that uses it and returns those entities.
    virtual void removeProfileId(OdDbDatabase&, unsigned /*profileId*/, OdArray<OdDbObjectId>& /*entities*/) {}
    // Brings the entities up to date with a changed profile.
    virtual void applyProfile(const QcSmartPtr<vantlib::Profile>& /*profile*/,
                              const OdArray<OdDbObjectId>& /*entities*/) {}
    // Makes the entities use the profile.
    virtual void setProfileId(unsigned /*profileId*/, const OdArray<OdDbObjectId>& /*entities*/) {}
    // Net area of the section (holes taken off) and gross area (holes filled), in the square of
    // the profile's library unit.
    virtual double getProfileArea(OdDbDatabase&, const vantlib::Profile&) { return 0.0; }
    virtual double getProfileGrossArea(OdDbDatabase&, const vantlib::Profile&) { return 0.0; }
    // Lets the user pick closed outlines in the drawing and builds a custom profile from them.
    virtual CustomProfileInfo getProfileFromGeometricSel(OdDb::UnitsValue /*unit*/) { return CustomProfileInfo(); }
    virtual QcSmartPtr<vantlib::Profile> getVantlibProfileFromGeometricSel(OdDb::UnitsValue /*unit*/) {
        return QcSmartPtr<vantlib::Profile>();
    }
    // The section's outline as drawing entities (for previews).
    virtual OdArray<OdSmartPtr<OdDbEntity>> getProfileEntityArr(OdDbDatabase&, const vantlib::Profile&) {
        return OdArray<OdSmartPtr<OdDbEntity>>();
    }
    // The custom profile's outline turned a quarter (left or right) or mirrored (horizontally or
    // vertically); the profile itself is changed the same way.
    virtual OdArray<OdSmartPtr<OdDbEntity>> getRotatedProfileEntityArr(OdDbDatabase&, vantlib::CustomProfile&,
                                                                       bool /*left*/) {
        return OdArray<OdSmartPtr<OdDbEntity>>();
    }
    virtual OdArray<OdSmartPtr<OdDbEntity>> getMirroredProfileEntityArr(OdDbDatabase&, vantlib::CustomProfile&,
                                                                        bool /*horizontal*/) {
        return OdArray<OdSmartPtr<OdDbEntity>>();
    }
    // The drawing's project information dialog; true when the user confirmed it.
    virtual bool openProjectInfoDlg(OdDbDatabase&, vl_db::DocumentLibraries*, int /*page*/) { return false; }
    // Profiles of both libraries of the drawing whose section is the same as the profile's,
    // the profile's dimensions being in `unit`; true when there are any.
    virtual bool findInDB(OdDbDatabase&, const vantlib::Profile&, OdDb::UnitsValue /*unit*/,
                          std::vector<QcSmartPtr<vantlib::Profile>>& /*matches*/) {
        return false;
    }
    // Width and height of the section's extents.
    virtual std::pair<double, double> getProfileDims(const vantlib::Profile&) { return {0.0, 0.0}; }
    // The section's centroid, relative to the centre of its extents.
    virtual vantlib::Vector2d toCentroid(const vantlib::Profile&) { return vantlib::Vector2d(); }
    // The standards the host allows (empty: any).
    virtual void getAllowedProfileStandards(std::set<OdString>& /*standards*/) {}
    // Turns allowed standards into the names of standards the drawing's libraries hold; false
    // when they hold none of them.
    virtual bool expandProfileStandards(OdDbDatabase*, std::set<OdString>& /*standards*/) { return false; }
    // Re-places the axis of the entities that use the profile after its offset changed.
    virtual void updateAxisPlacement(OdDbDatabase*, unsigned /*profileId*/) {}
    // False for a shape that cannot exist (a web thicker than the width, no depth, ...).
    virtual bool isValidProfile(const vantlib::Profile&) { return false; }
};
