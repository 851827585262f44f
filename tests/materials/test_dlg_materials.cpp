// The materials dialog driven as a user drives it; the libraries are checked afterwards.
#include <cmath>

#include <wx/choice.h>
#include <wx/msgdlg.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/testing.h>

#include <vantlib/Composition.h>

#include "app/common/DragDrop.h"
#include "app/common/Tags.h"
#include "MaterialsFixture.h"
#include "MessageBoxes.h"

namespace vl_materials_test {

namespace {

using vl_test::ExpectMessage;

class MaterialsDialog : public MaterialsFixture {
protected:
    void SetUp() override {
        MaterialsFixture::SetUp();
        material(project, L"Brick", L"DIAG", L"Masonry");
        material(project, L"Stone", L"DIAG");
        material(project, L"Glass", L"");
        material(central, L"Oak", L"DIAG");
        material(central, L"Steel", L"SOLID");
    }
};

TEST_F(MaterialsDialog, ListsBothLibrariesAndDrawsEachPatternOnce) {
    auto& dlg = open();
    ASSERT_EQ(list(vl_db::kDbProject)->GetItemCount(), 3);
    ASSERT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 2);
    // Sorted by name, each row holding its material's id.
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemText(0), "Brick");
    EXPECT_EQ(list(vl_db::kDbProject)->idAt(0), stored(project, L"Brick")->id());
    // Brick, Stone and Oak share DIAG: one picture for them and one for the solid fill, drawn
    // when a row's image is first asked for; Glass has no hatch to draw.
    for (const vl_db::EDbType type : {vl_db::kDbProject, vl_db::kDbCentral}) {
        for (long index = 0; index < list(type)->GetItemCount(); ++index) {
            wxListItem item;
            item.SetId(index);
            item.SetMask(wxLIST_MASK_IMAGE);
            list(type)->GetItem(item);
        }
    }
    EXPECT_EQ(dlg.browser()->thumbnails().drawn(), 2u);
    wxListItem glass;
    glass.SetId(row(vl_db::kDbProject, "Glass"));
    glass.SetMask(wxLIST_MASK_IMAGE);
    list(vl_db::kDbProject)->GetItem(glass);
    EXPECT_EQ(glass.GetImage(), 0) << "a material without hatch shows the placeholder";
    // The manager has one closing button.
    EXPECT_FALSE(dlg.FindWindow(wxID_CANCEL)->IsShown());
    EXPECT_FALSE(dlg.material());
}

TEST_F(MaterialsDialog, SelectingInOneListClearsTheOther) {
    auto& dlg = open();
    click(vl_db::kDbProject, "Brick");
    ASSERT_TRUE(dlg.material());
    EXPECT_EQ(toWx(dlg.material()->name()), "Brick");
    EXPECT_EQ(dlg.dbType(), vl_db::kDbProject);
    EXPECT_EQ(dynamic_cast<wxTextCtrl*>(control("TEXT_NAME"))->GetValue(), "Brick");

    click(vl_db::kDbCentral, "Oak");
    EXPECT_EQ(dlg.dbType(), vl_db::kDbCentral);
    EXPECT_EQ(toWx(dlg.material()->name()), "Oak");
    EXPECT_EQ(list(vl_db::kDbProject)->GetSelectedItemCount(), 0);
    EXPECT_TRUE(enabled("TOOL_COPY_TO_PROJ"));
    EXPECT_FALSE(enabled("TOOL_COPY_TO_LIBR"));
}

