// The enumerated values editor and the "Enum" pane row on a real library: OK stores the list the
// grid shows (read back through a fresh view of the library), a refused list keeps the dialog
// open with its warning, Cancel stores nothing, and the buttons keep to their rules.
#include <filesystem>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/propgrid/propgrid.h>

#include <WxgConfig.h>

#include <vantlib/Library.h>
#include <vantlib/PropertySets.h>
#include <vl_db/PropertySets.h>

#include "DialogDriving.h"
#include "MessageBoxes.h"
#include "app/properties/DlgEnumProperty.h"
#include "app/properties/EnumProperty.h"

using namespace vl_app;
using vl_db::EnumTypeSpecifier;

namespace {

class EnumEditor : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = std::filesystem::temp_directory_path() /
                ("vl-enum-" + std::to_string(::getpid()) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(m_dir);
        m_path = OdString::fromUtf8((m_dir / "central.vlib").string());
        vantlib::Library::create(m_path, OdDb::kUnitsMillimeters);
        library = vl_db::propertySetLibrary(vantlib::Library::open(m_path));
        set = library->createNamespace(L"Office", L"Office", true)->createPropertySet(L"Doors");
        library->commit();
    }
    void TearDown() override {
        set.reset();
        library.reset();
        std::filesystem::remove_all(m_dir);
    }

    // A committed definition of the set with the given type.
    uint32_t define(const wchar_t* name, const vl_db::AbstractTypeSpecifier& specifier) {
        auto definition = set->createPropertyDefinition(name);
        definition->setTypeSpecifier(specifier);
        library->commit();
        return definition->id();
    }

    // The stored type of a definition as a new view of the library file reads it.
    vl_db::TypeSpecifierPtr storedType(const wchar_t* name) const {
        const auto fresh = vl_db::propertySetLibrary(vantlib::Library::open(m_path));
        for (const auto& space : fresh->namespaces())
            for (const auto& each : space->propertySets())
                for (const auto& definition : each->propertyDefinitions())
                    if (definition->name() == name)
                        return definition->typeSpecifier();
        return nullptr;
    }

    template <class T>
    static EnumTypeSpecifier<T> asList(const vl_db::TypeSpecifierPtr& specifier) {
        const auto* list = dynamic_cast<const EnumTypeSpecifier<T>*>(specifier.get());
        if (!list) {
            ADD_FAILURE() << "the stored type is no enumeration of the expected values";
            return EnumTypeSpecifier<T>();
        }
        return *list;
    }

    template <class T>
    std::unique_ptr<DlgEnumProperty<T>> editor(uint32_t id) {
        const auto definition = findDefinition(*set, id);
        return std::make_unique<DlgEnumProperty<T>>(nullptr, id, definition->typeSpecifier(), set);
    }

    static int idOf(wxDialog& dialog, const char* name) {
        wxWindow* window = dialog.FindWindowByName(name);
        EXPECT_NE(window, nullptr) << name;
        return window ? window->GetId() : wxID_NONE;
    }

    static wxCheckBox* checkBox(wxDialog& dialog, const char* name) {
        return dynamic_cast<wxCheckBox*>(dialog.FindWindowByName(name));
    }

    static void check(wxCheckBox* box, bool value) {
        box->SetValue(value);
        wxCommandEvent event(wxEVT_CHECKBOX, box->GetId());
        event.SetEventObject(box);
        event.SetInt(value);
        box->GetEventHandler()->ProcessEvent(event);
    }

    // Makes the namespace read-only, as an import of the official sets leaves it, and views
    // the library afresh.
    void makeReadOnly() {
        const uint32_t namespaceId = library->namespaces()[0]->id();
        set.reset();
        library.reset();
        {
            vantlib::PropertySetStore store(vantlib::Library::open(m_path));
            auto record = *store.findNamespace(namespaceId);
            record.editable = false;
            store.updateNamespace(record);
        }
        library = vl_db::propertySetLibrary(vantlib::Library::open(m_path));
        set = library->namespaces()[0]->propertySets()[0];
    }

    std::shared_ptr<vl_db::ILibrary> library;
    std::shared_ptr<vl_db::IPropertySet> set;

private:
    std::filesystem::path m_dir;
    OdString m_path;
};

std::vector<wxString> valuesOf(const std::vector<EnumRow>& rows) {
    std::vector<wxString> values;
    for (const EnumRow& row : rows)
        values.push_back(row.value);
    return values;
}

}  // namespace

