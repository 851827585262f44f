#pragma once
// The "Enum" row of a definition pane: the definition's enumerated values as one line of text,
// edited only through the row's button, which opens the enumerated values editor.
#include <cstdint>
#include <memory>

#include <wx/propgrid/props.h>

#include <vl_db/PropertySets.h>

namespace vl_app {

// Identifier of the row among the rows of a definition pane (the row's attribute "type").
constexpr int kEnumPaneRow = 6;

class EnumProperty : public wxStringProperty {
public:
    // `definitionId` is a property or value definition of `propertySet`.
    EnumProperty(const wxString& label, uint32_t definitionId, const std::shared_ptr<vl_db::IPropertySet>& propertySet);

    // Opens the editor on the row's button; true when it ran (the grid then shows the row's
    // new text), false for any other event or a definition without an enumerable type.
    bool OnEvent(wxPropertyGrid* propertyGrid, wxWindow* primary, wxEvent& event) override;

    uint32_t definitionId() const { return m_definitionId; }
    // Shows the definition's list as it is stored now.
    void refreshText();

private:
    std::shared_ptr<vl_db::IPropertySet> m_propertySet;
    uint32_t m_definitionId;
};

// The definition of a set by id, property definitions first; null when the set has none.
std::shared_ptr<vl_db::IAbstractDefinition> findDefinition(const vl_db::IPropertySet& set, uint32_t definitionId);

}  // namespace vl_app
