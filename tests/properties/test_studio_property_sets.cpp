// The studio's side of the property sets editor: its categories with their IFC types, the
// visibility dialog and the structure configuration.
#include <set>

#include <gtest/gtest.h>

#include "PropertiesFixture.h"
#include "VisibilityDialog.h"

#include <wx/propgrid/property.h>

namespace vl_props_test {

// Hides a set in the studio's visibility dialog and confirms it.
class HideSet : public wxExpectModalBase<VisibilityDialog, HideSet> {
public:
    HideSet(const wxString& ns, const wxString& set) : m_ns(ns), m_set(set) {}

protected:
    int OnInvoked(VisibilityDialog* dialog) const override {
        dialog->setChecked(dialog->findItem(m_ns, m_set), false);
        dialog->apply();
        return wxID_OK;
    }

private:
    wxString m_ns;
    wxString m_set;
};

using vl_app::PropertyDomain;

TEST(StudioCategories, BuildingElementsAndServicesInOrder) {
    StudioPropertySets host;
    const auto bim = host.categories(PropertyDomain::Bim);
    std::vector<wxString> names;
    for (const auto& category : bim)
        names.push_back(category.name);
    EXPECT_EQ(names, (std::vector<wxString>{"Walls", "Curtain walls", "Slabs", "Roofs", "Beams", "Columns", "Members",
                                            "Plates", "Doors", "Windows", "Stairs", "Railings", "Coverings",
                                            "Spaces and zones"}));
    const auto getter = host.ifcTypeGetter(PropertyDomain::Bim);
    std::set<wxString> ifcTypes;
    for (const auto& category : bim)
        for (const auto& type : category.types) {
            const wxString ifc = getter(type);
            EXPECT_TRUE(ifc.StartsWith("Ifc")) << type.key;
            ifcTypes.insert(ifc);
        }
    EXPECT_EQ(ifcTypes.size(), 17u);
    EXPECT_EQ(getter(bim.back().types.back()), "IfcZone");
    EXPECT_EQ(ifcTypeOfEntity("Unknown"), "");

    const auto services = host.categories(PropertyDomain::Mechanical);
    ASSERT_FALSE(services.empty());
    EXPECT_EQ(services.front().name, "Ducts");
    for (const auto& category : services)
        for (const auto& type : category.types)
            EXPECT_NE(getter(type), "IfcWall");
}

class StudioVisibility : public PropertiesFixture {};

TEST_F(StudioVisibility, NamespaceBoxStandsForItsSetsAndOkWritesThem) {
    auto library = vl_db::propertySetLibrary(central);
    VisibilityDialog visibility(nullptr, library);
    wxTreeListCtrl* tree = visibility.tree();
    const wxTreeListItem office = visibility.findItem("Office");
    ASSERT_TRUE(office.IsOk());
    EXPECT_EQ(tree->GetCheckedState(office), wxCHK_CHECKED);
    visibility.setChecked(visibility.findItem("Office", "Doors"), false);
    EXPECT_EQ(tree->GetCheckedState(office), wxCHK_UNDETERMINED);
    visibility.setChecked(visibility.findItem("Other"), false);
    EXPECT_EQ(tree->GetCheckedState(visibility.findItem("Other", "Elsewhere")), wxCHK_UNCHECKED);
    EXPECT_EQ(visibility.apply(), 2u);
    EXPECT_EQ(visibility.apply(), 0u);
    library->commit();
    EXPECT_FALSE(storedSet(L"Office", L"Doors")->isVisible());
    EXPECT_TRUE(storedSet(L"Office", L"PSet_A")->isVisible());
    EXPECT_FALSE(storedSet(L"Other", L"Elsewhere")->isVisible());
}

TEST_F(StudioVisibility, TheEditorsVisibilityButtonEditsItsSession) {
    open();
    select("PSet_A");
    // The host's dialog runs inside the editor; Cancel of the editor drops its changes too.
    wxTEST_DIALOG(press("BTN_ATTR_SET_VIS"), HideSet("Office", "PSet_A"));
    EXPECT_FALSE(dialog->paneRow(vl_app::kRowVisible)->GetValue().GetBool());
    press("wxID_CANCEL");
    EXPECT_TRUE(storedSet(L"Office", L"PSet_A")->isVisible());
}

TEST_F(StudioVisibility, StructureListsTheVisibleSetsByIfcType) {
    StructureConfiguration structure;
    structure.update(db.get());
    EXPECT_EQ(structure.propertySets("IfcWall"), (std::vector<wxString>{"PSet_A"}));
    EXPECT_TRUE(structure.propertySets("IfcDoor").empty());
    structure.update(nullptr);
    EXPECT_TRUE(structure.propertySets("IfcWall").empty());
    EXPECT_EQ(structure.updates(), 2u);
}

}  // namespace vl_props_test