TEST_F(MaterialsDialog, NameValidationBlocksTheListsUntilFixed) {
    auto& dlg = open();
    click(vl_db::kDbProject, "Brick");
    auto* error = dynamic_cast<wxStaticText*>(control("STAT_ERROR"));

    type("TEXT_NAME", "");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kNameEmpty);
    EXPECT_TRUE(error->IsShown());
    EXPECT_EQ(error->GetLabel(), "Please enter a name");
    EXPECT_FALSE(control("PANEL_LEFT")->IsEnabled());
    EXPECT_FALSE(enabled("wxID_OK") && dlg.FindWindow(wxID_OK)->IsEnabled());

    type("TEXT_NAME", "Stone");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kNameTaken);
    EXPECT_TRUE(stored(project, L"Brick")) << "nothing is saved while the name is invalid";

    type("TEXT_NAME", "Brick");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kValid);
    EXPECT_FALSE(error->IsShown());
    EXPECT_TRUE(control("PANEL_LEFT")->IsEnabled());

    type("TEXT_NAME", "Clay");
    EXPECT_TRUE(stored(project, L"Clay"));
    EXPECT_FALSE(stored(project, L"Brick"));
    EXPECT_NE(row(vl_db::kDbProject, "Clay"), -1) << "the row follows the saved name";
}

TEST_F(MaterialsDialog, ClassMustExistInTheLibrary) {
    auto& dlg = open();
    click(vl_db::kDbProject, "Stone");
    type("COMBO_CLASS", "Glassware");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kUnknownClass);
    EXPECT_EQ(dynamic_cast<wxStaticText*>(control("STAT_ERROR"))->GetLabel(),
              "Class 'Glassware' does not exist in the library");
    type("COMBO_CLASS", "");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kNoClass);
    type("COMBO_CLASS", "Masonry");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kValid);
    const auto stone = stored(project, L"Stone");
    ASSERT_TRUE(stone->material_type());
    EXPECT_EQ(toWx(stone->material_type()->name()), "Masonry");
}

TEST_F(MaterialsDialog, NewAndDuplicateFindFreeNames) {
    auto& dlg = open();
    command("TOOL_NEW");
    ASSERT_TRUE(stored(project, L"New")) << "without a choice the project library receives it";
    EXPECT_EQ(toWx(dlg.material()->name()), "New");
    EXPECT_EQ(dynamic_cast<wxNotebook*>(control("TABBOOK"))->GetSelection(), 0);
    command("TOOL_NEW");
    EXPECT_TRUE(stored(project, L"New-2"));

    click(vl_db::kDbProject, "Brick");
    command("TOOL_DUPLICATE");
    const auto copy = stored(project, L"Brick-2");
    ASSERT_TRUE(copy);
    ASSERT_TRUE(copy->material_type());
    EXPECT_EQ(toWx(copy->material_type()->name()), "Masonry");
    EXPECT_EQ(toWx(dlg.material()->name()), "Brick-2");
    EXPECT_EQ(list(vl_db::kDbProject)->GetSelectedItemCount(), 1);

    // In the central list the new material goes to the central library.
    click(vl_db::kDbCentral, "Oak");
    command("TOOL_NEW");
    EXPECT_TRUE(stored(central, L"New"));
}

TEST_F(MaterialsDialog, ClassFilterListsOnlyThatClassAndClassifiesNewMaterials) {
    open();
    auto* filter = dynamic_cast<wxChoice*>(control("FILTER_CLASS"));
    ASSERT_NE(filter->FindString("Masonry"), wxNOT_FOUND);
    filter->SetStringSelection("Masonry");
    wxCommandEvent choice(wxEVT_CHOICE, filter->GetId());
    choice.SetEventObject(filter);
    choice.SetInt(filter->GetSelection());
    choice.SetString("Masonry");
    filter->GetEventHandler()->ProcessEvent(choice);
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 1);
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 0);

    command("TOOL_NEW_IN_PROJ");
    const auto created = stored(project, L"New");
    ASSERT_TRUE(created && created->material_type());
    EXPECT_EQ(toWx(created->material_type()->name()), "Masonry");
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
}

TEST_F(MaterialsDialog, TagFilterFollowsTheDrawingsFilterTags) {
    auto oak = stored(central, L"Oak");
    oak->add_tag(L"timber");
    oak->save();
    OdArray<OdString> tags;
    tags.push_back(OdString(L"timber"));
    libs->vantlibManager(OdDb::kForWrite, true)->setFilterTags(tags);
    vl_app::tagFilter(false);
    open();
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 2);
    command("TOOL_FILTER");
    EXPECT_TRUE(vl_app::tagFilter());
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 0);
    ASSERT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 1);
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemText(0), "Oak");
    command("TOOL_FILTER");
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 2);
    vl_app::tagFilter(false);
}

