// The compositions dialog driven as a user drives it; the libraries are checked afterwards.
#include <wx/button.h>
#include <filesystem>

#include <wx/choice.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/testing.h>

#include "app/common/Helpers.h"
#include "app/common/Tags.h"
#include "app/materials/DlgMaterials.h"
#include "CompositionsFixture.h"
#include "MessageBoxes.h"

namespace vl_compositions_test {

namespace {

using vl_test::CaptureMessage;

using vantlib::Composition;

class CompositionsDialog : public CompositionsFixture {
protected:
    void SetUp() override {
        CompositionsFixture::SetUp();
        material(project, L"Concrete", 2.3, 2400);
        material(project, L"EPS", 0.035, 20);
        material(project, L"Render", 0.87, 1800);
        material(central, L"Oak", 0.13, 500);
        composition(project, L"Wall A", Composition::kWall, {{L"Render", 10}, {L"EPS", 160}, {L"Concrete", 200}});
        composition(project, L"Floor", Composition::kSlab, {{L"Concrete", 200}});
        composition(central, L"Deck", Composition::kSlab, {{L"Oak", 30}});
    }

    wxString label(const char* name) const { return dynamic_cast<wxStaticText*>(control(name))->GetLabel(); }
};

TEST_F(CompositionsDialog, ListsBothLibrariesAndFiltersByBaseType) {
    open();
    ASSERT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
    ASSERT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 1);
    EXPECT_FALSE(dialog->FindWindow(wxID_CANCEL)->IsShown());
    EXPECT_FALSE(control("BTN_UNSELECT")->IsShown());

    auto* filter = dynamic_cast<wxChoice*>(control("FILTER_TYPE"));
    filter->SetStringSelection(vl_app::compositionBaseType(Composition::kSlab));
    wxCommandEvent chosen(wxEVT_CHOICE, filter->GetId());
    chosen.SetEventObject(filter);
    chosen.SetInt(filter->GetSelection());
    chosen.SetString(filter->GetStringSelection());
    filter->GetEventHandler()->ProcessEvent(chosen);
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 1);
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemText(0), "Floor");
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 1);

    // A new composition under that filter is a slab, so it stays listed.
    command("TOOL_NEW_IN_PROJ");
    ASSERT_TRUE(dialog->composition());
    EXPECT_EQ(dialog->composition()->type(), Composition::kSlab);
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
}

TEST_F(CompositionsDialog, SelectingLoadsPliesAndSlabSidesReadTopAndBottom) {
    open();
    click(vl_db::kDbProject, "Wall A");
    ASSERT_TRUE(dialog->composition());
    ASSERT_EQ(grid()->GetNumberRows(), 3);
    EXPECT_EQ(grid()->GetCellValue(0, vl_app::PlyGrid::kColName), "Render");
    EXPECT_EQ(grid()->GetCellValue(1, vl_app::PlyGrid::kColThickness), "160");
    EXPECT_EQ(label("STAT_EXT"), _("Exterior"));
    EXPECT_TRUE(label("STAT_PHYSICS").Contains("R = ")) << label("STAT_PHYSICS");

    click(vl_db::kDbCentral, "Deck");
    EXPECT_EQ(dialog->dbType(), vl_db::kDbCentral);
    EXPECT_EQ(list(vl_db::kDbProject)->GetSelectedItemCount(), 0);
    EXPECT_EQ(label("STAT_EXT"), _("Top"));
    EXPECT_EQ(label("STAT_INT"), _("Bottom"));
}

TEST_F(CompositionsDialog, NameValidationBlocksTheListsUntilFixed) {
    open();
    click(vl_db::kDbProject, "Wall A");
    type("TEXT_NAME", "");
    EXPECT_EQ(dialog->status(), vl_app::DlgCompositions::kNameEmpty);
    EXPECT_FALSE(control("PANEL_LEFT")->IsEnabled());
    EXPECT_FALSE(enabled("wxID_OK"));
    type("TEXT_NAME", "Floor");
    EXPECT_EQ(dialog->status(), vl_app::DlgCompositions::kNameTaken);
    EXPECT_TRUE(stored(project, L"Wall A")) << "a taken name is not saved";
    type("TEXT_NAME", "Wall B");
    EXPECT_EQ(dialog->status(), vl_app::DlgCompositions::kValid);
    EXPECT_TRUE(control("PANEL_LEFT")->IsEnabled());
    EXPECT_TRUE(stored(project, L"Wall B"));
    EXPECT_NE(row(vl_db::kDbProject, "Wall B"), -1) << "the row shows the new name";
}

