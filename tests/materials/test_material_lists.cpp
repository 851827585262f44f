// The two lists of the materials dialog as the shared browser runs them: copies that clash,
// context menus, the drag picture, thumbnails drawn only for painted rows.
#include <cstring>
#include <filesystem>

#include <wx/msgdlg.h>
#include <wx/testing.h>

#include <DlgQuestion.h>
#include <IconStore.h>
#include <DlgQuestionTesting.h>

#include "app/common/DragDrop.h"
#include "MaterialsFixture.h"
#include "MessageBoxes.h"

namespace vl_materials_test {

namespace {

using vl_test::CaptureMessage;

class MaterialLists : public MaterialsFixture {
protected:
    void SetUp() override {
        MaterialsFixture::SetUp();
        material(project, L"Oak", L"SOLID");
        material(project, L"Brick", L"DIAG");
        material(central, L"Oak", L"DIAG");
        material(central, L"Pine", L"DIAG");
    }

    bool menuEnabled(vl_db::EDbType type, const char* item) {
        const std::unique_ptr<wxMenu> menu = dialog->browser()->contextMenu(type);
        EXPECT_TRUE(menu);
        return menu && menu->IsEnabled(XRCID(item));
    }
};

TEST_F(MaterialLists, CopyingAClashingNameAsksAndReportsWhatWasKept) {
    open();
    click(vl_db::kDbCentral, "Oak");
    wxString message;
    // Keep the project's own Oak: nothing is copied, and the user is told so.
    wxTEST_DIALOG(command("TOOL_COPY_TO_PROJ"), wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kFirstAnswer),
                  CaptureMessage(message));
    EXPECT_EQ(message, "1 material was not copied: the destination library keeps its own.");
    EXPECT_EQ(toWx(stored(project, L"Oak")->section_pattern().name()), "SOLID");

