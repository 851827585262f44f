// Profiles on the drawing side: list order, names and labels, and the entities that use a
// profile keeping it in its library.
#include "DrawingFixture.h"

#include <set>

#include <OdDbEntity.h>

#include <vl_db/Profiles.h>

using namespace vl_db_test;

namespace {

vl_db::ProfilePtr profile(const wchar_t* standard, const wchar_t* name, const wchar_t* size) {
    QcSmartPtr<vantlib::ProfileStandard> owner;
    if (*standard)
        owner = vantlib::ProfileStandard::create(standard);
    auto profileName = vantlib::ProfileName::create(owner, name, vantlib::kProfileStructuralSteel);
    return vl_db::ProfilePtr(vantlib::IShapeProfile::create(profileName, size).get());
}

class GermanStandardNames : public vantlib::Translations {
public:
    GermanStandardNames() { set(this); }
    ~GermanStandardNames() override { set(nullptr); }
    bool translate(OdString& out, const OdString& text) override {
        if (text != L"user defined")
            return false;
        out = L"benutzerdefiniert";
        return true;
    }
};

}  // namespace

TEST(ProfileNames, ListsOrderByStandardNameAndSizeWithNumbersByValue) {
    std::vector<vl_db::ProfilePtr> profiles = {
        profile(L"EN 10365", L"IPE", L"100"),   profile(L"EN 10365", L"IPE", L"80"),
        profile(L"EN 10365", L"HEA", L"1000"),  profile(L"", L"Duct", L"200x100"),
        profile(L"EN 10056", L"L", L"100x10"),  profile(L"EN 10056", L"L", L"100x8"),
        profile(L"EN 10056", L"l", L"90X9"),    profile(L"EN 10365", L"ipe", L"080"),
    };
    vl_db::sortProfiles(profiles);
    std::vector<OdString> order;
    for (const auto& p : profiles)
        order.push_back(p->displayName());
    const std::vector<OdString> expected = {L"Duct 200x100",   L"EN 10056 l 90X9",  L"EN 10056 L 100x8",
                                            L"EN 10056 L 100x10", L"EN 10365 HEA 1000", L"EN 10365 IPE 80",
                                            L"EN 10365 ipe 080", L"EN 10365 IPE 100"};
    EXPECT_EQ(expected, order) << "equal keys keep the library order";

    EXPECT_EQ(OdString(L"IPE 80"), vl_db::fullProfileName(*profile(L"EN 10365", L"IPE", L"80")));
    EXPECT_EQ(OdString(L"Plate"), vl_db::fullProfileName(*profile(L"", L"Plate", L"")));
    EXPECT_EQ(OdString(), vl_db::fullProfileName(QcSmartPtr<const vantlib::Profile>()));
}

TEST(ProfileNames, SizesOrderByTheirNumbersWhateverSeparatesThem) {
    const std::vector<OdString> sizes = {L"100x9",  L"100.5", L"0100x2", L"100",   L"100-5", L"100 A",
                                         L"100x10", L"100a",  L"99x200", L"1e3",   L"10",    L"HD 400x1299",
                                         L"100X3",  L"007",   L"7b",     L"hd 400x314"};
    auto name = vantlib::ProfileName::create(vantlib::ProfileStandard::create(L"EN"), L"X", vantlib::kProfileStructuralSteel);
    std::vector<vl_db::ProfilePtr> profiles;
    for (const OdString& size : sizes)
        profiles.push_back(vl_db::ProfilePtr(vantlib::IShapeProfile::create(name, size).get()));
    vl_db::sortProfiles(profiles);
    std::vector<OdString> order;
    for (const auto& p : profiles)
        order.push_back(p->size());
    const std::vector<OdString> expected = {L"1e3",   L"007",   L"7b",    L"10",     L"99x200", L"100",
                                            L"100 A", L"100-5", L"100.5", L"100a",   L"0100x2", L"100X3",
                                            L"100x9", L"100x10", L"hd 400x314", L"HD 400x1299"};
    EXPECT_EQ(expected, order);
}

