// The custom properties dialog: new properties are named in place, deletions of used ones are
// refused, and nothing reaches the library before OK (or activation when picking).
#include <map>
#include <set>

#include <wx/listctrl.h>
#include <wx/textctrl.h>

#include <OdStringWx.h>

#include "DialogFixture.h"
#include "app/materials/DlgCustomProperties.h"

namespace vl_mat_test {

namespace {

using vl_app::DlgCustomProperties;

TEST(CustomPropertyKinds, ConvertToAndFromObjectTypes) {
    EXPECT_EQ(DlgCustomProperties::type(DlgCustomProperties::kChooseAny), vantlib::kUnknownObject);
    EXPECT_EQ(DlgCustomProperties::type(DlgCustomProperties::kChooseMaterial), vantlib::kMaterial);
    EXPECT_EQ(DlgCustomProperties::type(DlgCustomProperties::kChooseComposition), vantlib::kComposition);
    EXPECT_EQ(DlgCustomProperties::type(vantlib::kMaterial), DlgCustomProperties::kChooseMaterial);
    EXPECT_EQ(DlgCustomProperties::type(vantlib::kComposition), DlgCustomProperties::kChooseComposition);
    EXPECT_EQ(DlgCustomProperties::type(vantlib::kLayer), DlgCustomProperties::kChooseAny);
    EXPECT_EQ(DlgCustomProperties::type(DlgCustomProperties::EChooseKind(9)), vantlib::kUnknownObject);
}

class CustomProperties : public DialogFixture {
protected:
    void SetUp() override {
        DialogFixture::SetUp();
        project->save(vantlib::CustomProperty::create(L"Supplier", vantlib::kUnknownObject));
        project->save(vantlib::CustomProperty::create(L"Fire class", vantlib::kMaterial));
        project->save(vantlib::CustomProperty::create(L"U-value", vantlib::kComposition));
        project->save(vantlib::CustomProperty::create(L"Colour code", vantlib::kMaterial));
        // A material carries a value of "Fire class", so that property is in use.
        auto brick = vantlib::Material::create(L"Brick");
        brick->set_custom_value(project->get<vantlib::CustomProperty>(vantlib::NameKey(L"Fire class")), L"A1");
        project->save(brick);
    }

    std::map<wxString, vantlib::ObjectType> stored() const {
        std::map<wxString, vantlib::ObjectType> result;
        for (const auto& property : vantlib::getCustomProperties(project, vantlib::kUnknownObject))
            result[toWx(property->name())] = property->object_type();
        return result;
    }

    static wxListCtrl* list(wxDialog& dialog) { return XRCCTRL(dialog, "LIST_PROPS", wxListCtrl); }

    static std::set<wxString> rows(wxDialog& dialog) {
        std::set<wxString> names;
        for (long row = 0; row < list(dialog)->GetItemCount(); ++row)
            names.insert(list(dialog)->GetItemText(row));
        return names;
    }

    static long select(wxDialog& dialog, const wxString& name) {
        const long row = list(dialog)->FindItem(-1, name);
        EXPECT_GE(row, 0) << name;
        for (long other = 0; other < list(dialog)->GetItemCount(); ++other)
            list(dialog)->SetItemState(other, 0, wxLIST_STATE_SELECTED);
        if (row >= 0)
            list(dialog)->SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
        return row;
    }

    // Types the name into the label editor that a new row opens, and confirms it.
    static void typeName(wxDialog& dialog, const wxString& name) {
        wxTextCtrl* editor = list(dialog)->GetEditControl();
        ASSERT_NE(editor, nullptr) << "no label editor is open";
        editor->SetValue(name);
        list(dialog)->EndEditLabel(false);
    }