    // Dropping the same row asks again; renaming keeps both.
    auto* target = dynamic_cast<vl_app::VantlibDropTarget*>(list(vl_db::kDbProject)->GetDropTarget());
    ASSERT_TRUE(target);
    vl_app::VantlibDragData drag;
    drag.dbType = vl_db::kDbCentral;
    drag.objectType = vantlib::kMaterial;
    drag.keys.emplace_back(vantlib::kMaterial, stored(central, L"Oak")->id());
    wxDragResult result = wxDragNone;
    wxTEST_DIALOG(result = target->copyObjects(drag),
                  wxExpectModal<wxg::DlgQuestion>(wxg::DlgQuestion::kThirdAnswer));
    EXPECT_EQ(result, wxDragCopy);
    EXPECT_TRUE(stored(project, L"Oak_2"));
    EXPECT_EQ(toWx(stored(project, L"Oak")->section_pattern().name()), "SOLID");
}

TEST_F(MaterialLists, ContextMenusFollowTheToolbarRules) {
    open();
    // Nothing selected: only New is offered.
    for (const char* item : {"TOOL_DUPLICATE", "TOOL_DEL", "TOOL_COPY_TO_LIBR", "TOOL_MAKE_COMP"})
        EXPECT_FALSE(menuEnabled(vl_db::kDbProject, item)) << item;
    EXPECT_TRUE(menuEnabled(vl_db::kDbProject, "TOOL_NEW_IN_PROJ"));

    click(vl_db::kDbProject, "Brick");
    for (const char* item : {"TOOL_DUPLICATE", "TOOL_DEL", "TOOL_COPY_TO_LIBR", "TOOL_MAKE_COMP"})
        EXPECT_TRUE(menuEnabled(vl_db::kDbProject, item)) << item;
    // The central list's commands act on its own selection, which is empty now.
    EXPECT_FALSE(menuEnabled(vl_db::kDbCentral, "TOOL_COPY_TO_PROJ"));

    // Without a central library nothing can be made there.
    dialog.reset();
    central.reset();
    preferences.setDefaultMetricLibrary(vl_test::od(path("absent.vlib")));
    libs->initialize();
    ASSERT_FALSE(libs->secondary());
    open();
    EXPECT_FALSE(menuEnabled(vl_db::kDbCentral, "TOOL_NEW_IN_LIBR"));
    EXPECT_FALSE(enabled("TOOL_NEW_IN_LIBR"));
}

TEST_F(MaterialLists, TheDragPictureShowsTheRowOrTheCount) {
    auto& dlg = open();
    click(vl_db::kDbProject, "Brick");
    const wxBitmap one = dlg.browser()->dragPicture(vl_db::kDbProject);
    ASSERT_TRUE(one.IsOk());
    EXPECT_GT(one.GetWidth(), 32 + 20) << "thumbnail and name";

    // The picture is not blank: the hatch and the text draw in other colours than the ground.
    const wxImage image = one.ConvertToImage();
    const unsigned char* ground = image.GetData();
    bool drawn = false;
    for (int i = 0; i < image.GetWidth() * image.GetHeight() && !drawn; ++i)
        drawn = std::memcmp(image.GetData() + 3 * i, ground, 3) != 0;
    EXPECT_TRUE(drawn);

    list(vl_db::kDbProject)->SetItemState(row(vl_db::kDbProject, "Oak"), wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    const wxBitmap two = dlg.browser()->dragPicture(vl_db::kDbProject);
    ASSERT_TRUE(two.IsOk());
    EXPECT_NE(two.GetWidth(), one.GetWidth());
}

TEST_F(MaterialLists, ThumbnailsAreDrawnForPaintedRowsOnly) {
    // Every material a picture of its own: a different hatch scale each.
    {
        vantlib::Transaction transaction(central);
        for (int index = 0; index < 400; ++index) {
            auto many = vantlib::Material::create(OdString::formatted(L"Material %03d", index));
            many->section_pattern().set_type(vantlib::Pattern::kPredefined);
            many->section_pattern().set_name(L"DIAG");
            many->section_pattern().set_scale(1.0 + index);
            central->save(many);
        }
        transaction.commit();
    }
    auto& dlg = open();
    dlg.SetSize(1000, 700);
    settle();
    dlg.Update();
    settle();
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 402);
    const unsigned drawn = dlg.browser()->thumbnails().drawn();
    EXPECT_GE(drawn, 1u) << "painted rows show their pictures";
    EXPECT_LT(drawn, 60u) << "rows that are not painted draw nothing";
}

TEST_F(MaterialLists, ALibraryFileDeletedWhileOpenIsSaidOnceAndNothingIsWrittenAfter) {
    open();
    click(vl_db::kDbCentral, "Pine");
    ASSERT_TRUE(control("PANEL_IDENTITY")->IsEnabled());
    std::filesystem::remove(path("central.vlib"));

    wxString message;
    wxTEST_DIALOG(type("TEXT_DSCR", "Knotty"), CaptureMessage(message));
    EXPECT_TRUE(message.Contains("deleted or replaced")) << message;
    EXPECT_FALSE(std::filesystem::exists(path("central.vlib"))) << "nothing is written where the file was";
    // The library is read-only from now on: the pages refuse edits, the list is greyed, and a
    // second keystroke raises no second message.
    EXPECT_FALSE(control("PANEL_IDENTITY")->IsEnabled());
    EXPECT_EQ(list(vl_db::kDbCentral)->GetTextColour(), wxg::readOnlyTextColour());
    wxString second;
    wxTEST_DIALOG(type("TEXT_DSCR", "Knotty pine"), CaptureMessage(second).Optional());
    EXPECT_TRUE(second.empty()) << second;
    EXPECT_FALSE(enabled("TOOL_NEW_IN_LIBR"));
    // The project library is untouched by the trouble of the central one.
    EXPECT_TRUE(enabled("TOOL_NEW_IN_PROJ"));
}

}  // namespace

}  // namespace vl_materials_test
