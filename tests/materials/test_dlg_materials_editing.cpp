// Editing a material in the materials dialog: keys in the property grid, renames.
#include <functional>

#include <wx/modalhook.h>
#include <wx/msgdlg.h>
#include <wx/notebook.h>
#include <wx/propgrid/propgrid.h>
#include <wx/stattext.h>
#include <wx/testing.h>

#include "MaterialsFixture.h"

namespace vl_materials_test {

namespace {

// While it lives, any modal dialog fails the test and is closed before it shows.
class RefuseModalDialogs : public wxModalDialogHook {
public:
    RefuseModalDialogs() { Register(); }
    ~RefuseModalDialogs() override { Unregister(); }

protected:
    int Enter(wxDialog* dialog) override {
        const auto* box = dynamic_cast<wxMessageDialogBase*>(dialog);
        ADD_FAILURE() << "unexpected dialog: " << (box ? box->GetMessage() : dialog->GetTitle()).utf8_string();
        return wxID_CANCEL;
    }
    void Exit(wxDialog*) override {}
};

class MaterialsEditing : public MaterialsFixture {
protected:
    void SetUp() override {
        MaterialsFixture::SetUp();
        auto brick = material(project, L"Brick");
        brick->physical_asset(true)->set_density(1800.0, L"kg/m\u00B3");
        project->save(brick);
        material(project, L"Stone");
    }

    // A key press as the toolkit delivers it: the char hook goes from the focused window up to
    // the dialog first; only when nobody takes it there does the key reach the window itself.
    // A message box that the key brings up fails the test (and is closed).
    static void pressKey(wxWindow* focused, int key) {
        const RefuseModalDialogs noMessageBox;
        wxKeyEvent hook(wxEVT_CHAR_HOOK);
        hook.m_keyCode = key;
        hook.SetEventObject(focused);
        if (focused->GetEventHandler()->ProcessEvent(hook))
            return;
        wxKeyEvent down(wxEVT_KEY_DOWN);
        down.m_keyCode = key;
        down.SetEventObject(focused);
        focused->GetEventHandler()->ProcessEvent(down);
    }

    // Runs `actions` inside the dialog's modal loop; a dialog they leave open is closed with
    // wxID_ABORT.
    int runModal(const std::function<void()>& actions) {
        dialog->CallAfter([this, actions] {
            actions();
            if (dialog->IsModal())
                dialog->EndModal(wxID_ABORT);
        });
        return dialog->ShowModal();
    }

    // Opens the density cell of the Properties page for editing and types `text` into it.
    bool editDensity(const wxString& text) {
        dynamic_cast<wxNotebook*>(control("TABBOOK"))->SetSelection(2);
        wxPropertyGrid* props = grid();
        wxPGProperty* density = props ? props->GetProperty("prop20") : nullptr;
        if (!density)
            return false;
        props->SelectProperty(density, true);
        settle();
        auto* editor = dynamic_cast<wxTextEntry*>(props->GetEditorControl());
        if (!editor)
            return false;
        editor->SetValue(text);
        // The user types into the cell, so it has the focus; under load the display server
        // hands the focus over late, and a key pressed before that would not be the cell's.
        props->GetEditorControl()->SetFocus();
        for (int wait = 0; wait < 100 && !props->IsEditorFocused(); ++wait) {
            wxMilliSleep(10);
            wxYield();
        }
        return props->IsEditorFocused();
    }

    // The density as the grid shows it: the editor's text while the cell has one.
    wxString densityShown() const {
        if (auto* editor = dynamic_cast<wxTextEntry*>(grid()->GetEditorControl()))
            return editor->GetValue();
        return grid()->GetPropertyValueAsString("prop20");
    }

