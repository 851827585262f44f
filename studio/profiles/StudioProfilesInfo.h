#pragma once
// The studio's profile services to the profiles editor: entities using profiles through the
// drawing-side manager, section geometry through the section library, and the standards the
// setting BIMPROFILESTANDARDS allows.
#include <functional>
#include <vector>

#include <app/profiles/ProfilesInfo.h>

class StudioProfilesInfo : public ProfilesInfo {
public:
    // Lets the user pick an outline of the active drawing: the picked outline first, then its
    // holes; nothing when the user gave up.
    using OutlinePicker = std::function<std::vector<OdDbObjectId>()>;
    void setOutlinePicker(OutlinePicker picker) { m_pickOutline = std::move(picker); }

    void findProfileId(OdDbDatabase& db, unsigned profileId, OdArray<OdDbObjectId>& entities) override;
    void removeProfileId(const OdArray<OdDbObjectId>& entities) override;
    void removeProfileId(OdDbDatabase& db, unsigned profileId, OdArray<OdDbObjectId>& entities) override;
    void applyProfile(const QcSmartPtr<vantlib::Profile>& profile, const OdArray<OdDbObjectId>& entities) override;
    void setProfileId(unsigned profileId, const OdArray<OdDbObjectId>& entities) override;
    double getProfileArea(OdDbDatabase& db, const vantlib::Profile& profile) override;
    double getProfileGrossArea(OdDbDatabase& db, const vantlib::Profile& profile) override;
    CustomProfileInfo getProfileFromGeometricSel(OdDb::UnitsValue unit) override;
    QcSmartPtr<vantlib::Profile> getVantlibProfileFromGeometricSel(OdDb::UnitsValue unit) override;
    OdArray<OdSmartPtr<OdDbEntity>> getProfileEntityArr(OdDbDatabase& db, const vantlib::Profile& profile) override;
    OdArray<OdSmartPtr<OdDbEntity>> getRotatedProfileEntityArr(OdDbDatabase& db, vantlib::CustomProfile& profile,
                                                               bool left) override;
    OdArray<OdSmartPtr<OdDbEntity>> getMirroredProfileEntityArr(OdDbDatabase& db, vantlib::CustomProfile& profile,
                                                                bool horizontal) override;
    bool findInDB(OdDbDatabase& db, const vantlib::Profile& profile, OdDb::UnitsValue unit,
                  std::vector<QcSmartPtr<vantlib::Profile>>& matches) override;
    std::pair<double, double> getProfileDims(const vantlib::Profile& profile) override;
    vantlib::Vector2d toCentroid(const vantlib::Profile& profile) override;
    void getAllowedProfileStandards(std::set<OdString>& standards) override;
    bool expandProfileStandards(OdDbDatabase* db, std::set<OdString>& standards) override;
    bool isValidProfile(const vantlib::Profile& profile) override;

private:
    OutlinePicker m_pickOutline;
};

// The standards named by a BIMPROFILESTANDARDS value, in its order: separated by ';' or ',',
// blanks trimmed, empty entries and repeats (letter case ignored) dropped.
std::vector<OdString> profileStandardList(const OdString& setting);
// The names in `available` that an allowed entry names: the same name (letter case ignored) or
// a name that begins with the entry and a blank ("EN" allows "EN 10365").
std::set<OdString> matchProfileStandards(const std::set<OdString>& allowed, const std::vector<OdString>& available);
