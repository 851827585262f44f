#include "app/common/PropertyGridEditors.h"

#include <memory>

#include <wx/odcombo.h>
#include <wx/xrc/xmlres.h>

#include <CaApp.h>

#include <vl_db/DocumentLibraries.h>

#include "app/common/PhysicalUnit.h"

namespace vl_app {

namespace {
const char* const kPhysicalUnitEditorName = "VLPhysicalUnitEditor";
const char* const kQuantityAttribute = "type";
const char* const kUnitsAttribute = "Units";

std::unique_ptr<PhysicalUnit> quantityOf(int quantity) {
    switch (quantity) {
    case kQuantityDensity: return std::make_unique<Density>();
    case kQuantitySpecificHeat: return std::make_unique<SpecificHeat>();
    case kQuantityThermalConductivity: return std::make_unique<ThermalConductivity>();
    default: return nullptr;
    }
}

int unitComboId() { return wxXmlResource::GetXRCID("wxPG_SUBID2"); }
}  // namespace

wxArrayString physicalUnitSymbols(int quantity) {
    wxArrayString symbols;
    if (const auto value = quantityOf(quantity))
        value->supportedUnits(symbols);
    return symbols;
}

double convertPhysicalValue(int quantity, double value, const wxString& fromSymbol, const wxString& toSymbol) {
    const auto converter = quantityOf(quantity);
    if (!converter)
        return value;
    converter->value(value, PhysicalUnit::unitByAbbr(fromSymbol));
    return converter->value(PhysicalUnit::unitByAbbr(toSymbol));
}

wxIMPLEMENT_DYNAMIC_CLASS(wxPGPhysicalUnitEditor, wxPGTextCtrlEditor);

wxString wxPGPhysicalUnitEditor::GetName() const { return kPhysicalUnitEditorName; }

wxPGWindowList wxPGPhysicalUnitEditor::CreateControls(wxPropertyGrid* grid, wxPGProperty* property,
                                                      const wxPoint& pos, const wxSize& size) const {
    const wxArrayString symbols = physicalUnitSymbols(property->GetAttributeAsLong(kQuantityAttribute, 0));
    const PhysicalUnit::Unit current = PhysicalUnit::unitByAbbr(property->GetAttribute(kUnitsAttribute).GetString());

    // The unit drop-down takes the right half of the cell, the number field the left half.
    const wxSize halfSize(size.x / 2, size.y);
    const wxPoint comboPos(pos.x + size.x - size.x / 2, pos.y);
    auto* combo = new wxOwnerDrawnComboBox(grid->GetPanel(), unitComboId(), PhysicalUnit::abbr(current), comboPos,
                                           halfSize, symbols, wxCB_READONLY);
    const wxPGWindowList number = wxPGTextCtrlEditor::CreateControls(grid, property, pos, halfSize);
    return wxPGWindowList(number.GetPrimary(), combo);
}

bool wxPGPhysicalUnitEditor::OnEvent(wxPropertyGrid* grid, wxPGProperty* property, wxWindow* control,
                                     wxEvent& event) const {
    auto* combo = wxDynamicCast(event.GetEventObject(), wxOwnerDrawnComboBox);
    if (event.GetEventType() != wxEVT_COMBOBOX || !combo || combo->GetId() != unitComboId())
        return wxPGTextCtrlEditor::OnEvent(grid, property, control, event);

    const wxString fromSymbol = property->GetAttribute(kUnitsAttribute).GetString();
    const wxString toSymbol = combo->GetValue();
    if (toSymbol == fromSymbol)
        return false;
    // The quantity stays the same: the number follows the unit.
    const double shown = property->GetValue().GetDouble();
    const double converted =
        convertPhysicalValue(property->GetAttributeAsLong(kQuantityAttribute, 0), shown, fromSymbol, toSymbol);
    property->SetAttribute(kUnitsAttribute, toSymbol);
    property->SetValueInEvent(wxVariant(converted));
    return true;
}

wxPGEditor* registerPhysicalUnitEditor() {
    static wxPGEditor* editor = wxPropertyGrid::RegisterEditorClass(new wxPGPhysicalUnitEditor(), kPhysicalUnitEditorName);
    return editor;
}

wxIMPLEMENT_DYNAMIC_CLASS(MaterialStringProperty, wxPGProperty);

MaterialStringProperty::MaterialStringProperty(const wxString& label, const wxString& name, const wxString& value)
    : wxPGProperty(label, name) {
    SetValue(value);
}

wxString MaterialStringProperty::ValueToString(wxVariant& value, int) const { return value.GetString(); }

bool MaterialStringProperty::StringToValue(wxVariant& variant, const wxString& text, int) const {
    if (variant.GetType() == wxPG_VARIANT_TYPE_STRING && variant.GetString() == text)
        return false;
    variant = text;
    return true;
}

const wxPGEditor* MaterialStringProperty::DoGetEditorClass() const { return wxPGEditor_TextCtrlAndButton; }

bool MaterialStringProperty::OnEvent(wxPropertyGrid* grid, wxWindow*, wxEvent& event) {
    if (!grid->IsMainButtonEvent(event))
        return false;
    const wxString uncommitted = grid->GetUncommittedPropertyValue().GetString();
    wxString text;
    wxPropertyGrid::ExpandEscapeSequences(text, uncommitted);
    if (!OnButtonClick(grid, text))
        return false;
    wxString escaped;
    wxPropertyGrid::CreateEscapeSequences(escaped, text);
    if (escaped.IsSameAs(uncommitted))
        return false;
    SetValueInEvent(escaped);
    return true;
}

bool MaterialStringProperty::OnButtonClick(wxPropertyGrid* grid, wxString& text) {
    const MaterialPicker& picker = materialPicker();
    if (!picker)
        return false;
    wxString picked;
    if (picker(grid, vl_db::docLibs(ca::curDb()), picked))
        text = picked;
    return true;
}

namespace {
MaterialStringProperty::MaterialPicker& pickerSlot() {
    static MaterialStringProperty::MaterialPicker picker;
    return picker;
}
}  // namespace

void MaterialStringProperty::setMaterialPicker(MaterialPicker picker) { pickerSlot() = std::move(picker); }

const MaterialStringProperty::MaterialPicker& MaterialStringProperty::materialPicker() { return pickerSlot(); }

}  // namespace vl_app