TEST_F(EnumEditor, OkStoresTheGridAsTheDefinitionsList) {
    const uint32_t id = define(L"FireResistance", EnumTypeSpecifier<long long>(6, {{30, L""}, {60, L""}}, false));
    auto dialog = editor<long long>(id);
    EXPECT_FALSE(dialog->isMapping());
    EXPECT_EQ(dialog->grid()->GetColLabelValue(0), "Integer");
    const int answer = vl_test::runModal(*dialog, [&] {
        ASSERT_TRUE(vl_test::press(*dialog, idOf(*dialog, "BTN_ADD")));
        EXPECT_EQ(dialog->grid()->GetNumberRows(), 3);
        dialog->grid()->SetCellValue(2, 0, "90");
        check(checkBox(*dialog, "CB_ALLOW_CUSTOM"), true);
        EXPECT_TRUE(vl_test::press(*dialog, wxID_OK));
    });
    EXPECT_EQ(answer, wxID_OK);
    library->commit();

    const auto stored = asList<long long>(storedType(L"FireResistance"));
    EXPECT_EQ(stored.primitiveCode(), 6);
    EXPECT_EQ(stored.values(), (EnumTypeSpecifier<long long>::Values{{30, L""}, {60, L""}, {90, L""}}));
    EXPECT_TRUE(stored.allowCustomValue());
}

TEST_F(EnumEditor, MappingStartsFromTheStoredDescriptionsAndDecidesWhatIsStored) {
    const uint32_t id = define(L"Finish", EnumTypeSpecifier<OdString>(11, {{L"PL", L"Plaster"}, {L"TI", L"Tiles"}}, true));
    auto dialog = editor<OdString>(id);
    EXPECT_TRUE(dialog->isMapping());
    EXPECT_TRUE(checkBox(*dialog, "CB_ALLOW_CUSTOM")->GetValue());
    EXPECT_TRUE(dialog->grid()->IsColShown(1));
    EXPECT_EQ(dialog->grid()->GetCellValue(1, 1), "Tiles");
    vl_test::runModal(*dialog, [&] {
        // Unchecked, the descriptions are hidden and not stored.
        check(checkBox(*dialog, "CB_MAPPING"), false);
        EXPECT_FALSE(dialog->grid()->IsColShown(1));
        EXPECT_TRUE(vl_test::press(*dialog, wxID_OK));
    });
    library->commit();
    const auto stored = asList<OdString>(storedType(L"Finish"));
    EXPECT_FALSE(stored.hasDescriptions());
    EXPECT_EQ(stored.values().size(), 2u);
}

TEST_F(EnumEditor, RefusedListsKeepTheDialogOpenWithTheirWarning) {
    const uint32_t id = define(L"Count", vl_db::TypeSpecifier<long long>(6));
    auto dialog = editor<long long>(id);
    EXPECT_EQ(dialog->grid()->GetNumberRows(), 0);
    vl_test::runModal(*dialog, [&] {
        vl_test::press(*dialog, idOf(*dialog, "BTN_ADD"));
        dialog->grid()->SetCellValue(0, 0, "1.5");
        {
            wxTEST_DIALOG(vl_test::press(*dialog, wxID_OK),
                          vl_test::ExpectMessage("Property values should be of integer type."));
        }
        EXPECT_TRUE(dialog->IsModal());
        dialog->grid()->SetCellValue(0, 0, "2");
        vl_test::press(*dialog, idOf(*dialog, "BTN_ADD"));
        dialog->grid()->SetCellValue(1, 0, "2");
        {
            wxTEST_DIALOG(vl_test::press(*dialog, wxID_OK), vl_test::ExpectMessage("Property values must be unique."));
        }
        dialog->grid()->SetCellValue(1, 0, "3");
        check(checkBox(*dialog, "CB_MAPPING"), true);
        dialog->grid()->SetCellValue(0, 1, "two");
        {
            wxTEST_DIALOG(vl_test::press(*dialog, wxID_OK),
                          vl_test::ExpectMessage("One or more descriptions are undefined."));
        }
        EXPECT_TRUE(dialog->IsModal());
        dialog->grid()->SetCellValue(1, 1, "three");
        EXPECT_TRUE(vl_test::press(*dialog, wxID_OK));
    });
    library->commit();
    EXPECT_EQ(asList<long long>(storedType(L"Count")).values(),
              (EnumTypeSpecifier<long long>::Values{{2, L"two"}, {3, L"three"}}));
}

