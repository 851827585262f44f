#include "app/properties/EnumProperty.h"

#include <wx/propgrid/propgrid.h>

#include "app/properties/DlgEnumProperty.h"
#include "app/properties/EnumValues.h"

namespace vl_app {

std::shared_ptr<vl_db::IAbstractDefinition> findDefinition(const vl_db::IPropertySet& set, uint32_t definitionId) {
    for (const auto& definition : set.propertyDefinitions())
        if (definition->id() == definitionId)
            return definition;
    for (const auto& definition : set.valueDefinitions())
        if (definition->id() == definitionId)
            return definition;
    return nullptr;
}

EnumProperty::EnumProperty(const wxString& label, uint32_t definitionId,
                           const std::shared_ptr<vl_db::IPropertySet>& propertySet)
    : wxStringProperty(label, wxPG_LABEL, wxString()), m_propertySet(propertySet), m_definitionId(definitionId) {
    SetAttribute("type", kEnumPaneRow);
    // The text is a summary of the list; only the editor behind the button changes it.
    SetFlag(wxPG_PROP_NOEDITOR);
    SetEditor(wxPGEditor_TextCtrlAndButton);
    refreshText();
}

void EnumProperty::refreshText() {
    wxString text;
    if (m_propertySet) {
        if (const auto definition = findDefinition(*m_propertySet, m_definitionId))
            text = enumRowText(*definition->typeSpecifier());
    }
    SetValue(text);
}

bool EnumProperty::OnEvent(wxPropertyGrid* propertyGrid, wxWindow*, wxEvent& event) {
    if (!propertyGrid || !propertyGrid->IsMainButtonEvent(event) || !m_propertySet)
        return false;
    if (!editEnumeration(propertyGrid, m_propertySet, m_definitionId))
        return false;
    refreshText();
    return true;
}

}  // namespace vl_app
