// Pictures of materials and compositions, list helpers, colours and layer names.
#include <cstdlib>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/imaglist.h>
#include <wx/listctrl.h>

#include <OdCmColor.h>

#include "LibraryFixture.h"
#include "app/common/Colors.h"
#include "app/common/Layers.h"
#include "app/common/ListHelpers.h"
#include "app/common/Previews.h"

using namespace vl_app;
using vl_app_test::LibraryFixture;
using vl_app_test::strings;

namespace {
QcSmartPtr<vantlib::Composition> composition(std::initializer_list<std::pair<QcSmartPtr<vantlib::Material>, double>> plies,
                                             int variablePly = -1) {
    auto result = vantlib::Composition::create(L"Wall");
    for (const auto& ply : plies)
        result->append_ply(vantlib::Ply(ply.first, ply.second, vantlib::kFunctionNone));
    if (variablePly >= 0)
        result->set_variable_ply(variablePly);
    return result;
}

bool isWhite(const wxImage& image, int x, int y) {
    return image.GetRed(x, y) > 250 && image.GetGreen(x, y) > 250 && image.GetBlue(x, y) > 250;
}

// Share of dark pixels in rows [top, bottom) of the picture, inside the left and right margins.
double inkInRows(const wxImage& image, int top, int bottom, int margin) {
    int dark = 0, all = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = margin + 2; x < image.GetWidth() - margin - 2; ++x, ++all)
            dark += image.GetRed(x, y) < 128 ? 1 : 0;
    return all ? double(dark) / all : 0.0;
}
}  // namespace

TEST(PlyBands, ProportionalAndTruncatedToWholePixels) {
    const auto wall = composition({{nullptr, 100.0}, {nullptr, 50.0}, {nullptr, 150.0}});
    const auto bands = plyBands(*wall, 100);
    ASSERT_EQ(bands.size(), 3u);
    EXPECT_EQ(bands[0].top, 0);
    EXPECT_EQ(bands[0].height, 33);
    EXPECT_EQ(bands[1].top, 33);
    EXPECT_EQ(bands[1].height, 16);
    EXPECT_EQ(bands[2].top, 50);
    EXPECT_EQ(bands[2].height, 50);
}

TEST(PlyBands, ZeroThicknessCountsAsOneWithTheVariablePlyFillingIt) {
    const auto empty = composition({{nullptr, 0.0}, {nullptr, 0.0}, {nullptr, 0.0}}, 1);
    const PlyThicknesses thicknesses = previewThicknesses(*empty);
    EXPECT_EQ(thicknesses.total, 1.0);
    const auto bands = plyBands(*empty, 80);
    EXPECT_EQ(bands[0].height, 0);
    EXPECT_EQ(bands[1].top, 0);
    EXPECT_EQ(bands[1].height, 80);
    EXPECT_EQ(bands[2].top, 80);
    // Without a variable ply nothing has height, and nothing divides by zero.
    for (const auto& band : plyBands(*composition({{nullptr, 0.0}, {nullptr, 0.0}}), 80))
        EXPECT_EQ(band.height, 0);
}

using Previews = LibraryFixture;