TEST_F(CompositionsDialog, DuplicateKeepsPliesAndRetypeIsSaved) {
    open();
    click(vl_db::kDbProject, "Wall A");
    command("TOOL_DUPLICATE");
    const auto copy = stored(project, L"Wall A-2");
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->numPlies(), 3u);
    EXPECT_EQ(dialog->composition()->id(), copy->id());

    auto* typeChoice = dynamic_cast<wxChoice*>(control("CHOICE_CMP_TYPE"));
    const wxString roof = vl_app::compositionBaseType(Composition::kRoof);
    ASSERT_TRUE(typeChoice->SetStringSelection(roof));
    wxCommandEvent chosen(wxEVT_CHOICE, typeChoice->GetId());
    chosen.SetEventObject(typeChoice);
    chosen.SetString(roof);
    typeChoice->GetEventHandler()->ProcessEvent(chosen);
    EXPECT_EQ(stored(project, L"Wall A-2")->type(), Composition::kRoof);
}

TEST_F(CompositionsDialog, CopyToProjectBringsTheMaterialsAlong) {
    open();
    click(vl_db::kDbCentral, "Deck");
    ASSERT_TRUE(enabled("TOOL_COPY_TO_PROJ"));
    command("TOOL_COPY_TO_PROJ");
    const auto copy = stored(project, L"Deck");
    ASSERT_TRUE(copy);
    ASSERT_EQ(copy->numPlies(), 1u);
    EXPECT_TRUE(project->get<vantlib::Material>(vantlib::NameKey(L"Oak")));
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 3);
}

TEST_F(CompositionsDialog, PickerUnselectReturnsAnEmptyName) {
    class PressUnselect : public wxExpectModalBase<vl_app::DlgCompositions, PressUnselect> {
    protected:
        int OnInvoked(vl_app::DlgCompositions* dlg) const override {
            dlg->InitDialog();
            EXPECT_TRUE(dlg->FindWindow(XRCID("BTN_UNSELECT"))->IsShown());
            EXPECT_EQ(dlg->FindWindow(wxID_OK)->GetLabel(), _("&Select"));
            // The name is found only in the central library: its row there is the selection.
            EXPECT_EQ(dlg->dbType(), vl_db::kDbCentral);
            EXPECT_EQ(dlg->list(vl_db::kDbCentral)->GetSelectedItemCount(), 1);
            wxCommandEvent pressed(wxEVT_BUTTON, XRCID("BTN_UNSELECT"));
            dlg->GetEventHandler()->ProcessEvent(pressed);
            return wxID_OK;
        }
    };
    wxString name = "Deck";
    bool picked = false;
    wxTEST_DIALOG(picked = vl_app::DlgCompositions::selectComposition(name, libs, wxString()), PressUnselect());
    EXPECT_TRUE(picked);
    EXPECT_TRUE(name.empty());

    class Cancel : public wxExpectModalBase<vl_app::DlgCompositions, Cancel> {
    protected:
        int OnInvoked(vl_app::DlgCompositions*) const override { return wxID_CANCEL; }
    };
    name = "Floor";
    wxTEST_DIALOG(picked = vl_app::DlgCompositions::selectComposition(name, libs, wxString()), Cancel());
    EXPECT_FALSE(picked);
    EXPECT_EQ(name, "Floor") << "Cancel leaves the name";
}

TEST_F(CompositionsDialog, ActivatingARowEndsThePicker) {
    dialog = std::make_unique<vl_app::DlgCompositions>(nullptr, libs, vl_db::kModePicker, vl_db::kDbNone, 0,
                                                       wxString());
    dialog->CallAfter([this] {
        click(vl_db::kDbProject, "Floor");
        wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, list(vl_db::kDbProject)->GetId());
        event.SetEventObject(list(vl_db::kDbProject));
        event.m_itemIndex = row(vl_db::kDbProject, "Floor");
        list(vl_db::kDbProject)->GetEventHandler()->ProcessEvent(event);
    });
    EXPECT_EQ(dialog->ShowModal(), wxID_OK);
    ASSERT_TRUE(dialog->composition());
    EXPECT_EQ(toWx(dialog->composition()->name()), "Floor");
}

