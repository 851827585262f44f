// The ply grid driven as a user drives it: typing thicknesses, clicking the variable mark,
// dragging row labels, adding plies through the materials picker; the library is checked after.
#include <wx/msgdlg.h>
#include <wx/testing.h>

#include "app/materials/DlgMaterials.h"
#include "CompositionsFixture.h"
#include "MessageBoxes.h"

namespace vl_compositions_test {

namespace {

using vl_test::CaptureMessage;

using vantlib::Composition;
using vl_app::PlyGrid;

class PlyGridTest : public CompositionsFixture {
protected:
    void SetUp() override {
        CompositionsFixture::SetUp();
        material(project, L"Concrete", 2.3, 2400);
        material(project, L"EPS", 0.035, 20);
        material(project, L"Render", 0.87, 1800);
        material(central, L"Oak", 0.13, 500);
        composition(project, L"Wall", Composition::kWall, {{L"Render", 10}, {L"EPS", 160}, {L"Concrete", 200}});
        open();
        click(vl_db::kDbProject, "Wall");
    }

    std::vector<std::wstring> storedMaterials() {
        std::vector<std::wstring> names;
        const auto wall = stored(project, L"Wall");
        for (const auto& ply : wall->plies())
            names.push_back(ply.material()->name().c_str());
        return names;
    }
};

// Picks a material in the materials picker and presses Select.
class PickMaterial : public wxExpectModalBase<vl_app::DlgMaterials, PickMaterial> {
public:
    PickMaterial(vl_db::EDbType type, const wxString& name) : m_type(type), m_name(name) {}

protected:
    int OnInvoked(vl_app::DlgMaterials* dlg) const override {
        dlg->InitDialog();
        EXPECT_EQ(dlg->mode(), vl_db::kModePicker);
        wxListCtrl* target = dlg->list(m_type);
        target->SetItemState(target->FindItem(-1, m_name), wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                             wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
        CompositionsFixture::settle();
        return dlg->material() ? wxID_OK : wxID_CANCEL;
    }

private:
    vl_db::EDbType m_type;
    wxString m_name;
};

TEST_F(PlyGridTest, TypedThicknessIsSavedAndBadInputIsRefusedInTheCell) {
    const auto& model = dialog->browser()->model(vl_db::kDbProject);
    const std::string before = model.row(model.find(stored(project, L"Wall")->id())).depiction;
    typeInCell(1, PlyGrid::kColThickness, "12.5");
    EXPECT_DOUBLE_EQ(stored(project, L"Wall")->ply(1).thickness(), 12.5);
    EXPECT_EQ(grid()->GetCellValue(1, PlyGrid::kColThickness), "12.5");
    EXPECT_NE(model.row(model.find(stored(project, L"Wall")->id())).depiction, before)
        << "the list row's thumbnail follows the edit";
    const wxString thicknessRow = dialog->propertyGrid()->GetPropertyByName("thickness")->GetValueAsString();
    EXPECT_TRUE(thicknessRow.StartsWith("222.5")) << thicknessRow;

    for (const char* bad : {"thick", "-4", "1e9", ""}) {
        typeInCell(1, PlyGrid::kColThickness, bad);
        EXPECT_EQ(grid()->GetCellValue(1, PlyGrid::kColThickness), "12.5") << bad;
        EXPECT_DOUBLE_EQ(stored(project, L"Wall")->ply(1).thickness(), 12.5) << bad;
    }
}

TEST_F(PlyGridTest, ClickingTheMarkOfTwoRowsInTurnMovesTheSingleVariablePly) {
    clickCell(1, PlyGrid::kColVariable);
    EXPECT_EQ(stored(project, L"Wall")->variable_ply(), 1);
    EXPECT_EQ(grid()->GetCellValue(1, PlyGrid::kColVariable), "~");
    clickCell(2, PlyGrid::kColVariable);
    EXPECT_EQ(stored(project, L"Wall")->variable_ply(), 2);
    EXPECT_TRUE(grid()->GetCellValue(1, PlyGrid::kColVariable).empty());
    EXPECT_EQ(grid()->GetCellValue(2, PlyGrid::kColVariable), "~");
    // The preview's text says that the variable ply counts with its minimum.
    EXPECT_TRUE(dialog->FindWindow(XRCID("STAT_PHYSICS"))->GetLabel().Contains("minimum"));
    clickCell(2, PlyGrid::kColVariable);
    EXPECT_FALSE(stored(project, L"Wall")->has_variable_ply());
}

TEST_F(PlyGridTest, DraggingARowLabelMovesThePly) {
    // The grid sends the move before it moves the row; this is what a drop of row 0 below
    // row 2 does.
    wxGridEvent moved(grid()->GetId(), wxEVT_GRID_ROW_MOVE, grid(), 0, -1);
    grid()->GetEventHandler()->ProcessEvent(moved);
    grid()->SetRowPos(0, 2);
    settle();
    EXPECT_EQ(storedMaterials(), (std::vector<std::wstring>{L"EPS", L"Concrete", L"Render"}));
    EXPECT_EQ(grid()->GetCellValue(2, PlyGrid::kColName), "Render");
    EXPECT_EQ(grid()->GetRowPos(2), 2) << "the rows are shown in ply order again";
}

TEST_F(PlyGridTest, AddPlyThroughThePickerInsertsAtTheSelectedRowAndCopiesACentralMaterial) {
    selectPlies({1});
    wxTEST_DIALOG(command("TOOL_PLY_NEW"), PickMaterial(vl_db::kDbProject, "Concrete"));
    EXPECT_EQ(storedMaterials(), (std::vector<std::wstring>{L"Render", L"Concrete", L"EPS", L"Concrete"}));

    selectPlies({});
    wxTEST_DIALOG(command("TOOL_PLY_NEW"), PickMaterial(vl_db::kDbCentral, "Oak"));
    EXPECT_EQ(storedMaterials().back(), L"Oak") << "appended without a selection";
    EXPECT_TRUE(project->get<vantlib::Material>(vantlib::NameKey(L"Oak"))) << "the ply's material is the project's";
    EXPECT_EQ(grid()->GetNumberRows(), 5);
}

TEST_F(PlyGridTest, DuplicateStandsBesideItsSourceAndDeleteSelectsTheRowThatFollows) {
    selectPlies({0, 2});
    command("TOOL_PLY_DUPL");
    EXPECT_EQ(storedMaterials(),
              (std::vector<std::wstring>{L"Render", L"Render", L"EPS", L"Concrete", L"Concrete"}));

    selectPlies({4});
    command("TOOL_PLY_DEL");
    EXPECT_EQ(stored(project, L"Wall")->numPlies(), 4u);
    EXPECT_EQ(grid()->selectedPlies(), wxArrayInt(1, 3)) << "the new last row";
    selectPlies({});
    EXPECT_FALSE(enabled("TOOL_PLY_DEL"));

    selectPlies({0, 1, 2, 3});
    command("TOOL_PLY_DEL");
    EXPECT_EQ(stored(project, L"Wall")->numPlies(), 0u);
    EXPECT_EQ(grid()->GetNumberRows(), 0);
    EXPECT_TRUE(dialog->FindWindow(XRCID("STAT_PHYSICS"))->GetLabel().empty()) << "no values without plies";
}

TEST_F(PlyGridTest, DoubleClickReplacesTheMaterialAndFunctionIsChosen) {
    wxTEST_DIALOG(doubleClickCell(0, PlyGrid::kColName), PickMaterial(vl_db::kDbProject, "Concrete"));
    EXPECT_EQ(storedMaterials().front(), L"Concrete");

    pressCell(2, PlyGrid::kColFunction);
    ASSERT_TRUE(grid()->IsCellEditControlEnabled());
    auto* editor = grid()->GetCellEditor(2, PlyGrid::kColFunction);
    auto* choice = dynamic_cast<wxComboBox*>(editor->GetControl());
    ASSERT_TRUE(choice);
    choice->SetValue(vl_app::materialFunction(vantlib::kFunctionInsulation));
    editor->DecRef();
    grid()->DisableCellEditControl();
    settle();
    EXPECT_EQ(stored(project, L"Wall")->ply(2).function(), vantlib::kFunctionInsulation);
}

TEST_F(PlyGridTest, AMaterialRemovedByAnotherProcessIsReportedAndNothingStoredIsLost) {
    // Another program changes the wall's first ply to concrete and removes the render.
    {
        const auto other = vantlib::Library::open(vl_test::od(path("house.vldwg")));
        auto wall = other->get<vantlib::Composition>(vantlib::NameKey(L"Wall"));
        auto concrete = other->get<vantlib::Material>(vantlib::NameKey(L"Concrete"));
        wall->set_ply(0, vantlib::Ply(concrete, 10, vantlib::kFunctionStructure));
        other->save(wall);
        ASSERT_EQ(other->remove(other->get<vantlib::Material>(vantlib::NameKey(L"Render"))),
                  vantlib::Library::kRemoved);
    }
    // The dialog still shows the render; an edit of the wall must not bring it back half-way.
    wxString message;
    wxTEST_DIALOG(typeInCell(1, PlyGrid::kColThickness, "150"), CaptureMessage(message));
    EXPECT_FALSE(message.empty());
    const auto wall = stored(project, L"Wall");
    ASSERT_EQ(wall->numPlies(), 3u);
    EXPECT_EQ(wall->ply(0).material()->name(), OdString(L"Concrete")) << "the other program's change stays";
    EXPECT_EQ(grid()->GetCellValue(0, PlyGrid::kColName), "Concrete") << "the grid shows what is stored";
}

}  // namespace

}  // namespace vl_compositions_test
