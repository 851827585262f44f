// Texts of library values, names of copies, loaders and the tag filter.
#include <gtest/gtest.h>

#include <OdStringWx.h>

#include <vl_db/DbVantLibManager.h>

#include "LibraryFixture.h"
#include "app/common/Helpers.h"
#include "app/common/PropertyLabels.h"
#include "app/common/Tags.h"

using namespace vl_app;
using vl_app_test::LibraryFixture;
using vl_app_test::strings;

TEST(UnitSymbols, FollowTheUnitTableAndAreEmptyOutsideIt) {
    EXPECT_EQ(abbr(OdDb::kUnitsUndefined), "?");
    EXPECT_EQ(abbr(OdDb::kUnitsMillimeters), "mm");
    EXPECT_EQ(abbr(OdDb::kUnitsFeet), "ft");
    EXPECT_EQ(abbr(OdDb::kUnitsMicroinches), wxString(L"\u00B5in"));
    EXPECT_EQ(abbr(OdDb::kUnitsAngstroms), wxString(L"\u00C5"));
    EXPECT_EQ(abbr(OdDb::kUnitsMicrons), wxString(L"\u00B5m"));
    EXPECT_EQ(abbr(OdDb::kUnitsDekameters), "dam");
    EXPECT_EQ(abbr(OdDb::kUnitsUSSurveyMile), "usmi");
    EXPECT_EQ(abbr(static_cast<OdDb::UnitsValue>(25)), "");
    EXPECT_EQ(abbr(static_cast<OdDb::UnitsValue>(-1)), "");
    EXPECT_EQ(full(OdDb::kUnitsMillimeters), "Millimeters");
}

TEST(CompositionBaseTypes, LabelsAndTypesMapOntoEachOther) {
    const wxArrayString labels = baseCompositionClasses();
    ASSERT_EQ(labels.size(), 10u);
    EXPECT_EQ(labels[0], "Wall");
    EXPECT_EQ(labels[1], "Slab");
    EXPECT_EQ(labels[2], "Roof");
    EXPECT_EQ(labels[9], "Generic");
    for (const auto& label : labels)
        EXPECT_EQ(compositionBaseType(compositionBaseType(label)), label);
    EXPECT_EQ(compositionBaseType(vantlib::Composition::kSlab), "Slab");
    EXPECT_EQ(compositionBaseType(vantlib::Composition::kAll), "All");
    EXPECT_EQ(compositionBaseType(static_cast<vantlib::Composition::Type>(3)), "All");
    EXPECT_EQ(compositionBaseType(wxString("All")), vantlib::Composition::kAll);
    EXPECT_EQ(compositionBaseType(wxString("wall")), vantlib::Composition::kAll);
    EXPECT_EQ(compositionBaseType(wxString()), vantlib::Composition::kAll);
}

TEST(MaterialFunctions, LabelsInEnumerationOrder) {
    const wxArrayString labels = functions();
    ASSERT_EQ(labels.size(), 7u);
    EXPECT_EQ(labels[0], "None");
    EXPECT_EQ(labels[3], "Insulation");
    EXPECT_EQ(labels[6], "Membrane");
    EXPECT_EQ(materialFunction(static_cast<vantlib::MaterialFunction>(7)), "?");
}

TEST(PropertyLabels, SharedKindsAndUnknownKinds) {
    EXPECT_EQ(label(kPropName), label(kPropCompositionName));
    EXPECT_EQ(label(kPropThickness), "Thickness ");
    EXPECT_EQ(label(kPropGrossArea), "Gross Area");
    EXPECT_EQ(label(kPropReserved), "Unrecognized property type (33)");
    EXPECT_EQ(label(static_cast<EPropType>(40)), "Unrecognized property type (40)");
}

TEST(StripNumeral, RemovesOnlyATrailingHyphenNumber) {
    EXPECT_EQ(stripNumeral("Brick-12"), "Brick");
    EXPECT_EQ(stripNumeral("A-B-3"), "A-B");
    EXPECT_EQ(stripNumeral("Brick-12a"), "Brick-12a");
    EXPECT_EQ(stripNumeral("Brick-"), "Brick-");
    EXPECT_EQ(stripNumeral("Brick_2"), "Brick_2");
    EXPECT_EQ(stripNumeral("Brick"), "Brick");
    EXPECT_EQ(stripNumeral("-7"), "");
}

using HelpersWithLibraries = LibraryFixture;