TEST_F(CompositionsDialog, ACentralLibraryThatStopsTakingWritesDisablesEveryPlyCommand) {
    open();
    click(vl_db::kDbCentral, "Deck");
    selectPlies({0});
    ASSERT_TRUE(enabled("TOOL_PLY_DEL"));
    std::filesystem::remove(path("central.vlib"));
    wxString message;
    wxTEST_DIALOG(type("TEXT_NAME", "Deck 2"), CaptureMessage(message));
    EXPECT_TRUE(message.Contains("deleted or replaced")) << message;
    selectPlies({0});
    for (const char* name : {"TOOL_PLY_NEW", "TOOL_PLY_DUPL", "TOOL_PLY_DEL", "BTN_CUSTOM_PROPS"})
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_FALSE(grid()->IsEditable());
    clickCell(0, vl_app::PlyGrid::kColVariable);
    EXPECT_TRUE(grid()->GetCellValue(0, vl_app::PlyGrid::kColVariable).empty());
    EXPECT_FALSE(std::filesystem::exists(path("central.vlib"))) << "nothing is written where the file was";
}

TEST_F(CompositionsDialog, DeleteKeepsCompositionsThatElementsUse) {
    OdDbEntityPtr element = OdDbEntity::createObject();
    element->addLibraryReference({vantlib::kComposition, int32_t(vl_db::kDbProject), L"Floor", stored(project, L"Floor")->id()});
    db->addEntity(element);
    open();
    click(vl_db::kDbProject, "Floor");
    wxString message;
    wxTEST_DIALOG(command("TOOL_DEL"), CaptureMessage(message));
    EXPECT_EQ(message, "Couldn't remove composition 'Floor'.\nIt is referenced in one or more entities.");
    EXPECT_TRUE(stored(project, L"Floor"));

    for (const char* name : {"Floor", "Wall A"})
        list(vl_db::kDbProject)->SetItemState(row(vl_db::kDbProject, name), wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    settle();
    wxTEST_DIALOG(command("TOOL_DEL"), CaptureMessage(message));
    EXPECT_EQ(message, "Couldn't remove composition 'Floor'.\nIt is referenced in one or more entities.");
    EXPECT_FALSE(stored(project, L"Wall A")) << "the unused one goes";
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 1);
    EXPECT_TRUE(project->get<vantlib::Material>(vantlib::NameKey(L"EPS"))) << "its materials stay";
}

TEST_F(CompositionsDialog, TagFilterIsSharedWithTheMaterialsDialog) {
    auto deck = stored(central, L"Deck");
    deck->add_tag(L"timber");
    deck->save();
    OdArray<OdString> tags;
    tags.push_back(OdString(L"timber"));
    libs->vantlibManager(OdDb::kForWrite, true)->setFilterTags(tags);
    vl_app::tagFilter(false);
    open();
    command("TOOL_FILTER");
    EXPECT_TRUE(vl_app::tagFilter()) << "the module-wide flag";
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 0);
    EXPECT_EQ(list(vl_db::kDbCentral)->GetItemCount(), 1);
    command("TOOL_FILTER");
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
    vl_app::tagFilter(false);
}

TEST_F(CompositionsDialog, APreselectedCompositionStartsTheFilterAtItsTypeAndIsPicked) {
    class PickPreselected : public wxExpectModalBase<vl_app::DlgCompositions, PickPreselected> {
    protected:
        int OnInvoked(vl_app::DlgCompositions* dlg) const override {
            dlg->InitDialog();
            auto* filter = dynamic_cast<wxChoice*>(dlg->FindWindow(XRCID("FILTER_TYPE")));
            EXPECT_EQ(filter->GetStringSelection(), vl_app::compositionBaseType(Composition::kSlab));
            EXPECT_EQ(dlg->list(vl_db::kDbProject)->GetItemCount(), 1) << "only the slab of the project";
            EXPECT_EQ(dlg->list(vl_db::kDbProject)->GetSelectedItemCount(), 1);
            return dlg->composition() ? wxID_OK : wxID_CANCEL;
        }
    };
    wxString name = "Floor";
    bool picked = false;
    wxTEST_DIALOG(picked = vl_app::DlgCompositions::selectComposition(name, libs, wxString()), PickPreselected());
    EXPECT_TRUE(picked);
    EXPECT_EQ(name, "Floor");
}

TEST_F(CompositionsDialog, NameEditingModeFocusesTheSelectedName) {
    open(vl_db::kModeManagerEditName, vl_db::kDbProject, stored(project, L"Wall A")->id());
    // Only the dialog's own queued work: the toolkit drops a text field's selection when its
    // window loses the focus, which other programs on the same display may take at any time.
    wxTheApp->ProcessPendingEvents();
    auto* name = dynamic_cast<wxTextCtrl*>(control("TEXT_NAME"));
    EXPECT_EQ(name->GetValue(), "Wall A");
    long from = 0, to = 0;
    name->GetSelection(&from, &to);
    EXPECT_EQ(to - from, 6) << "the whole name is selected, ready to be typed over";
}

}  // namespace

}  // namespace vl_compositions_test
