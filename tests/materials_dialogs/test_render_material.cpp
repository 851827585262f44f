// The host's render-material library and the dialog that picks from it.
#include <set>

#include <wx/dcmemory.h>
#include <wx/filename.h>
#include <wx/grid.h>
#include <wx/srchctrl.h>

#include <RenderMaterialLibrary.h>
#include <WxgConfig.h>

#include "DialogFixture.h"
#include "app/materials/DlgRenderMaterial.h"

namespace vl_mat_test {

namespace {

TEST(RenderMaterialLibrary, CataloguesMaterialsByCategoryAndFindsThemIgnoringCase) {
    const auto& library = ca::RenderMaterialLibrary::instance();
    ASSERT_GE(library.materials().size(), 30u);
    std::set<wxString> topLevels, names, files;
    for (const auto& material : library.materials()) {
        ASSERT_FALSE(material.category.empty()) << material.name;
        topLevels.insert(material.category.front());
        EXPECT_TRUE(names.insert(material.name.Lower()).second) << "twice: " << material.name;
        EXPECT_TRUE(files.insert(material.fileName).second) << "twice: " << material.fileName;
    }
    for (const char* category : {"Masonry", "Concrete", "Metal", "Wood", "Glass", "Stone", "Plaster"})
        EXPECT_TRUE(topLevels.count(category)) << category;

    const ca::RenderMaterial* brick = library.find("brick - COMMON red");
    ASSERT_NE(brick, nullptr);
    EXPECT_EQ(brick->name, "Brick - Common Red");
    EXPECT_EQ(ca::RenderMaterialLibrary::categoryText(*brick), "Masonry > Brick");
    EXPECT_EQ(library.find("Unobtainium"), nullptr);

    // Upper-case search text finds names and categories written otherwise.
    for (const auto* found : library.search("OAK"))
        EXPECT_TRUE(found->name.Lower().Contains("oak")) << found->name;
    EXPECT_EQ(library.search("OAK").size(), 2u);
    const auto metals = library.search("metal >");
    EXPECT_GE(metals.size(), 5u);
    for (const auto* found : metals)
        EXPECT_EQ(found->category.front(), "Metal");
    EXPECT_EQ(library.search("").size(), library.materials().size());
    EXPECT_TRUE(library.search("no such material").empty());
}

TEST(RenderMaterialLibrary, WritesBothPictureSizesAndLoadsThem) {
    const wxString folder = wxFileName::CreateTempFileName("vl_render") + "_dir";
    ca::RenderMaterialLibrary library(folder);
    const ca::RenderMaterial& first = library.materials().front();
    EXPECT_FALSE(library.loadPreview(first, false).IsOk());  // nothing drawn yet, and no message

    EXPECT_EQ(ca::writeRenderMaterialThumbnails(library), int(2 * library.materials().size()));
    for (bool large : {false, true}) {
        const wxImage picture = library.loadPreview(first, large);
        ASSERT_TRUE(picture.IsOk());
        EXPECT_EQ(picture.GetSize(), large ? wxSize(128, 128) : wxSize(64, 64));
        EXPECT_TRUE(library.previewPath(first, large).Contains(large ? "thumbnails_x2" : "thumbnails"));
    }
    // The pictures are the same at every run, and a brick wall is not one flat colour.
    const ca::RenderMaterial* brick = library.find("Brick - Common Red");
    const wxImage once = ca::paintRenderMaterial(*brick, 64);
    const wxImage twice = ca::paintRenderMaterial(*brick, 64);
    EXPECT_EQ(0, memcmp(once.GetData(), twice.GetData(), 64 * 64 * 3));
    std::set<unsigned> colours;
    for (int i = 0; i < 64 * 64; ++i)
        colours.insert((once.GetData()[3 * i] << 16) | (once.GetData()[3 * i + 1] << 8) | once.GetData()[3 * i + 2]);
    EXPECT_GT(colours.size(), 50u);
    wxFileName::Rmdir(folder, wxPATH_RMDIR_RECURSIVE);
}

TEST(RenderMaterialGrid, SizeOptionsAndTheirPictures) {
    EXPECT_EQ(vl_app::previewRowHeight(vl_app::kPreviewSmall), 20);
    EXPECT_EQ(vl_app::previewEdge(vl_app::kPreviewMedium), 32);
    EXPECT_EQ(vl_app::previewEdge(vl_app::kPreviewLarge), 64);
    EXPECT_EQ(vl_app::previewRowHeight(7), 20);
    EXPECT_STREQ(vl_app::previewFolder(vl_app::kPreviewLarge), "thumbnails_x2");
    EXPECT_STREQ(vl_app::previewFolder(7), "thumbnails");
    EXPECT_EQ(vl_app::MaterialThumbnailRenderer::pathForEdge("/m/thumbnails_x2/a.png", 60), "/m/thumbnails/a.png");
    EXPECT_EQ(vl_app::MaterialThumbnailRenderer::pathForEdge("/m/thumbnails_x2/a.png", 64), "/m/thumbnails_x2/a.png");
}

class RenderMaterialDialog : public DialogFixture {
protected:
    static wxString rowName(vl_app::DlgRenderMaterial& dialog, int row) { return dialog.grid()->nameAt(row); }

    static wxArrayInt selectedRows(vl_app::DlgRenderMaterial& dialog) { return dialog.grid()->GetSelectedRows(); }