TEST_F(MaterialsDialog, DeleteKeepsMaterialsThatCompositionsUse) {
    for (const wchar_t* name : {L"Brick", L"Stone"}) {
        auto wall = vantlib::Composition::create(OdString(L"Wall of ") + name);
        wall->append_ply(vantlib::Ply::defaultPly(stored(project, name)));
        project->save(wall);
    }
    open();
    click(vl_db::kDbProject, "Brick");
    {
        wxTEST_DIALOG(command("TOOL_DEL"),
                      ExpectMessage("Couldn't remove material 'Brick'.\nIt is referenced in one or more compositions."));
    }
    EXPECT_TRUE(stored(project, L"Brick"));
    EXPECT_NE(row(vl_db::kDbProject, "Brick"), -1);

    // Both used ones are listed; the unused one goes.
    for (const char* name : {"Brick", "Glass", "Stone"})
        list(vl_db::kDbProject)->SetItemState(row(vl_db::kDbProject, name), wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    settle();
    {
        wxTEST_DIALOG(command("TOOL_DEL"),
                      ExpectMessage("Some materials couldn't be removed.\nThese are referenced in one or more "
                                    "compositions:\n    Brick\n    Stone"));
    }
    EXPECT_FALSE(stored(project, L"Glass"));
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
}

TEST_F(MaterialsDialog, CopyAndDropBetweenLibraries) {
    open();
    click(vl_db::kDbProject, "Brick");
    command("TOOL_COPY_TO_LIBR");
    const auto copy = stored(central, L"Brick");
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->material_type()) << "the class travels with the material";
    EXPECT_NE(row(vl_db::kDbCentral, "Brick"), -1);

    // Dropping the selected central rows onto the project list copies them there.
    click(vl_db::kDbCentral, "Oak");
    auto* target = dynamic_cast<vl_app::VantlibDropTarget*>(list(vl_db::kDbProject)->GetDropTarget());
    ASSERT_TRUE(target);
    vl_app::VantlibDragData drag;
    drag.dbType = vl_db::kDbCentral;
    drag.objectType = vantlib::kMaterial;
    drag.keys.emplace_back(vantlib::kMaterial, stored(central, L"Oak")->id());
    EXPECT_EQ(target->acceptance(drag), wxDragCopy);
    EXPECT_EQ(target->copyObjects(drag), wxDragCopy);
    EXPECT_TRUE(stored(project, L"Oak"));
    drag.dbType = vl_db::kDbProject;
    EXPECT_EQ(target->acceptance(drag), wxDragNone) << "a list refuses its own rows";
}

TEST_F(MaterialsDialog, HatchNumbersThatAreNotNumbersAreNotStored) {
    open();
    click(vl_db::kDbProject, "Brick");
    type("TEXT_SECT_HATCH_SCALE", "abc");
    EXPECT_DOUBLE_EQ(stored(project, L"Brick")->section_pattern().scale(), 1.0);
    type("TEXT_SECT_HATCH_SCALE", "-2");
    EXPECT_DOUBLE_EQ(stored(project, L"Brick")->section_pattern().scale(), 1.0);
    type("TEXT_SECT_HATCH_SCALE", "2.5");
    EXPECT_DOUBLE_EQ(stored(project, L"Brick")->section_pattern().scale(), 2.5);
    type("TEXT_SECT_HATCH_ANGLE", "90");
    EXPECT_NEAR(stored(project, L"Brick")->section_pattern().angle(), M_PI / 2, 1e-12);
}

