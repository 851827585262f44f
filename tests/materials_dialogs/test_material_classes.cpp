// The material classes dialog: edits collect in the list and reach the library only on OK.
#include <set>

#include <wx/listbox.h>

#include <OdStringWx.h>

#include "DialogFixture.h"
#include "app/materials/DlgMaterialClasses.h"

namespace vl_mat_test {

namespace {

class MaterialClasses : public DialogFixture {
protected:
    void SetUp() override {
        DialogFixture::SetUp();
        for (const wchar_t* name : {L"Concrete", L"Masonry", L"Timber"})
            project->save(vantlib::MaterialType::create(name));
        // A material of class Masonry makes that class "in use".
        auto brick = vantlib::Material::create(L"Brick");
        vantlib::setClass(brick, L"Masonry");
        project->save(brick);
    }

    std::set<wxString> storedClasses() const {
        std::vector<QcSmartPtr<vantlib::MaterialType>> classes;
        project->get(classes);
        std::set<wxString> names;
        for (const auto& materialClass : classes)
            names.insert(toWx(materialClass->name()));
        return names;
    }

    static wxListBox* list(wxDialog& dialog) { return XRCCTRL(dialog, "LIST_CLASSES", wxListBox); }

    static void select(wxDialog& dialog, const wxString& name) {
        const int row = list(dialog)->FindString(name, true);
        ASSERT_NE(row, wxNOT_FOUND) << name;
        list(dialog)->SetSelection(row);
    }

    static void doubleClick(wxDialog& dialog, const wxString& name) {
        select(dialog, name);
        wxCommandEvent event(wxEVT_LISTBOX_DCLICK, XRCID("LIST_CLASSES"));
        event.SetEventObject(list(dialog));
        event.SetInt(list(dialog)->GetSelection());
        dialog.ProcessWindowEvent(event);
    }

    static wxArrayString rows(wxDialog& dialog) { return list(dialog)->GetStrings(); }
};

TEST_F(MaterialClasses, EditsReachTheLibraryOnlyWhenOkIsPressed) {
    vl_app::DlgMaterialClasses dialog(nullptr, libs, vl_db::kDbProject);
    std::set<wxString> whileOpen;
    const int result = runModal(dialog, [&] {
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("Glass"));
        // The list already holds this name in another letter case: it is selected, not added.
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("timber"));
        EXPECT_EQ(dialog.selected(), "Timber");
        EXPECT_EQ(rows(dialog).size(), 4u);
        wxTEST_DIALOG(doubleClick(dialog, "Timber"), TypeText("Wood"));
        select(dialog, "Concrete");
        EXPECT_TRUE(press(dialog, "TOOL_DELETE"));
        EXPECT_EQ(rows(dialog), wxArrayString(3, std::vector<wxString>{"Glass", "Masonry", "Wood"}.data()));
        whileOpen = storedClasses();
        select(dialog, "Glass");
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(whileOpen, (std::set<wxString>{"Concrete", "Masonry", "Timber"}));
    EXPECT_EQ(storedClasses(), (std::set<wxString>{"Glass", "Masonry", "Wood"}));
    EXPECT_EQ(dialog.selected(), "Glass");
    // The material keeps its class through the other edits.
    EXPECT_EQ(project->get<vantlib::Material>(vantlib::NameKey(L"Brick"))->material_type()->name(), OdString(L"Masonry"));
}

TEST_F(MaterialClasses, CancelLeavesTheLibraryUntouched) {
    vl_app::DlgMaterialClasses dialog(nullptr, libs, vl_db::kDbProject);
    const int result = runModal(dialog, [&] {
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("Glass"));
        wxTEST_DIALOG(doubleClick(dialog, "Concrete"), TypeText("Cement"));
        select(dialog, "Timber");
        press(dialog, "TOOL_DELETE");
        EXPECT_TRUE(press(dialog, wxID_CANCEL));
    });
    EXPECT_EQ(result, wxID_CANCEL);
    EXPECT_EQ(storedClasses(), (std::set<wxString>{"Concrete", "Masonry", "Timber"}));
}

TEST_F(MaterialClasses, ClassInUseAndTakenNamesAreRefused) {
    vl_app::DlgMaterialClasses dialog(nullptr, libs, vl_db::kDbProject);
    wxString message;
    const int result = runModal(dialog, [&] {
        select(dialog, "Masonry");
        wxTEST_DIALOG(press(dialog, "TOOL_DELETE"), ReadMessage(&message));
        // Renaming to another class's exact name changes nothing, and says nothing.
        wxTEST_DIALOG(doubleClick(dialog, "Timber"), TypeText("Concrete"));
        // An empty answer to the prompt adds nothing.
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText(""));
        EXPECT_EQ(rows(dialog), wxArrayString(3, std::vector<wxString>{"Concrete", "Masonry", "Timber"}.data()));
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(message, "Can't remove Masonry because it is in use.");
    EXPECT_EQ(storedClasses(), (std::set<wxString>{"Concrete", "Masonry", "Timber"}));
}

TEST_F(MaterialClasses, AFreedNameCanBeTakenInTheSameSession) {
    vl_app::DlgMaterialClasses dialog(nullptr, libs, vl_db::kDbProject);
    runModal(dialog, [&] {
        wxTEST_DIALOG(doubleClick(dialog, "Timber"), TypeText("Wood"));
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("Timber"));
        select(dialog, "Concrete");
        press(dialog, "TOOL_DELETE");
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("Concrete"));
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(storedClasses(), (std::set<wxString>{"Concrete", "Masonry", "Timber", "Wood"}));
}

TEST_F(MaterialClasses, ALibraryThatGoesAwayKeepsTheDialogOpenAndChangesNothing) {
    central->save(vantlib::MaterialType::create(L"Steel"));
    vl_app::DlgMaterialClasses dialog(nullptr, libs, vl_db::kDbCentral);
    wxString message;
    const int result = runModal(dialog, [&] {
        wxTEST_DIALOG(press(dialog, "TOOL_NEW"), TypeText("Copper"));
        // The drawing loses its central library while the dialog is open.
        preferences.setDefaultMetricLibrary(OdString());
        libs->initialize();
        EXPECT_FALSE(toolEnabled(dialog, "TOOL_NEW"));
        EXPECT_FALSE(toolEnabled(dialog, "TOOL_DELETE"));
        wxTEST_DIALOG(EXPECT_TRUE(press(dialog, wxID_OK)), ReadMessage(&message));
        EXPECT_TRUE(dialog.IsModal());
        EXPECT_TRUE(press(dialog, wxID_CANCEL));
    });
    EXPECT_EQ(result, wxID_CANCEL);
    EXPECT_TRUE(message.Contains("read-only or no longer available")) << message;
    std::vector<QcSmartPtr<vantlib::MaterialType>> classes;
    central->get(classes);
    ASSERT_EQ(classes.size(), 1u);
    EXPECT_EQ(classes[0]->name(), OdString(L"Steel"));
}

}  // namespace

}  // namespace vl_mat_test
