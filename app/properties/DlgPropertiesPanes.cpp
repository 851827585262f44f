// The panes of the property sets editor: the rows of the selected namespace, set or definition
// and what an edit of each row does to the library.
#include <wx/choice.h>
#include <wx/log.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/props.h>
#include <wx/textdlg.h>
#include <wx/treectrl.h>

#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include "app/properties/DlgProperties.h"
#include "app/properties/EnumProperty.h"
#include "app/properties/Measures.h"

namespace vl_app {

namespace {

const char* const kRowAttribute = "type";

int rowOf(wxPGProperty* property) { return static_cast<int>(property->GetAttributeAsLong(kRowAttribute, -1)); }

wxPGProperty* typeRow(const vl_db::AbstractTypeSpecifier& specifier) {
    const wxString label = paneRowLabel(kRowType);
    if (!vl_db::isEditableType(specifier))
        return new wxStringProperty(label, wxPG_LABEL, _("Extended type"));
    wxPGChoices choices;
    choices.Add(_("Boolean"), vl_db::kBooleanCode);
    choices.Add(_("Integer"), vl_db::kIntegerCode);
    choices.Add(_("Real"), vl_db::kRealCode);
    choices.Add(_("String"), vl_db::kStringCode);
    return new wxEnumProperty(label, wxPG_LABEL, choices, specifier.primitiveCode());
}

wxPGProperty* measureRow(const OdString& key) {
    wxPGChoices choices;
    for (int measure = 0; measure < kMeasureCount; ++measure)
        choices.Add(measureLabel(measure), measure);
    return new wxEnumProperty(paneRowLabel(kRowMeasure), wxPG_LABEL, choices, getMeasure(key));
}

OdString formulaOf(const vl_db::AbstractTypeSpecifier& specifier) {
    const auto* formula = dynamic_cast<const vl_db::FormulaTypeSpecifier<OdString>*>(&specifier);
    return formula ? formula->formula() : OdString();
}

void logUnhandledRow(const char* function, int row) {
    wxLogError("vl_dlg_properties: %s: %s", function, wxString::Format(_("Unhandled property type (%d)"), row));
}

}  // namespace

wxPGProperty* DlgProperties::appendRow(PaneRow row, wxPGProperty* property, bool ownerEditable) {
    property->SetAttribute(kRowAttribute, static_cast<long>(row));
    m_grid->Append(property);
    if (!isRowEditable(row, ownerEditable && !m_libraryGone) && !(row == kRowVisible && m_libraryGone)) {
        m_grid->EnableProperty(property, false);
        if (row == kRowId)
            m_grid->setPropertyReadOnly(property, true);
    }
    if (row == kRowVisible && m_libraryGone)
        m_grid->EnableProperty(property, false);
    return property;
}

wxPGProperty* DlgProperties::paneRow(PaneRow row) const {
    if (!m_grid)
        return nullptr;
    for (wxPropertyGridIterator it = m_grid->GetIterator(); !it.AtEnd(); ++it)
        if (rowOf(*it) == row)
            return *it;
    return nullptr;
}

void DlgProperties::editRow(PaneRow row, const wxVariant& value) {
    if (wxPGProperty* property = paneRow(row))
        m_grid->ChangePropertyValue(property, value);
}

void DlgProperties::rebuildPaneLater() {
    CallAfter([this] { guarded([this] { onNamespaceTreeSelChanged(); }); });
}

void DlgProperties::onNamespaceSelected(unsigned) {
    const bool editable = isCurrentNamespaceEditable();
    appendRow(kRowId, new wxStringProperty(paneRowLabel(kRowId), wxPG_LABEL, toWx(m_namespace->name())), editable);
    appendRow(kRowLabel, new wxStringProperty(paneRowLabel(kRowLabel), wxPG_LABEL, toWx(m_namespace->displayLabel())),
              editable);
}

void DlgProperties::onPropertySetSelected(unsigned) {
    const auto set = selectedPropertySet();
    if (!set)
        return;
    const bool editable = set->isEditable();
    appendRow(kRowId, new wxStringProperty(paneRowLabel(kRowId), wxPG_LABEL, toWx(set->name())), editable);
    appendRow(kRowLabel, new wxStringProperty(paneRowLabel(kRowLabel), wxPG_LABEL, toWx(set->label())), editable);
    appendRow(kRowPerInstance, new wxBoolProperty(paneRowLabel(kRowPerInstance), wxPG_LABEL, set->isPerInstance()),
              editable);
    appendRow(kRowVisible, new wxBoolProperty(paneRowLabel(kRowVisible), wxPG_LABEL, set->isVisible()), editable);
}

void DlgProperties::appendDefinitionRows(const vl_db::IAbstractDefinition& definition,
                                         const std::shared_ptr<vl_db::IPropertySet>& set, bool valueDefinition) {
    const bool editable = set->isEditable();
    const auto specifier = definition.typeSpecifier();
    for (PaneRow row : paneRows(definition.objectType(), specifier.get())) {
        const wxString label = paneRowLabel(row);
        switch (row) {
        case kRowId: appendRow(row, new wxStringProperty(label, wxPG_LABEL, toWx(definition.name())), editable); break;
        case kRowLabel: appendRow(row, new wxStringProperty(label, wxPG_LABEL, toWx(definition.label())), editable); break;
        case kRowDescription:
            appendRow(row, new wxLongStringProperty(label, wxPG_LABEL, toWx(definition.description())), editable);
            break;
        case kRowType: appendRow(row, typeRow(*specifier), editable && vl_db::isEditableType(*specifier)); break;
        case kRowEnum: appendRow(row, new EnumProperty(label, definition.id(), set), editable); break;
        case kRowMeasure:
            if (valueDefinition)
                appendRow(row, measureRow(static_cast<const vl_db::IValueDefinition&>(definition).measure()), editable);
            break;
        case kRowFormula: appendRow(row, new wxStringProperty(label, wxPG_LABEL, toWx(formulaOf(*specifier))), editable); break;
        default: break;
        }
    }
}

void DlgProperties::onPropertyDefinitionSelected(unsigned) {
    const auto set = selectedPropertySet();
    const auto definition = definitionOfItem(m_tree->GetSelection());
    if (set && definition)
        appendDefinitionRows(*definition, set, false);
}

void DlgProperties::onValueDefinitionSelected(unsigned) {
    const auto set = selectedPropertySet();
    const auto definition = definitionOfItem(m_tree->GetSelection());
    if (set && definition)
        appendDefinitionRows(*definition, set, true);
}

// ---- edits

void DlgProperties::onPropChanged(wxPropertyGridEvent& event) {
    wxPGProperty* property = event.GetProperty();
    if (!property || !libraryUsable())
        return;
    bool accepted = false;
    try {
        switch (m_currentType) {
        case vl_db::kNamespaceObject: accepted = onNamespacePropChanged(property); break;
        case vl_db::kPropertySetObject: accepted = onPropertySetPropChanged(property); break;
        case vl_db::kPropertyDefinitionObject:
        case vl_db::kValueDefinitionObject: accepted = onDefinitionPropChanged(property); break;
        }
    } catch (const std::exception& error) {
        libraryFailed(error);
        accepted = false;
    }
    if (!accepted)
        rebuildPaneLater();
}

bool DlgProperties::isValidName(vl_db::ObjectTypeWrapper type, const wxString& name) const {
    if (name.empty() || !m_library || !m_namespace)
        return false;
    // The object being renamed may keep its own name in another letter case.
    return isNameFree(type, *m_namespace, name, type == m_currentType ? m_currentId : 0);
}

wxString DlgProperties::askValidName(vl_db::ObjectTypeWrapper type, wxString name, const wxString& message) {
    while (!isValidName(type, name)) {
        wxTextEntryDialog entry(this, wxString::Format(message, name), _("Invalid name"), name);
        if (entry.ShowModal() != wxID_OK)
            return wxString();
        name = entry.GetValue().Strip(wxString::both);
    }
    return name;
}

bool DlgProperties::onNamespacePropChanged(wxPGProperty* property) {
    if (!m_namespace || !isCurrentNamespaceEditable())
        return false;
    const int row = rowOf(property);
    if (row != kRowLabel)
        return false;
    wxString label = property->GetValueAsString();
    if (label.empty())
        label = toWx(m_namespace->name());
    m_namespace->setDisplayLabel(toOd(label));
    property->SetValueFromString(label);
    m_tree->SetItemText(m_tree->GetRootItem(), label);
    const int entry = m_choiceNamespace->GetSelection();
    if (entry != wxNOT_FOUND)
        m_choiceNamespace->SetString(entry, label);
    m_structureChanged = true;
    return true;
}

bool DlgProperties::onPropertySetPropChanged(wxPGProperty* property) {
    const auto set = selectedPropertySet();
    if (!set)
        return false;
    const int row = rowOf(property);
    if (row != kRowVisible && !set->isEditable())
        return false;
    switch (row) {
    case kRowId: {
        wxString name = property->GetValueAsString().Strip(wxString::both);
        if (name.empty())
            name = _("New PropertySet");
        name = askValidName(vl_db::kPropertySetObject, name,
                            _("A property set with this this id already exists: '%ls'.\nPlease enter a valid name."));
        if (name.empty())
            return false;
        set->setName(toOd(name));
        property->SetValueFromString(name);
        m_tree->SetItemText(selectedPropertySetTreeItem(), treeLabel(set->label(), set->name()));
        break;
    }
    case kRowLabel: {
        wxString label = property->GetValueAsString();
        if (label.empty())
            label = toWx(set->name());
        set->setLabel(toOd(label));
        property->SetValueFromString(label);
        m_tree->SetItemText(selectedPropertySetTreeItem(), label);
        break;
    }
    case kRowVisible: set->setVisible(property->GetValue().GetBool()); break;
    case kRowPerInstance: set->setPerInstance(property->GetValue().GetBool()); break;
    default: logUnhandledRow("vl_app::DlgProperties::onPropertySetPropChanged", row); return false;
    }
    m_structureChanged = true;
    return true;
}

bool DlgProperties::onDefinitionPropChanged(wxPGProperty* property) {
    const auto set = selectedPropertySet();
    const auto definition = definitionOfItem(m_tree->GetSelection());
    if (!set || !definition || !set->isEditable())
        return false;
    const int row = rowOf(property);
    switch (row) {
    case kRowId: {
        wxString name = property->GetValueAsString().Strip(wxString::both);
        if (name.empty())
            name = _("New Property");
        name = askValidName(m_currentType, name,
                            _("A property definition with this this id already exists: '%ls'.\nPlease enter a valid name."));
        if (name.empty())
            return false;
        definition->setName(toOd(name));
        property->SetValueFromString(name);
        m_tree->SetItemText(m_tree->GetSelection(), treeLabel(definition->label(), definition->name()));
        m_structureChanged = true;
        return true;
    }
    case kRowLabel: {
        wxString label = property->GetValueAsString();
        if (label.empty())
            label = toWx(definition->name());
        definition->setLabel(toOd(label));
        property->SetValueFromString(label);
        m_tree->SetItemText(m_tree->GetSelection(), label);
        m_structureChanged = true;
        return true;
    }
    case kRowDescription: definition->setDescription(toOd(property->GetValueAsString())); return true;
    case kRowType: {
        const int code = static_cast<int>(property->GetValue().GetLong());
        const auto specifier = definition->typeSpecifier();
        if (code == specifier->primitiveCode())
            return true;
        if (hasEnumValues(*specifier)) {
            wxMessageDialog question(this,
                                     _("Non-empty Enum list prevents changing the property type.\nDo you want to clear "
                                       "this list to proceed?"),
                                     _("Warning"), wxYES_NO | wxNO_DEFAULT | wxICON_WARNING);
            if (question.ShowModal() != wxID_YES)
                return false;
        }
        definition->setTypeSpecifier(*plainSpecifier(code));
        m_structureChanged = true;
        // The Enum, Measure and Formula rows depend on the type.
        rebuildPaneLater();
        return true;
    }
    case kRowEnum: return true;
    case kRowMeasure: {
        auto* value = dynamic_cast<vl_db::IValueDefinition*>(definition.get());
        if (!value)
            return false;
        value->setMeasure(measureKey(static_cast<int>(property->GetValue().GetLong())));
        return true;
    }
    case kRowFormula: {
        const OdString formula = toOd(property->GetValueAsString());
        if (formula.isEmpty())
            definition->setTypeSpecifier(vl_db::TypeSpecifier<OdString>(vl_db::kStringCode));
        else
            definition->setTypeSpecifier(vl_db::FormulaTypeSpecifier<OdString>(formula));
        return true;
    }
    default: logUnhandledRow("vl_app::DlgProperties::onDefinitionPropChanged", row); return false;
    }
}

}  // namespace vl_app
