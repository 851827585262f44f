// The unit drop-down of a physical-quantity row in a real property grid.
#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/odcombo.h>
#include <wx/propgrid/props.h>

#include "app/common/PhysicalUnit.h"
#include "app/common/PropertyGridEditors.h"

using namespace vl_app;

TEST(PhysicalUnitEditorInAGrid, ChoosingAnotherUnitConvertsTheShownNumber) {
    wxFrame frame(nullptr, wxID_ANY, "grid", wxDefaultPosition, wxSize(400, 300));
    auto* grid = new wxPropertyGrid(&frame, wxID_ANY, wxDefaultPosition, wxSize(400, 300));
    frame.Show();
    wxPGProperty* density = grid->Append(new wxFloatProperty("Density", "density", 2400.0));
    density->SetAttribute("type", long(kQuantityDensity));
    density->SetAttribute("Units", PhysicalUnit::abbr(PhysicalUnit::kKgPerM3));
    grid->SetPropertyEditor(density, registerPhysicalUnitEditor());
    ASSERT_TRUE(grid->SelectProperty(density, true));

    auto* combo = wxDynamicCast(grid->GetEditorControlSecondary(), wxOwnerDrawnComboBox);
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->GetCount(), 5u);
    EXPECT_EQ(combo->GetValue(), PhysicalUnit::abbr(PhysicalUnit::kKgPerM3));
    // The drop-down takes the right half of the value cell.
    EXPECT_GT(combo->GetPosition().x, grid->GetEditorControl()->GetPosition().x);

    combo->SetSelection(1);
    wxCommandEvent chosen(wxEVT_COMBOBOX, combo->GetId());
    chosen.SetEventObject(combo);
    chosen.SetInt(1);
    combo->GetEventHandler()->ProcessEvent(chosen);

    EXPECT_EQ(density->GetAttribute("Units").GetString(), PhysicalUnit::abbr(PhysicalUnit::kGPerCm3));
    EXPECT_NEAR(density->GetValue().GetDouble(), 2.4, 1e-12);
}