TEST_F(Previews, HatchPreviewDrawsCataloguePatternsOnly) {
    const wxSize size(48, 32);
    const auto diag = material(project, L"Diag", L"DIAG");
    const wxBitmap picture = hatchPreview(diag, vl_db::kHatchSection, size);
    ASSERT_TRUE(picture.IsOk());
    EXPECT_EQ(picture.GetSize(), size);
    EXPECT_GT(inkInRows(picture.ConvertToImage(), 0, size.y, 0), 0.02);

    EXPECT_FALSE(hatchPreview(material(project, L"Bare", L""), vl_db::kHatchSection, size).IsOk());
    EXPECT_FALSE(hatchPreview(material(project, L"Unknown", L"NO-SUCH-PATTERN"), vl_db::kHatchSection, size).IsOk());
    EXPECT_FALSE(hatchPreview(nullptr, vl_db::kHatchSection, size).IsOk());
    // The elevation hatch is a different one.
    EXPECT_FALSE(hatchPreview(diag, vl_db::kHatchElevation, size).IsOk());

    auto lines = vantlib::Material::create(L"Lines");
    lines->section_pattern().set_type(vantlib::Pattern::kUserDefined);
    lines->section_pattern().set_space(2.0);
    lines->section_pattern().set_cross(true);
    const vl_db::HatchPatternInfo info = vl_db::hatchPattern(lines, vl_db::kHatchSection);
    EXPECT_EQ(info.type, vl_db::kHatchUserDefined);
    EXPECT_TRUE(info.doubleHatch);
    EXPECT_EQ(info.scale, 2.0);
    EXPECT_TRUE(hatchPreview(lines, vl_db::kHatchSection, size).IsOk());
}

TEST_F(Previews, CompositionPreviewStacksHatchedBandsWithSeparators) {
    const auto solid = material(project, L"Membrane", L"SOLID");
    const auto diag = material(project, L"Block", L"DIAG");
    const auto bare = material(project, L"Air", L"");
    // 300 units in 200 pixels: solid 0-66, air 66-133, diagonal lines 133-200.
    const auto wall = composition({{solid, 100.0}, {bare, 100.0}, {diag, 100.0}});
    const wxSize size(216, 216);
    const wxImage image = preview(wall, size, false).ConvertToImage();
    const int m = previewMargin();
    ASSERT_EQ(m, 8);
    EXPECT_GT(inkInRows(image, m + 2, m + 64, m), 0.95);
    EXPECT_LT(inkInRows(image, m + 69, m + 130, m), 0.01);
    const double lines = inkInRows(image, m + 136, m + 198, m);
    EXPECT_GT(lines, 0.03);
    EXPECT_LT(lines, 0.6);
    // The separator above the air and the white margin around the plies.
    EXPECT_FALSE(isWhite(image, 100, m + 133));
    EXPECT_TRUE(isWhite(image, 100, m + 100));
    EXPECT_TRUE(isWhite(image, m / 2, 100));
    EXPECT_TRUE(isWhite(image, 100, size.y - m / 2));

    if (const char* folder = std::getenv("VL_PREVIEW_DIR"))
        image.SaveFile(wxString(folder) + "/composition-preview-test.png", wxBITMAP_TYPE_PNG);
}

TEST_F(Previews, ThinPliesOnlyShowTheirSeparator) {
    const auto solid = material(project, L"Membrane", L"SOLID");
    const auto bare = material(project, L"Air", L"");
    // The membrane is one pixel high at this scale: not drawn, only the line above it.
    const auto wall = composition({{bare, 100.0}, {solid, 1.0}, {bare, 99.0}});
    const wxImage image = preview(wall, wxSize(116, 116), false).ConvertToImage();
    EXPECT_LT(inkInRows(image, 8 + 52, 8 + 100, 8), 0.01);
    EXPECT_FALSE(isWhite(image, 50, 8 + 50));
    EXPECT_FALSE(preview(nullptr, wxSize(50, 50), true).IsOk());
    // A composition without thickness draws its variable ply over the whole area.
    const wxImage zero = preview(composition({{bare, 0.0}, {solid, 0.0}}, 1), wxSize(116, 116), false).ConvertToImage();
    EXPECT_GT(inkInRows(zero, 10, 106, 8), 0.95);
}