TEST_F(EnumEditor, CancelLeavesTheDefinitionAsItWas) {
    const uint32_t id = define(L"Ratio", EnumTypeSpecifier<double>(10, {{0.1, L""}, {0.25, L""}}, false));
    auto dialog = editor<double>(id);
    EXPECT_EQ(dialog->grid()->GetCellValue(0, 0), "0.1");
    const int answer = vl_test::runModal(*dialog, [&] {
        dialog->grid()->SetCellValue(0, 0, "0.5");
        dialog->grid()->SelectRow(1);
        vl_test::press(*dialog, idOf(*dialog, "BTN_REMOVE"));
        EXPECT_TRUE(vl_test::press(*dialog, wxID_CANCEL));
    });
    EXPECT_EQ(answer, wxID_CANCEL);
    EXPECT_FALSE(library->hasPendingEdits());
    EXPECT_EQ(asList<double>(findDefinition(*set, id)->typeSpecifier()).values(),
              (EnumTypeSpecifier<double>::Values{{0.1, L""}, {0.25, L""}}));
}

TEST_F(EnumEditor, ButtonsMoveAndRemoveWithinTheGrid) {
    const uint32_t id = define(L"Grade", EnumTypeSpecifier<OdString>(11, {{L"A", L""}, {L"B", L""}, {L"C", L""}}, false));
    auto dialog = editor<OdString>(id);
    EnumPropGrid<OdString>* grid = dialog->grid();
    const int up = idOf(*dialog, "BTN_MOVE_UP");
    const int down = idOf(*dialog, "BTN_MOVE_DOWN");
    const int remove = idOf(*dialog, "BTN_REMOVE");
    dialog->Show();

    grid->selectRows({0});
    vl_test::press(*dialog, up);
    EXPECT_EQ(valuesOf(grid->rows()), (std::vector<wxString>{"A", "B", "C"}));
    grid->selectRows({2});
    vl_test::press(*dialog, down);
    EXPECT_EQ(valuesOf(grid->rows()), (std::vector<wxString>{"A", "B", "C"}));

    vl_test::press(*dialog, up);
    EXPECT_EQ(valuesOf(grid->rows()), (std::vector<wxString>{"A", "C", "B"}));
    EXPECT_EQ(grid->selectedRows(), std::vector<int>{1});
    EXPECT_EQ(grid->GetGridCursorRow(), 1);

    // Without a selection Remove takes the row of the current cell.
    grid->ClearSelection();
    grid->SetGridCursor(0, 0);
    grid->ClearSelection();
    vl_test::press(*dialog, remove);
    EXPECT_EQ(valuesOf(grid->rows()), (std::vector<wxString>{"C", "B"}));
    EXPECT_EQ(grid->selectedRows(), std::vector<int>{0});
    grid->selectRows({1});
    vl_test::press(*dialog, remove);
    grid->selectRows({0});
    vl_test::press(*dialog, remove);
    EXPECT_EQ(grid->GetNumberRows(), 0);
    // Nothing left to remove or move.
    vl_test::press(*dialog, remove);
    vl_test::press(*dialog, up);
    EXPECT_EQ(grid->GetNumberRows(), 0);
}

TEST_F(EnumEditor, TheValueColumnKeepsItsMinimumWhenDragged) {
    const uint32_t id = define(L"Finish", EnumTypeSpecifier<OdString>(11, {{L"PL", L"Plaster"}}, false));
    auto dialog = editor<OdString>(id);
    dialog->SetSize(dialog->FromDIP(wxSize(500, 400)));
    dialog->Show();
    wxYield();
    EnumPropGrid<OdString>* grid = dialog->grid();
    const int available = grid->GetClientSize().x;
    EXPECT_EQ(grid->GetColSize(0) + grid->GetColSize(1), available);

    grid->SetColSize(0, dialog->FromDIP(30));
    wxGridSizeEvent dragged(grid->GetId(), wxEVT_GRID_COL_SIZE, grid, 0);
    grid->ProcessWindowEvent(dragged);
    EXPECT_EQ(grid->GetColSize(0), dialog->FromDIP(70));
    EXPECT_EQ(grid->GetColSize(1), available - dialog->FromDIP(70));

    // The share stays when the dialog grows.
    const double share = dialog->valueColumnShare();
    dialog->SetSize(dialog->FromDIP(wxSize(700, 400)));
    wxYield();
    EXPECT_NEAR(grid->GetColSize(0), grid->GetClientSize().x * share, 1.0);
}

