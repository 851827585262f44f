// The property sets editor driven as a user drives it, with the library checked afterwards.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <wx/choice.h>
#include <wx/srchctrl.h>

#include <FileDialogTesting.h>
#include <OdEdSettingsManager.h>
#include <QcPropertyGrid.h>

#include "DialogDriving.h"
#include "PropertiesFixture.h"

namespace vl_props_test {

using namespace vl_app;

class PropertiesDialog : public PropertiesFixture {};

TEST_F(PropertiesDialog, OpensOnTheNamedNamespaceWithGroupedDefinitions) {
    open(L"Office");
    EXPECT_EQ(dialog->namespaceChoice()->GetStringSelection(), "Office standards");
    const wxTreeItemId root = dialog->tree()->GetRootItem();
    EXPECT_EQ(children(root), (std::vector<wxString>{"Wall finishes", "Door schedule"}));
    const wxTreeItemId finishes = dialog->findItem("PSet_A");
    EXPECT_EQ(children(finishes), (std::vector<wxString>{"Property definitions", "Value definitions"}));
    // A set without value definitions has no empty grouping node.
    EXPECT_EQ(children(dialog->findItem("Doors")), (std::vector<wxString>{"Property definitions"}));
    // Without a name, the second namespace of the library is chosen.
    open(OdString());
    EXPECT_EQ(dialog->namespaceChoice()->GetSelection(), 1);
}

TEST_F(PropertiesDialog, SearchFiltersWhileTypingAndClearingSelectsAgain) {
    open();
    select("Doors", "Door number");
    type("WALL");
    EXPECT_TRUE(dialog->findItem("PSet_A", "Wall thickness").IsOk());
    EXPECT_FALSE(dialog->findItem("PSet_A", "Colour").IsOk());
    // A set whose definitions all fail the filter stays, without grouping nodes.
    EXPECT_TRUE(children(dialog->findItem("Doors")).empty());
    type("wall t");
    select("PSet_A", "Wall thickness");
    type("");
    EXPECT_TRUE(dialog->findItem("PSet_A", "Colour").IsOk());
    EXPECT_EQ(selectedText(), "Wall thickness");
}

TEST_F(PropertiesDialog, RenamingASetLoopsUntilTheNameIsFree) {
    open();
    select("Doors");
    // pset_a differs only by letter case from another set of the namespace.
    wxString message;
    wxTEST_DIALOG(dialog->editRow(kRowId, wxVariant("pset_a")), AnswerName("Door_Schedule", &message));
    EXPECT_EQ(message, "A property set with this this id already exists: 'pset_a'.\nPlease enter a valid name.");
    EXPECT_EQ(dialog->paneRow(kRowId)->GetValueAsString(), "Door_Schedule");
    // Giving up keeps the old name.
    wxTEST_DIALOG(dialog->editRow(kRowId, wxVariant("PSET_A")), AnswerName("", nullptr, wxID_CANCEL));
    idle();
    EXPECT_EQ(dialog->paneRow(kRowId)->GetValueAsString(), "Door_Schedule");
    // An empty name becomes the default, which is checked like any other.
    dialog->editRow(kRowId, wxVariant(""));
    EXPECT_EQ(dialog->paneRow(kRowId)->GetValueAsString(), "New PropertySet");
    select("PSet_A");
    // The loop goes on while the answer is empty or taken.
    wxTEST_DIALOG(dialog->editRow(kRowId, wxVariant("")), AnswerName("", nullptr), AnswerName("new propertyset"),
                  AnswerName("Finishes"));
    EXPECT_EQ(dialog->paneRow(kRowId)->GetValueAsString(), "Finishes");
    press("wxID_OK");
    ASSERT_TRUE(storedSet(L"Office", L"New PropertySet"));
    ASSERT_TRUE(storedSet(L"Office", L"Finishes"));
    EXPECT_FALSE(storedSet(L"Office", L"Doors"));
}

TEST_F(PropertiesDialog, NamesAreCheckedPerNamespace) {
    open(L"Other");
    select("Elsewhere");
    // The same name in another namespace is accepted without a question.
    dialog->editRow(kRowId, wxVariant("PSet_A"));
    EXPECT_EQ(dialog->paneRow(kRowId)->GetValueAsString(), "PSet_A");
    EXPECT_TRUE(dialog->isValidName(vl_db::kPropertyDefinitionObject, "Thickness"));
    EXPECT_FALSE(dialog->isValidName(vl_db::kPropertySetObject, ""));
}

TEST_F(PropertiesDialog, NewObjectsOpenTheirIdForNaming) {
    open();
    ASSERT_TRUE(press("BMP_BTN_NEW_PROP_SET"));
    EXPECT_EQ(selectedText(), "New PropertySet");
    wxPGProperty* id = dialog->paneRow(kRowId);
    ASSERT_TRUE(id);
    EXPECT_TRUE(id->IsEnabled());
    EXPECT_FALSE(id->HasFlag(wxPG_PROP_READONLY));
    dialog->editRow(kRowId, wxVariant("Acoustics"));
    ASSERT_TRUE(press("BMP_BTN_NEW_PROP_DEF"));
    ASSERT_TRUE(press("BMP_BTN_NEW_PROP_DEF"));
    EXPECT_EQ(selectedText(), "New Property 2");
    ASSERT_TRUE(press("BMP_BTN_NEW_VAL_DEF"));
    EXPECT_EQ(selectedText(), "New Value");
    EXPECT_EQ(children(dialog->findItem("Acoustics")), (std::vector<wxString>{"Property definitions", "Value definitions"}));
    // Selected again later, the id of an existing object is read-only.
    select("PSet_A");
    EXPECT_FALSE(dialog->paneRow(kRowId)->IsEnabled());
    EXPECT_TRUE(dialog->structureChanged());
}

TEST_F(PropertiesDialog, NewDefinitionNeedsASet) {
    open();
    dialog->tree()->SelectItem(dialog->tree()->GetRootItem());
    idle();
    EXPECT_FALSE(enabled("BMP_BTN_NEW_PROP_DEF"));
    wxTEST_DIALOG(
        {
            wxCommandEvent event(wxEVT_MENU, XRCID("TOOL_NEW_PROPERTY_DEFINITION"));
            dialog->ProcessWindowEvent(event);
        },
        vl_test::ExpectMessage("Please select a property set to add the definition to."));
}

TEST_F(PropertiesDialog, MovingKeepsTheSelectionAndStopsAtTheEnds) {
    open();
    select("PSet_A", "Wall thickness");
    EXPECT_FALSE(enabled("BMP_BTN_UP"));
    dialog->onDefinitionMove(-1);
    EXPECT_EQ(children(dialog->tree()->GetItemParent(dialog->tree()->GetSelection())),
              (std::vector<wxString>{"Wall thickness", "Colour", "Gloss"}));
    ASSERT_TRUE(press("BMP_BTN_DOWN"));
    EXPECT_EQ(selectedText(), "Wall thickness");
    EXPECT_EQ(children(dialog->tree()->GetItemParent(dialog->tree()->GetSelection())),
              (std::vector<wxString>{"Colour", "Wall thickness", "Gloss"}));
    ASSERT_TRUE(press("BMP_BTN_DOWN"));
    EXPECT_FALSE(enabled("BMP_BTN_DOWN"));
    dialog->onDefinitionMove(+1);
    EXPECT_EQ(children(dialog->tree()->GetItemParent(dialog->tree()->GetSelection())),
              (std::vector<wxString>{"Colour", "Gloss", "Wall thickness"}));
    ASSERT_TRUE(press("BMP_BTN_UP"));
    EXPECT_EQ(selectedText(), "Wall thickness");
}

TEST_F(PropertiesDialog, DeletingDefinitionsSetsAndNamespaces) {
    open();
    select("PSet_A", "Colour");
    ASSERT_TRUE(press("BMP_BTN_DELETE"));
    EXPECT_EQ(selectedText(), "Gloss");
    EXPECT_EQ(children(dialog->findItem("PSet_A")).size(), 2u);
    // A grouping node removes all definitions of its kind, and goes with them.
    select("PSet_A");
    const wxTreeItemId values = dialog->tree()->GetLastChild(dialog->findItem("PSet_A"));
    dialog->tree()->SelectItem(values);
    idle();
    ASSERT_TRUE(press("BMP_BTN_DELETE"));
    EXPECT_EQ(children(dialog->findItem("PSet_A")), (std::vector<wxString>{"Property definitions"}));
    // The Delete key removes a set as the button does.
    select("Doors");
    wxKeyEvent key(wxEVT_KEY_DOWN);
    key.m_keyCode = WXK_DELETE;
    wxTreeEvent keyDown(wxEVT_TREE_KEY_DOWN, dialog->tree());
    keyDown.SetKeyEvent(key);
    dialog->tree()->ProcessWindowEvent(keyDown);
    idle();
    EXPECT_FALSE(dialog->findItem("Doors").IsOk());

    dialog->tree()->SelectItem(dialog->tree()->GetRootItem());
    idle();
    wxString question;
    wxTEST_DIALOG(press("BMP_BTN_DELETE"), AnswerMessage(wxID_NO, &question));
    EXPECT_EQ(question, "Are you sure you want to delete \"Office standards\" namespace?");
    EXPECT_EQ(dialog->namespaceChoice()->GetCount(), 3u);
    wxTEST_DIALOG(press("BMP_BTN_DELETE"), AnswerMessage(wxID_YES));
    EXPECT_EQ(dialog->namespaceChoice()->GetCount(), 2u);
    press("wxID_OK");
    EXPECT_FALSE(storedSet(L"Office", L"PSet_A"));
    EXPECT_TRUE(storedSet(L"Other", L"Elsewhere"));
}

TEST_F(PropertiesDialog, OkKeepsAndCancelDiscards) {
    open();
    select("PSet_A");
    dialog->editRow(kRowLabel, wxVariant("Finishes"));
    EXPECT_EQ(selectedText(), "Finishes");
    dialog->editRow(kRowPerInstance, wxVariant(true));
    ASSERT_TRUE(press("wxID_CANCEL"));
    dialog.reset();
    session.reset();
    EXPECT_EQ(storedSet(L"Office", L"PSet_A")->label(), L"Wall finishes");

    open();
    select("PSet_A");
    // An empty label takes the set's name.
    dialog->editRow(kRowLabel, wxVariant(""));
    EXPECT_EQ(selectedText(), "PSet_A");
    dialog->editRow(kRowVisible, wxVariant(false));
    select("PSet_A", "Finished area");
    dialog->editRow(kRowMeasure, wxVariant(3L));
    ASSERT_TRUE(press("wxID_OK"));
    const auto stored = storedSet(L"Office", L"PSet_A");
    EXPECT_EQ(stored->label(), L"PSet_A");
    EXPECT_FALSE(stored->isVisible());
    EXPECT_EQ(stored->valueDefinitions().front()->measure(), L"VOLUME");
    // OK told the structure holder, which now leaves the hidden set out.
    EXPECT_EQ(host.structure().updates(), 1u);
    EXPECT_TRUE(host.structure().propertySets("IfcWall").empty());
}

TEST_F(PropertiesDialog, ChangingTheTypeOfAListedEnumerationAsksFirst) {
    open();
    select("Doors", "Fire resistance");
    EXPECT_TRUE(dialog->paneRow(kRowEnum));
    wxString question;
    wxTEST_DIALOG(dialog->editRow(kRowType, wxVariant(long(vl_db::kRealCode))), AnswerMessage(wxID_NO, &question));
    EXPECT_EQ(question, "Non-empty Enum list prevents changing the property type.\nDo you want to clear this list to proceed?");
    idle();
    EXPECT_EQ(dialog->paneRow(kRowType)->GetValue().GetLong(), vl_db::kIntegerCode);
    wxTEST_DIALOG(dialog->editRow(kRowType, wxVariant(long(vl_db::kBooleanCode))), AnswerMessage(wxID_YES));
    idle();
    // A truth value has no list row.
    EXPECT_FALSE(dialog->paneRow(kRowEnum));
    press("wxID_OK");
    const auto definition = storedSet(L"Office", L"Doors")->propertyDefinitions().back();
    EXPECT_EQ(definition->typeSpecifier()->primitiveCode(), vl_db::kBooleanCode);
    EXPECT_EQ(definition->typeSpecifier()->kind(), vantlib::TypeSpecification::kPrimitive);
}

TEST_F(PropertiesDialog, AReadOnlyNamespaceIsBrowsedButNotEdited) {
    open(L"Official");
    EXPECT_FALSE(enabled("BMP_BTN_NEW_PROP_SET"));
    EXPECT_FALSE(enabled("BMP_BTN_DELETE"));
    select("Pset_WallCommon", "Is external");
    EXPECT_FALSE(enabled("BMP_BTN_UP"));
    EXPECT_FALSE(enabled("BMP_BTN_DELETE"));
    EXPECT_FALSE(dialog->paneRow(kRowLabel)->IsEnabled());
    EXPECT_FALSE(dialog->paneRow(kRowType)->IsEnabled());
    select("Pset_WallCommon");
    EXPECT_FALSE(enabled("BTN_CHECK_ALL_CATEGORIES"));
    EXPECT_TRUE(dialog->paneRow(kRowVisible)->IsEnabled());
    // A click on a category is put back.
    const wxTreeListItem walls = dialog->categoriesTree()->GetFirstChild(dialog->categoriesTree()->GetRootItem());
    dialog->checkCategory(walls, wxCHK_CHECKED);
    EXPECT_EQ(dialog->categoriesTree()->GetCheckedState(walls), wxCHK_UNCHECKED);
    press("wxID_OK");
    EXPECT_TRUE(storedSet(L"Official", L"Pset_WallCommon")->ifcTypes().empty());
}

TEST_F(PropertiesDialog, CategoriesWriteTheSetsIfcTypes) {
    open();
    select("Doors");
    wxTreeListCtrl* categories = dialog->categoriesTree();
    const wxTreeListItem walls = categories->GetFirstChild(categories->GetRootItem());
    EXPECT_EQ(categories->GetItemText(walls), "Walls");
    dialog->checkCategory(walls, wxCHK_CHECKED);
    const wxTreeListItem standard = categories->GetNextSibling(categories->GetFirstChild(walls));
    dialog->checkCategory(standard, wxCHK_UNCHECKED);
    EXPECT_EQ(categories->GetCheckedState(walls), wxCHK_UNDETERMINED);
    press("wxID_OK");
    EXPECT_EQ(storedSet(L"Office", L"Doors")->ifcTypes(), (std::vector<OdString>{L"IfcWall"}));

    open();
    select("PSet_A");
    EXPECT_EQ(dialog->categoriesTree()->GetCheckedState(dialog->categoriesTree()->GetFirstChild(
                  dialog->categoriesTree()->GetRootItem())),
              wxCHK_UNDETERMINED);
    ASSERT_TRUE(press("BTN_CHECK_ALL_CATEGORIES"));
    press("wxID_OK");
    EXPECT_EQ(storedSet(L"Office", L"PSet_A")->ifcTypes().size(), 17u);
    open();
    select("PSet_A");
    ASSERT_TRUE(press("BTN_UNCHECK_ALL_CATEGORIES"));
    press("wxID_OK");
    EXPECT_TRUE(storedSet(L"Office", L"PSet_A")->ifcTypes().empty());
}

TEST_F(PropertiesDialog, MechanicalDomain) {
    open(L"Office", PropertyDomain::Mechanical);
    EXPECT_FALSE(dialog->FindWindow(XRCID("BMP_BTN_NEW_VAL_DEF"))->IsShown());
    EXPECT_FALSE(dialog->FindWindow(XRCID("BTN_ATTR_SET_VIS"))->IsShown());
    EXPECT_EQ(dialog->messageBoxCaption(), "Mechanical");
    EXPECT_EQ(dialog->categoriesTree()->GetItemText(
                  dialog->categoriesTree()->GetFirstChild(dialog->categoriesTree()->GetRootItem())),
              "Ducts");
    dialog->tree()->SelectItem(dialog->tree()->GetRootItem());
    idle();
    wxString text, caption;
    wxTEST_DIALOG(
        {
            wxCommandEvent event(wxEVT_BUTTON, XRCID("BMP_BTN_DELETE"));
            dialog->ProcessWindowEvent(event);
        },
        AnswerMessage(wxID_OK, &text, &caption));
    EXPECT_EQ(text, "Namespaces cannot be deleted.");
    EXPECT_EQ(caption, "Mechanical");
    select("PSet_A");
    wxCommandEvent newValue(wxEVT_MENU, XRCID("TOOL_NEW_VALUE_DEFINITION"));
    dialog->ProcessWindowEvent(newValue);
    idle();
    EXPECT_EQ(children(dialog->findItem("PSet_A")).size(), 2u);
    EXPECT_EQ(dialog->namespaceChoice()->GetCount(), 3u);
}

TEST_F(PropertiesDialog, ImportOfAFileThatIsNoPropertySetFile) {
    open();
    const auto file = path("notes.xml");
    std::ofstream(file) << "<notes><note>not property sets</note></notes>";
    const auto before = children(dialog->tree()->GetRootItem());
    wxString text;
    wxTEST_DIALOG(press("BTN_IMPORT_PROP_SET"), ExpectFilePath(wxString(file.wstring())), vl_test::CaptureMessage(text));
    EXPECT_TRUE(text.StartsWith(wxString::Format("The property sets of \"%s\" could not be imported: ", file.wstring())))
        << text;
    EXPECT_EQ(children(dialog->tree()->GetRootItem()), before);
    EXPECT_EQ(dialog->namespaceChoice()->GetCount(), 3u);
}

TEST_F(PropertiesDialog, ImportWithoutTheFileDialogAsksForThePath) {
    OdEdSettingsManager::instance().setInt(L"FILEDIA", 0);
    open();
    const auto file = path("empty.xml");
    std::ofstream(file) << "";
    wxString text;
    wxTEST_DIALOG(press("BTN_IMPORT_PROP_SET"), AnswerName(wxString(file.wstring()), nullptr, wxID_OK, "Select xml file to import"),
                  vl_test::CaptureMessage(text));
    OdEdSettingsManager::instance().setInt(L"FILEDIA", 1);
    EXPECT_TRUE(text.StartsWith("The property sets of")) << text;
}

TEST_F(PropertiesDialog, ExportToAFolderThatCannotBeWritten) {
    open();
    const auto folder = path("locked");
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const wxString target = wxString((folder / "sets.xml").wstring());
    wxString text;
    wxTEST_DIALOG(press("BTN_EXPORT_PROP_SET"), ExpectFilePath(target), vl_test::CaptureMessage(text));
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    EXPECT_TRUE(text.StartsWith(wxString::Format("The property sets could not be exported to \"%s\"", target))) << text;
    EXPECT_FALSE(std::filesystem::exists(folder / "sets.xml"));
}

TEST_F(PropertiesDialog, ALibraryGoneWhileOpenIsReportedAndEditingStops) {
    open();
    select("PSet_A");
    // Another program puts a different library in place of the file.
    const auto replacement = path("replacement.vlib");
    vantlib::Library::create(vl_test::od(replacement), OdDb::kUnitsMillimeters);
    std::filesystem::rename(replacement, path("central.vlib"));
    wxString text;
    wxTEST_DIALOG(dialog->editRow(kRowLabel, wxVariant("Changed")), vl_test::CaptureMessage(text));
    EXPECT_FALSE(text.empty());
    idle();
    EXPECT_FALSE(enabled("BMP_BTN_NEW_PROP_SET"));
    EXPECT_FALSE(dialog->paneRow(kRowLabel)->IsEnabled());
    // The tree is still browsed.
    select("Doors", "Door number");
    EXPECT_EQ(selectedText(), "Door number");
}

}  // namespace vl_props_test

namespace vl_props_test {

TEST_F(PropertiesDialog, EscapeClosesLikeCancelAndDropsTheEdits) {
    open();
    dialog->Hide();
    select("PSet_A");
    dialog->editRow(kRowLabel, wxVariant("Typed before Escape"));
    const int answer = vl_test::runModal(*dialog, [this] {
        // Escape pressed in the tree, delivered as the toolkit delivers it (a char hook that
        // reaches the dialog) without the shared display's keyboard focus, which parallel
        // test programs would contend for.
        wxKeyEvent escape(wxEVT_CHAR_HOOK);
        escape.m_keyCode = WXK_ESCAPE;
        escape.SetEventObject(dialog->tree());
        dialog->tree()->ProcessWindowEvent(escape);
        for (int i = 0; i < 50 && dialog->IsModal(); ++i) {
            wxYield();
            wxMilliSleep(10);
        }
    });
    EXPECT_EQ(answer, wxID_CANCEL);
    EXPECT_EQ(storedSet(L"Office", L"PSet_A")->label(), L"Wall finishes");
}

}  // namespace vl_props_test