TEST(ProfileNames, LabelsOfTypesShapesAndTheUserDefinedStandard) {
    EXPECT_EQ(OdString(L"Electrical"), vl_db::getProfileTypeLabel(vantlib::kProfileElectrical));
    EXPECT_EQ(OdString(L"Structural Steel"), vl_db::getProfileTypeLabel(vantlib::kProfileStructuralSteel));
    EXPECT_EQ(OdString(L"HVAC, Piping"), vl_db::getProfileTypeLabel(vantlib::ProfileType(vantlib::kProfileHvac | vantlib::kProfilePiping)));
    EXPECT_EQ(OdString(L"Generic"), vl_db::getProfileTypeLabel(vantlib::ProfileType(0)));

    std::set<OdString> longLabels, shortLabels;
    for (const vantlib::ProfileClass* c : vantlib::ProfileClass::all()) {
        const OdString longLabel = vl_db::getProfileShapeLabel(c->type(), false);
        const OdString shortLabel = vl_db::getProfileShapeLabel(c->type(), true);
        EXPECT_FALSE(shortLabel.isEmpty()) << c->shortName();
        EXPECT_NE(longLabel, shortLabel) << c->shortName();
        longLabels.insert(longLabel);
        shortLabels.insert(shortLabel);
    }
    EXPECT_EQ(17u, longLabels.size()) << "every class has a label of its own";
    EXPECT_EQ(17u, shortLabels.size());
    EXPECT_EQ(OdString(), vl_db::getProfileShapeLabel(vantlib::kMaterial, true));
    EXPECT_EQ(OdString(), vl_db::getProfileShapeLabel(vantlib::kConstructionProfile, false));

    const OdString stored = vl_db::getUserDefinedGlobalLabel();
    {
        GermanStandardNames german;
        EXPECT_EQ(OdString(L"benutzerdefiniert"), vl_db::convertProfileStandardLabel(stored, vl_db::kDisplayedString));
        EXPECT_EQ(stored, vl_db::convertProfileStandardLabel(L"benutzerdefiniert", vl_db::kStoredString));
        EXPECT_EQ(OdString(L"EN 10365"), vl_db::convertProfileStandardLabel(L"EN 10365", vl_db::kDisplayedString));
        EXPECT_EQ(OdString(L"EN 10365"), vl_db::convertProfileStandardLabel(L"EN 10365", vl_db::kStoredString));
    }
    EXPECT_EQ(stored, vl_db::convertProfileStandardLabel(stored, vl_db::kDisplayedString));
}

// Libraries keep only profiles that make a section.
vl_db::ProfilePtr beam(const QcSmartPtr<vantlib::ProfileName>& name, const wchar_t* size, double depth) {
    auto profile = vantlib::IShapeProfile::create(name, size);
    profile->set_overall_depth(depth);
    profile->set_overall_width(depth / 2);
    profile->set_web_thickness(depth / 40);
    profile->set_flange_thickness(depth / 25);
    return vl_db::ProfilePtr(profile.get());
}

class ProfileEntitiesTest : public DrawingFixture {
protected:
    void SetUp() override {
        DrawingFixture::SetUp();
        db = newDrawing("hall.vldwg");
        project = vl_db::docLibs(db)->primary(true);
        auto name = project->save(vantlib::ProfileName::create(vantlib::ProfileStandard::create(L"EN 10365"), L"IPE",
                                                               vantlib::kProfileStructuralSteel));
        ipe200 = project->save(beam(name, L"200", 200));
        ipe300 = project->save(beam(name, L"300", 300));
        for (int i = 0; i < 3; ++i)
            beams.push_back(db->addEntity(OdDbEntity::createObject()));
    }

    OdDbDatabase* db = nullptr;
    std::shared_ptr<vantlib::Library> project;
    vl_db::ProfilePtr ipe200, ipe300;
    std::vector<OdDbObjectId> beams;
};

TEST_F(ProfileEntitiesTest, EntitiesUsingAProfileKeepItUntilDetached) {
    vl_db::setProfileId({beams[0], beams[1]}, vl_db::kDbProject, ipe200->id(), vl_db::fullProfileName(*ipe200));
    EXPECT_EQ((std::vector<OdDbObjectId>{beams[0], beams[1]}), vl_db::findProfileId(*db, vl_db::kDbProject, ipe200->id()));
    EXPECT_TRUE(vl_db::findProfileId(*db, vl_db::kDbCentral, ipe200->id()).empty());

    // Removal is refused whichever kind names the profile: any profile or its shape.
    EXPECT_EQ(vantlib::Library::kVetoed, project->remove<vantlib::Profile>(ipe200->id()));
    EXPECT_EQ(vantlib::Library::kVetoed, project->remove<vantlib::IShapeProfile>(ipe200->id()));
    EXPECT_EQ((std::set<unsigned>{ipe200->id()}),
              project->remove<vantlib::Profile>(std::set<unsigned>{ipe200->id(), ipe300->id()}));

    // An entity uses one profile: setting another replaces it.
    vl_db::setProfileId({beams[1]}, vl_db::kDbProject, ipe300->id(), vl_db::fullProfileName(*ipe300));
    EXPECT_EQ(std::vector<OdDbObjectId>{beams[0]}, vl_db::findProfileId(*db, vl_db::kDbProject, ipe200->id()));
    auto beam = OdDbEntity::cast(beams[1].openObject().get());
    EXPECT_EQ(1u, beam->libraryReferences().size());

    EXPECT_EQ(std::vector<OdDbObjectId>{beams[0]}, vl_db::removeProfileId(*db, vl_db::kDbProject, ipe200->id()));
    EXPECT_TRUE(vl_db::findProfileId(*db, vl_db::kDbProject, ipe200->id()).empty());
    EXPECT_EQ(vantlib::Library::kRemoved, project->remove<vantlib::Profile>(ipe200->id()));
}

TEST_F(ProfileEntitiesTest, AUseByFullNameAloneAlsoKeepsTheProfile) {
    auto entity = OdDbEntity::cast(beams[2].openObject(OdDb::kForWrite).get());
    entity->addLibraryReference({vantlib::kConstructionProfile, int32_t(vl_db::kDbProject), L"IPE 300", 0});
    EXPECT_EQ(vantlib::Library::kVetoed, project->remove<vantlib::Profile>(ipe300->id()));
    EXPECT_EQ(vantlib::Library::kRemoved, project->remove<vantlib::Profile>(ipe200->id()));
}