TEST_F(EnumEditor, PaneRowShowsTheListAndOpensTheEditorOnlyForEnumerableTypes) {
    const uint32_t listId = define(L"Fire", EnumTypeSpecifier<long long>(6, {{30, L"EI 30"}, {60, L"EI 60"}}, false));
    const uint32_t booleanId = define(L"Wet", vl_db::TypeSpecifier<long long>(1));
    wxFrame frame(nullptr, wxID_ANY, "pane", wxDefaultPosition, wxSize(400, 300));
    auto* grid = new wxPropertyGrid(&frame, wxID_ANY, wxDefaultPosition, wxSize(400, 300));
    auto* row = new EnumProperty("Enum", listId, set);
    grid->Append(row);
    frame.Show();
    EXPECT_EQ(row->GetValueAsString(), "30 : EI 30, 60 : EI 60");
    EXPECT_EQ(row->GetAttribute("type").GetLong(), 6);
    EXPECT_TRUE(row->HasFlag(wxPG_PROP_NOEDITOR));

    // Any event but the row's button leaves the editor closed.
    wxCommandEvent other(wxEVT_TEXT, wxID_ANY);
    EXPECT_FALSE(row->OnEvent(grid, nullptr, other));

    // The button, pressed through the grid, opens the editor of the list's type. Its OK stores
    // the list in the set at once and the row shows it; the pane is not asked to store anything,
    // so it sees no change of the row.
    ASSERT_TRUE(grid->SelectProperty(row, true));
    wxWindow* button = grid->GetEditorControlSecondary();
    ASSERT_NE(button, nullptr);
    int changes = 0;
    grid->Bind(wxEVT_PG_CHANGING, [&](wxPropertyGridEvent& event) {
        ++changes;
        event.Skip();
    });
    bool opened = false;
    frame.CallAfter([&] {
        for (wxWindow* window : wxTopLevelWindows) {
            if (auto* dialog = dynamic_cast<DlgEnumProperty<long long>*>(window); dialog && dialog->IsModal()) {
                opened = true;
                EXPECT_TRUE(dialog->isMapping());
                dialog->grid()->SetCellValue(0, 0, "45");
                vl_test::press(*dialog, wxID_OK);
            }
        }
    });
    wxCommandEvent pressed(wxEVT_BUTTON, button->GetId());
    pressed.SetEventObject(button);
    button->GetEventHandler()->ProcessEvent(pressed);
    EXPECT_TRUE(opened);
    EXPECT_EQ(row->GetValueAsString(), "45 : EI 30, 60 : EI 60");
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(library->hasPendingEdits());
    // The editor's rectangle is kept for the next time.
    wxRect kept;
    EXPECT_TRUE(wxg::WxgConfig::loadWindowRect("DLG_ENUM_PROPERTY", kept));

    const auto boolean = std::make_unique<EnumProperty>("Enum", booleanId, set);
    EXPECT_EQ(boolean->GetValue().GetString(), "");
    EXPECT_FALSE(editEnumeration(&frame, set, booleanId));
    EXPECT_FALSE(editEnumeration(&frame, set, 999999));

    // The definition changed elsewhere: the row shows the stored list again.
    findDefinition(*set, listId)->setTypeSpecifier(EnumTypeSpecifier<long long>(6, {{1, L""}, {2, L""}}, false));
    row->refreshText();
    EXPECT_EQ(row->GetValueAsString(), "1, 2");
}

TEST_F(EnumEditor, AListOfAReadOnlyNamespaceIsOnlyShown) {
    const uint32_t id = define(L"Fire", EnumTypeSpecifier<long long>(6, {{30, L""}, {60, L""}}, false));
    makeReadOnly();
    auto dialog = editor<long long>(id);
    EXPECT_FALSE(dialog->grid()->IsEditable());
    for (const char* name : {"BTN_ADD", "BTN_REMOVE", "BTN_MOVE_UP", "BTN_MOVE_DOWN", "CB_MAPPING", "CB_ALLOW_CUSTOM"})
        EXPECT_FALSE(dialog->FindWindowByName(name)->IsThisEnabled()) << name;
    const int answer = vl_test::runModal(*dialog, [&] { EXPECT_TRUE(vl_test::press(*dialog, wxID_OK)); });
    EXPECT_EQ(answer, wxID_CANCEL);
    EXPECT_FALSE(library->hasPendingEdits());
}
