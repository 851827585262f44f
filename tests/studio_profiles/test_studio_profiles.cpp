// The studio's profile services on real drawings: same-geometry search across both libraries
// and units, entity bookkeeping, section figures and the allowed standards.
#include <cmath>

#include <OdEdSettingsManager.h>

#include "DrawingFixture.h"
#include "StudioProfilesInfo.h"

using namespace vl_db_test;

namespace {

QcSmartPtr<vantlib::Profile> beam(const QcSmartPtr<vantlib::ProfileName>& name, const wchar_t* size, double scale) {
    auto p = vantlib::IShapeProfile::create(name, size);
    p->set_overall_depth(200 * scale);
    p->set_overall_width(100 * scale);
    p->set_web_thickness(5.6 * scale);
    p->set_flange_thickness(8.5 * scale);
    p->set_fillet_radius(12 * scale);
    return QcSmartPtr<vantlib::Profile>(p.get());
}

QcSmartPtr<vantlib::ProfileName> ipe(const wchar_t* standard) {
    return vantlib::ProfileName::create(vantlib::ProfileStandard::create(standard), L"IPE",
                                        vantlib::kProfileStructuralSteel);
}

class StudioProfilesTest : public DrawingFixture {
protected:
    void SetUp() override {
        DrawingFixture::SetUp();
        // The central library is in centimetres, the drawing and its project library in millimetres.
        {
            auto central = vantlib::Library::create(od(path("central.vlib")), OdDb::kUnitsCentimeters);
            central->save(beam(central->save(ipe(L"EN 10365")), L"200", 0.1));
            central->save(ProfileStandard(L"AISC 360"));
        }
        preferences.setDefaultMetricLibrary(od(path("central.vlib")));
        db = newDrawing("hall.vldwg");
        project = vl_db::docLibs(db)->primary(true);
        ipe200 = project->save(beam(project->save(ipe(L"User")), L"200", 1.0));
    }

    static QcSmartPtr<vantlib::ProfileStandard> ProfileStandard(const wchar_t* name) {
        return vantlib::ProfileStandard::create(name);
    }

    OdDbDatabase* db = nullptr;
    std::shared_ptr<vantlib::Library> project;
    QcSmartPtr<vantlib::Profile> ipe200;
    StudioProfilesInfo info;
};

}  // namespace

TEST_F(StudioProfilesTest, SameGeometryIsFoundInBothLibrariesWhateverTheirUnit) {
    std::vector<QcSmartPtr<vantlib::Profile>> matches;
    ASSERT_TRUE(info.findInDB(*db, *beam(ipe(L"X"), L"new", 1.0), OdDb::kUnitsMillimeters, matches));
    ASSERT_EQ(2u, matches.size());
    EXPECT_EQ(ipe200->id(), matches[0]->id());
    EXPECT_EQ(OdString(L"EN 10365 IPE 200"), matches[1]->displayName());

    // Asked in metres, the same beam is 0.2 deep; a beam a millimetre deeper is another one.
    EXPECT_TRUE(info.findInDB(*db, *beam(ipe(L"X"), L"m", 0.001), OdDb::kUnitsMeters, matches));
    EXPECT_EQ(2u, matches.size());
    auto deeper = beam(ipe(L"X"), L"d", 1.0);
    deeper->setParameter(vantlib::ShapeParameter::kOverallDepth, 201);
    EXPECT_FALSE(info.findInDB(*db, *deeper, OdDb::kUnitsMillimeters, matches));
    EXPECT_TRUE(matches.empty());
}

TEST_F(StudioProfilesTest, SectionFiguresAndValidity) {
    EXPECT_NEAR(info.getProfileArea(*db, *ipe200), 2848.0, 28.0);
    EXPECT_NEAR(info.getProfileGrossArea(*db, *ipe200), info.getProfileArea(*db, *ipe200), 1e-9);
    EXPECT_EQ(std::make_pair(100.0, 200.0), info.getProfileDims(*ipe200));
    EXPECT_TRUE(info.isValidProfile(*ipe200));

    auto flat = beam(ipe(L"X"), L"0", 1.0);
    flat->setParameter(vantlib::ShapeParameter::kOverallDepth, 0);
    EXPECT_FALSE(info.isValidProfile(*flat));
    EXPECT_EQ(0.0, info.getProfileArea(*db, *flat));
    EXPECT_EQ(std::make_pair(0.0, 0.0), info.getProfileDims(*flat));
}

TEST_F(StudioProfilesTest, EntitiesAreAttachedAndDetached) {
    OdArray<OdDbObjectId> beams{db->addEntity(OdDbEntity::createObject()), db->addEntity(OdDbEntity::createObject())};
    info.setProfileId(ipe200->id(), beams);
    OdArray<OdDbObjectId> found;
    info.findProfileId(*db, ipe200->id(), found);
    EXPECT_EQ(2u, found.size());

    info.removeProfileId(OdArray<OdDbObjectId>{beams[0]});
    info.findProfileId(*db, ipe200->id(), found);
    EXPECT_EQ(OdArray<OdDbObjectId>{beams[1]}, found);

    OdArray<OdDbObjectId> detached;
    info.removeProfileId(*db, ipe200->id(), detached);
    EXPECT_EQ(OdArray<OdDbObjectId>{beams[1]}, detached);
    info.findProfileId(*db, ipe200->id(), found);
    EXPECT_TRUE(found.isEmpty());
    EXPECT_THROW(info.setProfileId(9999, beams), vantlib::ConsistencyError);
}

TEST_F(StudioProfilesTest, AllowedStandardsComeFromTheSettingAndTheLibraries) {
    EXPECT_EQ((std::vector<OdString>{L"EN", L"AISC 360"}), profileStandardList(L" EN ;AISC 360,, en "));
    const std::vector<OdString> available{L"EN 10365", L"ENV 1", L"aisc 360", L"User"};
    EXPECT_EQ((std::set<OdString>{L"EN 10365", L"aisc 360"}),
              matchProfileStandards({L"en", L"AISC 360"}, available));

    OdEdSettingsManager::instance().setStore(std::make_shared<OdEdTextFileSettingsStore>(od(path("settings.txt"))));
    OdEdSettingsManager::instance().setString(L"BIMPROFILESTANDARDS", L"EN; DIN");
    std::set<OdString> standards;
    info.getAllowedProfileStandards(standards);
    EXPECT_EQ((std::set<OdString>{L"EN", L"DIN"}), standards);
    EXPECT_TRUE(info.expandProfileStandards(db, standards));
    EXPECT_EQ(std::set<OdString>{L"EN 10365"}, standards);
    standards = {L"DIN"};
    EXPECT_FALSE(info.expandProfileStandards(db, standards));
}