TEST_F(Previews, ImageListsKeepThePlaceholder) {
    wxFrame frame(nullptr, wxID_ANY, "lists");
    auto* list = new wxListCtrl(&frame, wxID_ANY, wxDefaultPosition, wxSize(200, 200), wxLC_REPORT);
    list->InsertColumn(0, "Name");
    auto* images = new wxImageList(64, 64);
    images->Add(wxBitmap(64, 64));
    list->AssignImageList(images, wxIMAGE_LIST_SMALL);

    const auto diag = material(project, L"Diag", L"DIAG");
    EXPECT_EQ(addToImageList(images, diag), 1);
    EXPECT_EQ(addToImageList(images, material(project, L"Bare", L"")), 0);
    auto noHatch = vantlib::Material::create(L"Predefined without name");
    noHatch->section_pattern().set_type(vantlib::Pattern::kPredefined);
    EXPECT_EQ(addToImageList(images, noHatch), 0);
    EXPECT_EQ(addToImageList(images, composition({{diag, 10.0}})), 2);
    EXPECT_TRUE(updateInImageList(images, 1, composition({{diag, 10.0}})));
    EXPECT_FALSE(updateInImageList(images, 1, QcSmartPtr<vantlib::Composition>()));
    EXPECT_EQ(images->GetImageCount(), 3);

    for (long row = 0; row < 3; ++row)
        list->InsertItem(row, "row", 0);
    list->SetItemData(0, 7);
    list->SetItemData(1, 3);
    list->SetItemData(2, 7);
    EXPECT_TRUE(selectedIDs(list).empty());
    list->SetItemState(0, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    list->SetItemState(2, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    EXPECT_EQ(selectedIDs(list), std::set<unsigned>{7});
    list->SetItemState(1, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    EXPECT_EQ(selectedIDs(list), (std::set<unsigned>{3, 7}));

    clear(list);
    EXPECT_EQ(list->GetItemCount(), 0);
    EXPECT_EQ(images->GetImageCount(), 1);
    clear(list);
    EXPECT_EQ(images->GetImageCount(), 1);
    EXPECT_TRUE(selectedIDs(list).empty());
}

TEST(Colors, TrueLayerAndBlockColoursSurviveTheRoundTrip) {
    for (const OdCmColor& color : {OdCmColor(OdCmEntityColor::kByLayer), OdCmColor(OdCmEntityColor::kByBlock),
                                   OdCmColor::fromRGB(12, 200, 255)})
        EXPECT_EQ(convertColorVantlibToOdCm(convertColorOdCmToVantlib(color)), color);

    const VantlibColor red = convertColorOdCmToVantlib(OdCmColor::fromIndex(OdCmEntityColor::kACIRed));
    EXPECT_EQ(red.kind, VantlibColor::kByColor);
    EXPECT_EQ(red.red, 255.0);
    EXPECT_EQ(convertColorVantlibToOdCm(red), OdCmColor::fromRGB(255, 0, 0));

    EXPECT_EQ(convertColorOdCmToVantlib(OdCmColor(OdCmEntityColor::kForeground)).kind, VantlibColor::kNone);
    EXPECT_TRUE(convertColorVantlibToOdCm(VantlibColor()).isNone());
}

using Layers = LibraryFixture;

TEST_F(Layers, DrawingAndLibraryLayersSortedAndUnique) {
    db->addLayer(L"Walls");
    db->addLayer(L"Annotation");
    EXPECT_EQ(getLayers(db.get()), strings({"0", "Annotation", "Walls"}));
    EXPECT_TRUE(getLayers(nullptr).IsEmpty());

    auto wall = vantlib::Composition::create(L"Wall");
    wall->set_layer(vantlib::Layer::create(L"Walls"));
    wall = project->save(wall);
    auto slab = vantlib::Composition::create(L"Slab");
    slab->set_layer(vantlib::Layer::create(L"Slabs"));
    central->save(slab);
    auto unused = vantlib::Composition::create(L"Roof");
    unused->set_layer(vantlib::Layer::create(L"Roofs"));
    unused = central->save(unused);
    central->remove(unused);

    wxArrayString names = getLayers(db.get());
    addLayers(names, libs);
    EXPECT_EQ(names, strings({"0", "Annotation", "Slabs", "Walls"}));
    EXPECT_EQ(central->count<vantlib::Layer>(), 1u);
}
