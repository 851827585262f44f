#pragma once
// Property-grid pieces of the materials dialog: a number field with a unit drop-down that
// converts the shown number when the unit changes, and a text property whose button picks a
// material.
#include <functional>

#include <wx/propgrid/editors.h>
#include <wx/propgrid/property.h>
#include <wx/propgrid/propgrid.h>

namespace vl_db {
class DocumentLibraries;
}

namespace vl_app {

// Values of the "type" attribute of a physical-unit property: which quantity it holds.
enum EPhysicalQuantity : int {
    kQuantityDensity = 20,
    kQuantitySpecificHeat = 21,
    kQuantityThermalConductivity = 22,
};

// Editor of a numeric property with the attributes "type" (EPhysicalQuantity) and "Units"
// (symbol of the unit the value is shown in). Register it once per process with
// registerPhysicalUnitEditor() before setting it on a property.
class wxPGPhysicalUnitEditor : public wxPGTextCtrlEditor {
    wxDECLARE_DYNAMIC_CLASS(wxPGPhysicalUnitEditor);

public:
    wxPGPhysicalUnitEditor() = default;
    wxString GetName() const override;
    wxPGWindowList CreateControls(wxPropertyGrid* grid, wxPGProperty* property, const wxPoint& pos,
                                  const wxSize& size) const override;
    bool OnEvent(wxPropertyGrid* grid, wxPGProperty* property, wxWindow* control, wxEvent& event) const override;
};

// Registers the editor under "VLPhysicalUnitEditor" (once) and returns it.
wxPGEditor* registerPhysicalUnitEditor();

// The value shown after switching a physical-unit property from the unit symbol `fromSymbol`
// to `toSymbol`; the same quantity in the new unit.
double convertPhysicalValue(int quantity, double value, const wxString& fromSymbol, const wxString& toSymbol);
// Symbols of the units of a quantity (empty for an unknown quantity).
wxArrayString physicalUnitSymbols(int quantity);

// Text property with a button that lets the user pick a material by name.
class MaterialStringProperty : public wxPGProperty {
    wxDECLARE_DYNAMIC_CLASS(MaterialStringProperty);

public:
    // Opens the materials dialog on a drawing's libraries and returns the name of the material
    // selected when it closed; false when nothing was selected.
    using MaterialPicker = std::function<bool(wxWindow* parent, vl_db::DocumentLibraries* libs, wxString& name)>;

    MaterialStringProperty(const wxString& label = wxPG_LABEL, const wxString& name = wxPG_LABEL,
                           const wxString& value = wxString());

    wxString ValueToString(wxVariant& value, int argFlags = 0) const override;
    bool StringToValue(wxVariant& variant, const wxString& text, int argFlags = 0) const override;
    const wxPGEditor* DoGetEditorClass() const override;
    bool OnEvent(wxPropertyGrid* grid, wxWindow* primary, wxEvent& event) override;

    // Opens the picker on the active drawing's libraries; `text` becomes the picked name.
    virtual bool OnButtonClick(wxPropertyGrid* grid, wxString& text);

    // The materials dialog installs its picker here when the module starts.
    static void setMaterialPicker(MaterialPicker picker);
    static const MaterialPicker& materialPicker();
};

}  // namespace vl_app