    static void search(vl_app::DlgRenderMaterial& dialog, const wxString& text) {
        XRCCTRL(dialog, "SEARCH_MAT", wxSearchCtrl)->SetValue(text);  // the text event refills the grid
    }

    static void click(vl_app::DlgRenderMaterial& dialog, int row, bool twice = false) {
        wxGridEvent event(dialog.grid()->GetId(), twice ? wxEVT_GRID_CELL_LEFT_DCLICK : wxEVT_GRID_CELL_LEFT_CLICK,
                          dialog.grid(), row, 1);
        dialog.grid()->ProcessWindowEvent(event);
    }
};

TEST_F(RenderMaterialDialog, OpensOnTheCurrentMaterialAndSearchNarrowsTheGrid) {
    vl_app::DlgRenderMaterial dialog(nullptr, "walnut");
    const int result = runModal(dialog, [&] {
        auto* grid = dialog.grid();
        EXPECT_EQ(size_t(grid->GetNumberRows()), ca::RenderMaterialLibrary::instance().materials().size());
        ASSERT_EQ(selectedRows(dialog).size(), 1u);
        EXPECT_EQ(rowName(dialog, selectedRows(dialog)[0]), "Walnut");
        EXPECT_TRUE(grid->GetCellValue(selectedRows(dialog)[0], 0).Contains("thumbnails"));
        EXPECT_EQ(grid->GetCellValue(selectedRows(dialog)[0], 1), "Wood > Hardwood");

        search(dialog, "GLASS");
        EXPECT_EQ(grid->GetNumberRows(), 3);
        for (int row = 0; row < grid->GetNumberRows(); ++row)
            EXPECT_TRUE(rowName(dialog, row).StartsWith("Glass")) << rowName(dialog, row);
        // The current material is filtered out, so it is no longer chosen.
        EXPECT_EQ(dialog.materialName(), "");

        click(dialog, 1);
        EXPECT_EQ(dialog.materialName(), rowName(dialog, 1));
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(dialog.materialName(), "Glass - Frosted");
}

TEST_F(RenderMaterialDialog, ClearEmptiesTheChoiceAndDoubleClickAccepts) {
    vl_app::DlgRenderMaterial cleared(nullptr, "Slate");
    runModal(cleared, [&] {
        EXPECT_EQ(cleared.materialName(), "Slate");
        EXPECT_TRUE(press(cleared, "BTN_CLEAR"));
        EXPECT_EQ(cleared.materialName(), "");
        EXPECT_FALSE(press(cleared, "BTN_CLEAR"));
        EXPECT_TRUE(press(cleared, wxID_OK));
    });
    EXPECT_EQ(cleared.materialName(), "");

    vl_app::DlgRenderMaterial picked(nullptr, wxString());
    const int result = runModal(picked, [&] {
        search(picked, "tread");
        click(picked, 0, true);
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(picked.materialName(), "Steel - Tread Plate");
}

TEST_F(RenderMaterialDialog, TheThumbnailSizeIsRememberedAndUnknownValuesMeanSmall) {
    wxg::WxgConfig::writeLong("DlgRenderMaterial/prvw", 7);
    {
        vl_app::DlgRenderMaterial dialog(nullptr, wxString());
        EXPECT_EQ(dialog.grid()->previewSize(), unsigned(vl_app::kPreviewSmall));
        EXPECT_EQ(dialog.grid()->GetDefaultRowSize(), 20);
        wxCommandEvent large(wxEVT_MENU, XRCID("TOOL_LARGE"));
        dialog.grid()->ProcessWindowEvent(large);
        EXPECT_EQ(dialog.grid()->GetDefaultRowSize(), 68);
        EXPECT_EQ(dialog.grid()->GetColSize(0), 68);
    }
    EXPECT_EQ(wxg::WxgConfig::readLong("DlgRenderMaterial/prvw", -1), long(vl_app::kPreviewLarge));
    vl_app::DlgRenderMaterial again(nullptr, wxString());
    EXPECT_EQ(again.grid()->previewSize(), unsigned(vl_app::kPreviewLarge));
}

TEST_F(RenderMaterialDialog, AMissingThumbnailLeavesTheCellBlank) {
    vl_app::DlgRenderMaterial dialog(nullptr, wxString());
    auto* grid = dialog.grid();
    grid->AppendRows(1);
    grid->SetCellValue(0, 0, "/nowhere/thumbnails_x2/missing.png");
    wxBitmap target(40, 40);
    wxMemoryDC dc(target);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    vl_app::MaterialThumbnailRenderer renderer;
    wxGridCellAttr* attr = grid->GetOrCreateCellAttr(0, 0);
    renderer.Draw(*grid, *attr, dc, wxRect(0, 0, 40, 40), 0, 0, false);
    attr->DecRef();
    dc.SelectObject(wxNullBitmap);
    const wxImage picture = target.ConvertToImage();
    const unsigned char r = picture.GetRed(20, 20), g = picture.GetGreen(20, 20), b = picture.GetBlue(20, 20);
    // Only the cell background: every pixel alike.
    for (int y = 0; y < 40; y += 7)
        for (int x = 0; x < 40; x += 7)
            EXPECT_TRUE(picture.GetRed(x, y) == r && picture.GetGreen(x, y) == g && picture.GetBlue(x, y) == b);
}

}  // namespace

}  // namespace vl_mat_test