TEST_F(HelpersWithLibraries, DuplicateMaterialTakesTheFirstFreeNumberedName) {
    auto brick = material(project, L"Brick");
    brick->information_asset(true)->set_unique_code(L"EAN-1234");

    EXPECT_EQ(toWx(duplicateMaterial(brick, nullptr)->name()), "Brick");
    const auto copy = duplicateMaterial(brick, project);
    EXPECT_EQ(toWx(copy->name()), "Brick-2");
    EXPECT_EQ(copy->id(), 0u);
    EXPECT_FALSE(copy->information_asset()->has_unique_code());
    EXPECT_TRUE(brick->information_asset()->has_unique_code());

    const auto second = project->save(copy);
    EXPECT_EQ(toWx(duplicateMaterial(brick, project)->name()), "Brick-3");
    EXPECT_EQ(toWx(duplicateMaterial(second, project)->name()), "Brick-3");
    // Names are unique without regard to case, so the check must be too.
    material(project, L"brick-3");
    EXPECT_EQ(toWx(duplicateMaterial(second, project)->name()), "Brick-4");
}

TEST_F(HelpersWithLibraries, LoadersReadTheRequestedLibrariesInOrder) {
    project->save(vantlib::Composition::create(L"P1"));
    central->save(vantlib::Composition::create(L"C1"));
    central->save(vantlib::Composition::create(L"C2"));
    std::vector<QcSmartPtr<vantlib::Composition>> found{vantlib::Composition::create(L"stale")};
    loadCompositions(libs, vl_db::kDbNone, found);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(toWx(found[0]->name()), "P1");
    EXPECT_EQ(toWx(found[2]->name()), "C2");
    loadCompositions(libs, vl_db::kDbCentral, found);
    EXPECT_EQ(found.size(), 2u);
    loadCompositions(nullptr, vl_db::kDbNone, found);
    EXPECT_TRUE(found.empty());

    EXPECT_EQ(getLib(libs, vl_db::kDbProject), project);
    EXPECT_EQ(getLib(libs, vl_db::kDbCentral), central);
    EXPECT_EQ(getLib(libs, vl_db::kDbNone), nullptr);
}

TEST_F(HelpersWithLibraries, ClassesOfBothLibrariesEachSorted) {
    for (const wchar_t* name : {L"Wood", L"Concrete"}) {
        auto m = vantlib::Material::create(name);
        m->set_type(vantlib::MaterialType::create(name));
        project->save(m);
    }
    auto steel = vantlib::Material::create(L"Steel");
    steel->set_type(vantlib::MaterialType::create(L"Metal"));
    central->save(steel);
    const wxArrayString classes = materialClasses(libs);
    ASSERT_EQ(classes.size(), 3u);
    EXPECT_EQ(classes[0], "Concrete");
    EXPECT_EQ(classes[1], "Wood");
    EXPECT_EQ(classes[2], "Metal");
    EXPECT_TRUE(compositionClasses(libs).empty());
}

TEST_F(HelpersWithLibraries, AllTagsIsTheSortedUnionOfTagsStillInUse) {
    auto oak = vantlib::Material::create(L"Oak");
    setTags(oak, strings({"wood", "interior"}));
    oak = project->save(oak);
    auto pine = vantlib::Material::create(L"Pine");
    setTags(pine, strings({"wood", "cheap"}));
    pine = central->save(pine);
    EXPECT_EQ(arrStr(oak->tags()), strings({"wood", "interior"}));

    // Retagging leaves "cheap" unused; reading the tags purges it.
    setTags(pine, strings({"exterior"}));
    central->save(pine);
    const wxArrayString tags = allTags(libs);
    EXPECT_EQ(tags, strings({"exterior", "interior", "wood"}));
    EXPECT_EQ(central->count<vantlib::Tag>(), 1u);
}

TEST_F(HelpersWithLibraries, TagFilterToolTipNamesTheFilterAndItsState) {
    EXPECT_EQ(tagFilterToolTip(nullptr), "No tags");
    EXPECT_EQ(tagFilterToolTip(libs), "No filter");

    auto manager = libs->vantlibManager(OdDb::kForWrite, true);
    OdArray<OdString> filter;
    filter.push_back(L"wood");
    filter.push_back(L"exterior");
    manager->setFilterTags(filter);

    tagFilter(false);
    EXPECT_EQ(tagFilterToolTip(libs), "Filter [wood,exterior] is OFF");
    tagFilterToggle();
    EXPECT_TRUE(tagFilter());
    EXPECT_EQ(tagFilterToolTip(libs), "Filter [wood,exterior] is ON");
    tagFilter(false);
}
