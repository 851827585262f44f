// List rows: what the dialogs' lists read of each object without loading it.
#include "support.h"

using namespace vltest;

namespace {

class ListRows : public ::testing::Test {
protected:
    void SetUp() override { library = Library::create(dir.file("rows.vlib"), OdDb::kUnitsMillimeters); }

    QcSmartPtr<Material> hatched(const wchar_t* name, Pattern::Type type, const wchar_t* pattern, double scale,
                                 const wchar_t* className = L"Masonry") {
        auto material = Material::create(name);
        material->section_pattern().set_type(type);
        material->section_pattern().set_name(pattern);
        material->section_pattern().set_scale(scale);
        material->set_type(MaterialType::create(className));
        return library->save(material);
    }

    std::vector<ObjectSummary> materials(const MaterialCriteria& criteria = MaterialCriteria()) const {
        std::vector<ObjectSummary> rows;
        library->list<Material>(rows, criteria);
        return rows;
    }

    TempDir dir;
    std::shared_ptr<Library> library;
};

TEST_F(ListRows, MaterialsComeByNameWithWhatTheirThumbnailDepicts) {
    hatched(L"brick", Pattern::kPredefined, L"DIAG", 1.0);
    hatched(L"Adobe", Pattern::kPredefined, L"diag", 1.0, L"Earth");
    hatched(L"Clay", Pattern::kPredefined, L"DIAG", 2.0);
    hatched(L"Glass", Pattern::kPredefined, L"", 1.0);
    hatched(L"Air", Pattern::kNone, L"DIAG", 1.0);

    const std::vector<ObjectSummary> rows = materials();
    ASSERT_EQ(rows.size(), 5u);
    std::vector<OdString> names;
    for (const auto& row : rows)
        names.push_back(row.name);
    EXPECT_EQ(names, (std::vector<OdString>{L"Adobe", L"Air", L"brick", L"Clay", L"Glass"})) << "letter case ignored";
    // Same pattern (its name in any case) at the same scale: one picture; another scale: another.
    EXPECT_EQ(rows[0].depiction, rows[2].depiction);
    EXPECT_NE(rows[2].depiction, rows[3].depiction);
    EXPECT_EQ(rows[1].depiction, "") << "no hatch draws nothing";
    EXPECT_EQ(rows[4].depiction, "") << "a catalogue kind without a name draws nothing";

    // The same filters as the object queries.
    MaterialCriteria masonry;
    masonry.materialClass.equals(L"Masonry");
    EXPECT_EQ(materials(masonry).size(), 4u);

    // One row read again after an edit follows the stored object.
    auto clay = library->get<Material>(NameKey(L"Clay"));
    clay->section_pattern().set_scale(1.0);
    clay->set_name(L"Clay tile");
    clay = library->save(clay);
    const ObjectSummary row = library->listRow<Material>(clay->id());
    EXPECT_EQ(row.name, OdString(L"Clay tile"));
    EXPECT_EQ(row.depiction, rows[2].depiction);
    EXPECT_EQ(library->listRow<Material>(9999).id, 0u);
}

TEST_F(ListRows, ACompositionsDepictionFollowsItsPliesAndTheirHatches) {
    auto brick = hatched(L"Brick", Pattern::kPredefined, L"BRICK", 1.0);
    auto wool = hatched(L"Wool", Pattern::kPredefined, L"INSUL", 1.0);
    auto wall = Composition::create(L"Wall");
    wall->append_ply(Ply(brick, 115.0, kFunctionStructure));
    wall->append_ply(Ply(wool, 100.0, kFunctionSubstrate));
    wall = library->save(wall);
    auto copy = wall->cloneObject();
    copy->set_name(L"Wall copy");
    copy = library->save(copy);

    std::vector<ObjectSummary> rows;
    library->list<Composition>(rows, CompositionCriteria());
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].depiction, rows[1].depiction) << "same plies, same picture";
    EXPECT_FALSE(rows[0].depiction.empty());

    const std::string before = library->listRow<Composition>(wall->id()).depiction;
    wool->section_pattern().set_scale(3.0);
    library->save(wool);
    EXPECT_NE(library->listRow<Composition>(wall->id()).depiction, before) << "a ply's hatch changed";
    wall->set_variable_ply(1);
    library->save(wall);
    EXPECT_NE(library->listRow<Composition>(wall->id()).depiction, library->listRow<Composition>(copy->id()).depiction);
}

}  // namespace

#include "../support/DecimalCommaLocale.h"

namespace {

TEST(StoredNumbers, ThicknessesReadTheSameUnderADecimalCommaLocale) {
    TempDir dir;
    const OdString file = dir.file("locale.vlib");
    {
        auto library = Library::create(file, OdDb::kUnitsMillimeters);
        auto board = Material::create(L"Board");
        board->bim_asset(true)->set_thicknesses({12.5, 0.001});
        library->save(board);
    }
    DecimalCommaLocale german;
    ASSERT_TRUE(german.active()) << "the locale de_DE.UTF-8 is missing: run tools/install-deps.sh";
    auto library = Library::open(file);
    const auto board = library->get<Material>(NameKey(L"Board"));
    ASSERT_TRUE(board && board->bim_asset());
    EXPECT_EQ(board->bim_asset()->thicknesses(), (std::set<double>{0.001, 12.5}));
    // Written under the comma locale, read back the same.
    auto plank = Material::create(L"Plank");
    plank->bim_asset(true)->set_thicknesses({27.25});
    library->save(plank);
    EXPECT_EQ(library->get<Material>(NameKey(L"Plank"))->bim_asset()->thicknesses(), (std::set<double>{27.25}));
}

}  // namespace