TEST_F(MaterialsDialog, DescriptionAndPropertiesAreSavedAtOnce) {
    open();
    click(vl_db::kDbProject, "Stone");
    type("TEXT_DSCR", "Granite blocks\nsplit face");
    EXPECT_EQ(toWx(stored(project, L"Stone")->description()), "Granite blocks\nsplit face");
    EXPECT_EQ(dynamic_cast<wxStaticText*>(control("STAT_DSCR"))->GetLabel(), "Granite blocks");
    type("SECT_LAYER", "A-WALL-PATT");
    const auto stone = stored(project, L"Stone");
    ASSERT_TRUE(stone->bim_asset() && stone->bim_asset()->layer());
    EXPECT_EQ(toWx(stone->bim_asset()->layer()->name()), "A-WALL-PATT");
    // Closing undoes nothing.
    dialog.reset();
    EXPECT_EQ(toWx(stored(project, L"Stone")->description()), "Granite blocks\nsplit face");
}

TEST_F(MaterialsDialog, NoLibrariesMeansNothingToCreate) {
    dialog = std::make_unique<vl_app::DlgMaterials>(nullptr, nullptr, vl_db::kModeManager, vl_db::kDbNone, 0);
    dialog->InitDialog();
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 0);
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 0);
    for (const char* creating : {"TOOL_NEW", "TOOL_NEW_IN_PROJ", "TOOL_NEW_IN_LIBR", "TOOL_DUPLICATE", "TOOL_DEL"})
        EXPECT_FALSE(enabled(creating)) << creating;
    command("TOOL_NEW");
}

TEST_F(MaterialsDialog, PickerReturnsAProjectCopyOfACentralMaterial) {
    class PickOak : public wxExpectModalBase<vl_app::DlgMaterials, PickOak> {

    protected:
        int OnInvoked(vl_app::DlgMaterials* dlg) const override {
            dlg->InitDialog();
            EXPECT_TRUE(dlg->FindWindow(wxID_CANCEL)->IsShown());
            wxListCtrl* centralList = dlg->list(vl_db::kDbCentral);
            centralList->SetItemState(centralList->FindItem(-1, "Oak"), wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                                      wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
            MaterialsFixture::settle();
            return dlg->material() ? wxID_OK : wxID_CANCEL;
        }
    };
    QcSmartPtr<vantlib::Material> picked;
    wxTEST_DIALOG(picked = vl_app::selectMaterialFromDlg(db.get(), OdString(L"Brick"), true), PickOak());
    ASSERT_TRUE(picked);
    const auto copy = stored(project, L"Oak");
    ASSERT_TRUE(copy);
    EXPECT_EQ(picked->id(), copy->id());
    EXPECT_TRUE(stored(central, L"Oak")) << "the central library keeps its material";
}

TEST_F(MaterialsDialog, ActivatingARowEndsThePicker) {
    dialog = std::make_unique<vl_app::DlgMaterials>(nullptr, libs, vl_db::kModePicker, vl_db::kDbNone, 0);
    dialog->CallAfter([this] { activate(vl_db::kDbProject, "Stone"); });
    EXPECT_EQ(dialog->ShowModal(), wxID_OK);
    ASSERT_TRUE(dialog->material());
    EXPECT_EQ(toWx(dialog->material()->name()), "Stone");
}

TEST_F(MaterialsDialog, PageAndSashComeBackNextTime) {
    open();
    dynamic_cast<wxNotebook*>(control("TABBOOK"))->SetSelection(2);
    dialog.reset();
    open();
    EXPECT_EQ(dynamic_cast<wxNotebook*>(control("TABBOOK"))->GetSelection(), 2);
    EXPECT_FALSE(dialog->material()) << "no selection is remembered";
}

TEST_F(MaterialsDialog, PreviewOfAProjectMaterial) {
    const wxBitmap picture = vl_app::materialPreview(db.get(), OdString(L"Brick"), wxSize(40, 30));
    ASSERT_TRUE(picture.IsOk());
    EXPECT_EQ(picture.GetSize(), wxSize(40, 30));
    EXPECT_FALSE(vl_app::materialPreview(db.get(), OdString(L"Oak"), wxSize(40, 30)).IsOk())
        << "only project materials are looked up";
    EXPECT_FALSE(vl_app::materialPreview(db.get(), OdString(L"Glass"), wxSize(40, 30)).IsOk());
}

}  // namespace

}  // namespace vl_materials_test