    static bool hasTool(wxDialog& dialog, const char* name) {
        return dialog.FindWindow(XRCID("TBAR_PROPS")) &&
               static_cast<wxToolBar*>(dialog.FindWindow(XRCID("TBAR_PROPS")))->FindById(XRCID(name)) != nullptr;
    }
};

TEST_F(CustomProperties, NewPropertiesAreNamedInPlaceAndSavedOnOk) {
    DlgCustomProperties dialog(nullptr, libs, vl_db::kDbProject, vantlib::kMaterial, vl_db::kModeManager);
    std::map<wxString, vantlib::ObjectType> whileOpen;
    const int result = runModal(dialog, [&] {
        EXPECT_EQ(dialog.GetTitle(), "Edit Custom Properties");
        // Opened for materials: no composition tool and no composition properties.
        EXPECT_FALSE(hasTool(dialog, "TOOL_NEW_CMP"));
        EXPECT_TRUE(hasTool(dialog, "TOOL_NEW_MAT"));
        EXPECT_EQ(rows(dialog), (std::set<wxString>{"Supplier", "Fire class", "Colour code"}));

        EXPECT_TRUE(press(dialog, "TOOL_NEW_MAT"));
        typeName(dialog, "Recycled content");
        EXPECT_TRUE(press(dialog, "TOOL_NEW_ANY"));
        typeName(dialog, "supplier");  // taken in another case: the row keeps its own name
        EXPECT_TRUE(rows(dialog).count("NEW"));
        list(dialog)->EditLabel(select(dialog, "Colour code"));
        typeName(dialog, "Colour");
        whileOpen = stored();
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(result, wxID_OK);
    EXPECT_EQ(whileOpen.size(), 4u);
    EXPECT_EQ(whileOpen.count("Recycled content"), 0u);
    const auto after = stored();
    EXPECT_EQ(after.size(), 6u);
    EXPECT_EQ(after.at("Recycled content"), vantlib::kMaterial);
    EXPECT_EQ(after.at("NEW"), vantlib::kUnknownObject);
    EXPECT_EQ(after.at("Colour"), vantlib::kMaterial);
    EXPECT_EQ(after.count("Colour code"), 0u);
}

TEST_F(CustomProperties, CancelAfterAddingAndRenamingLeavesTheLibraryUnchanged) {
    const auto before = stored();
    DlgCustomProperties dialog(nullptr, libs, vl_db::kDbProject, vantlib::kComposition, vl_db::kModeManager);
    const int result = runModal(dialog, [&] {
        EXPECT_FALSE(hasTool(dialog, "TOOL_NEW_MAT"));
        EXPECT_EQ(rows(dialog), (std::set<wxString>{"Supplier", "U-value"}));
        EXPECT_TRUE(press(dialog, "TOOL_NEW_CMP"));
        typeName(dialog, "Acoustic rating");
        list(dialog)->EditLabel(select(dialog, "U-value"));
        typeName(dialog, "Thermal transmittance");
        select(dialog, "Supplier");
        EXPECT_TRUE(press(dialog, "TOOL_DELETE"));
        EXPECT_TRUE(press(dialog, wxID_CANCEL));
    });
    EXPECT_EQ(result, wxID_CANCEL);
    EXPECT_EQ(stored(), before);
}

TEST_F(CustomProperties, APropertyInUseStaysAndAnUnusedOneGoesOnOk) {
    DlgCustomProperties dialog(nullptr, libs, vl_db::kDbProject, vantlib::kUnknownObject, vl_db::kModeManager);
    wxString message;
    runModal(dialog, [&] {
        EXPECT_TRUE(hasTool(dialog, "TOOL_NEW_MAT") && hasTool(dialog, "TOOL_NEW_CMP"));
        EXPECT_EQ(rows(dialog).size(), 4u);
        EXPECT_FALSE(toolEnabled(dialog, "TOOL_DELETE"));  // nothing selected yet
        select(dialog, "Fire class");
        wxTEST_DIALOG(press(dialog, "TOOL_DELETE"), ReadMessage(&message));
        EXPECT_TRUE(rows(dialog).count("Fire class"));
        select(dialog, "U-value");
        EXPECT_TRUE(press(dialog, "TOOL_DELETE"));
        EXPECT_FALSE(rows(dialog).count("U-value"));
        EXPECT_TRUE(press(dialog, wxID_OK));
    });
    EXPECT_EQ(message, "Can't remove Fire class because it is in use.");
    const auto after = stored();
    EXPECT_EQ(after.count("Fire class"), 1u);
    EXPECT_EQ(after.count("U-value"), 0u);
}

TEST_F(CustomProperties, PickingARowSavesAndReturnsTheStoredProperty) {
    DlgCustomProperties dialog(nullptr, libs, vl_db::kDbProject, vantlib::kMaterial, vl_db::kModePicker);
    const int result = runModal(dialog, [&] {
        EXPECT_EQ(dialog.GetTitle(), "Select/Create a Custom Property");
        EXPECT_TRUE(press(dialog, "TOOL_NEW_MAT"));
        typeName(dialog, "Embodied carbon");
        wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, XRCID("LIST_PROPS"));
        event.SetEventObject(list(dialog));
        event.SetIndex(select(dialog, "Embodied carbon"));
        dialog.ProcessWindowEvent(event);
    });
    EXPECT_EQ(result, wxID_OK);
    const auto chosen = dialog.selected();
    ASSERT_TRUE(chosen);
    EXPECT_NE(chosen->id(), 0u);
    EXPECT_EQ(chosen->name(), OdString(L"Embodied carbon"));
    EXPECT_TRUE(project->get<vantlib::CustomProperty>(chosen->id()));
}

}  // namespace

}  // namespace vl_mat_test