    // The grid that the dialog puts on its Properties page.
    wxPropertyGrid* grid() const {
        for (wxWindow* child : control("PANEL_PROPS")->GetChildren())
            if (auto* found = dynamic_cast<wxPropertyGrid*>(child))
                return found;
        return nullptr;
    }
};

TEST_F(MaterialsEditing, EscapeInThePropertyGridCancelsTheEditNotTheDialog) {
    dialog = std::make_unique<vl_app::DlgMaterials>(nullptr, libs, vl_db::kModeManager, vl_db::kDbNone, 0);
    const int result = runModal([&] {
        click(vl_db::kDbProject, "Brick");
        ASSERT_TRUE(editDensity("abc"));
        pressKey(grid()->GetEditorControl(), WXK_ESCAPE);
        settle();
        ASSERT_TRUE(dialog->IsModal()) << "Escape in the cell closed the dialog";
        EXPECT_EQ(densityShown(), "1800") << "the cell shows its value again";
        EXPECT_FALSE(grid()->IsEditorFocused());

        // Enter on a value that is not a number brings the field's and then the grid's message box
        // ("Press ESC to cancel editing"); Escape then cancels the edit.
        ASSERT_TRUE(editDensity("12x"));
        wxCommandEvent enter(wxEVT_TEXT_ENTER, grid()->GetEditorControl()->GetId());
        enter.SetEventObject(grid()->GetEditorControl());
        wxTEST_DIALOG(grid()->GetEditorControl()->GetEventHandler()->ProcessEvent(enter),
                      wxExpectModal<wxMessageDialog>(wxID_OK).Describe("the number field's box"),
                      wxExpectModal<wxMessageDialog>(wxID_OK).Describe("the grid's invalid value box"));
        pressKey(grid()->GetEditorControl(), WXK_ESCAPE);
        settle();
        ASSERT_TRUE(dialog->IsModal()) << "Escape after the invalid value box closed the dialog";
        EXPECT_EQ(densityShown(), "1800");

        // Outside an edit, Escape is the dialog's again.
        pressKey(grid(), WXK_ESCAPE);
    });
    EXPECT_EQ(result, wxID_OK) << "the manager closes through its one button";
    EXPECT_DOUBLE_EQ(stored(project, L"Brick")->physical_asset()->density().value, 1800.0);
}

TEST_F(MaterialsEditing, LetterCaseOfTheOwnNameMayChangeButNotIntoAnotherName) {
    auto& dlg = open();
    click(vl_db::kDbProject, "Brick");
    const unsigned brickId = stored(project, L"Brick")->id();

    // Typed as a user does after selecting the name: the first letter replaced.
    type("TEXT_NAME", "rick");
    type("TEXT_NAME", "brick");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kValid);
    auto renamed = project->get<vantlib::Material>(brickId);
    ASSERT_TRUE(renamed);
    EXPECT_EQ(toWx(renamed->name()), "brick") << "the same object under its new spelling";
    EXPECT_EQ(project->count<vantlib::Material>(), 2u);
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemText(row(vl_db::kDbProject, "brick")), "brick");
    EXPECT_EQ(dynamic_cast<wxStaticText*>(control("STAT_NAME"))->GetLabel(), "brick");

    // Another material's name in another letter case is still that material's name.
    type("TEXT_NAME", "stone");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kNameTaken);
    type("TEXT_NAME", "STONE");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kNameTaken);
    EXPECT_EQ(toWx(project->get<vantlib::Material>(brickId)->name()), "brick") << "a refused name is not saved";

    // Back to the first spelling, then to another material and back: one row, the new name.
    type("TEXT_NAME", "Brick");
    EXPECT_EQ(dlg.status(), vl_app::DlgMaterials::kValid);
    click(vl_db::kDbProject, "Stone");
    click(vl_db::kDbProject, "Brick");
    EXPECT_EQ(list(vl_db::kDbProject)->GetItemCount(), 2);
    EXPECT_EQ(dlg.material()->id(), brickId);
}

TEST_F(MaterialsEditing, TheLibraryStoresACaseOnlyRenameAsTheSameObject) {
    auto brick = stored(project, L"Brick");
    const unsigned id = brick->id();
    brick->set_name(L"BRICK");
    brick->save();
    EXPECT_EQ(brick->id(), id);
    EXPECT_EQ(project->count<vantlib::Material>(), 2u);
    ASSERT_TRUE(project->get<vantlib::Material>(id));
    EXPECT_EQ(toWx(project->get<vantlib::Material>(id)->name()), "BRICK");
    EXPECT_TRUE(project->isNameUsed(vantlib::kMaterial, L"brick")) << "names stay unique without regard to case";
    EXPECT_FALSE(project->isNameUsed(vantlib::kMaterial, L"brick", id)) << "except for the object itself";

    // Saving another object under a case variant of a taken name asks the reactor, which the
    // tests leave without a dialog type: the clash is skipped and nothing is renamed.
    auto stone = stored(project, L"Stone");
    stone->set_name(L"brick");
    project->save(stone);
    EXPECT_EQ(toWx(stored(project, L"Stone")->name()), "Stone");
    EXPECT_EQ(toWx(project->get<vantlib::Material>(id)->name()), "BRICK");
}

}  // namespace

}  // namespace vl_materials_test
