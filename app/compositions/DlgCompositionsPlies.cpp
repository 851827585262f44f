// The ply commands and the property grid of the compositions dialog: adding, duplicating and
// removing plies, picking a ply's material, and description, layer, comments, tags, thickness,
// building-physics values and custom values of the current composition.
#include <wx/panel.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/props.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include <vantlib/BuildUpPhysics.h>
#include <vantlib/Layer.h>

#include "app/common/ErrorMessages.h"
#include "app/common/PropertyLabels.h"
#include "app/common/Tags.h"
#include "app/compositions/CompositionPhysicsText.h"
#include "app/compositions/DlgCompositions.h"
#include "app/materials/DlgCustomProperties.h"
#include "app/materials/DlgMaterials.h"

namespace vl_app {

namespace {
const char* const kTypeAttribute = "type";
// Custom value rows are named by this prefix and the property's name.
const wxString kCustomPrefix = "custom:";

wxPGProperty* typed(wxPGProperty* property, EPropType type) {
    property->SetAttribute(kTypeAttribute, long(type));
    return property;
}

wxPGProperty* readOnlyRow(const wxString& label, const wxString& name, const wxString& value) {
    wxPGProperty* row = new wxStringProperty(label, name, value);
    row->ChangeFlag(wxPG_PROP_READONLY, true);
    return row;
}

QcSmartPtr<vantlib::CustomProperty> customPropertyOf(const vantlib::Composition& composition,
                                                     const wxPGProperty* row) {
    if (!row || !row->GetName().StartsWith(kCustomPrefix))
        return QcSmartPtr<vantlib::CustomProperty>();
    const wxString name = row->GetName().Mid(kCustomPrefix.length());
    for (const vantlib::CustomValue& value : composition.custom_values())
        if (toWx(value.property->name()).IsSameAs(name, false))
            return value.property;
    return QcSmartPtr<vantlib::CustomProperty>();
}
}  // namespace

void DlgCompositions::createPropertyGrid() {
    wxWindow* placeholder = FindWindow(XRCID("PANEL_PROPGRID"));
    wxWindow* parent = placeholder->GetParent();
    m_grid = new wxg::QcPropertyGrid(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     wxPG_DEFAULT_STYLE | wxPG_SPLITTER_AUTO_CENTER | wxPG_BOLD_MODIFIED);
    wxSizer* sizer = placeholder->GetContainingSizer();
    sizer->Replace(placeholder, m_grid, true);
    placeholder->Destroy();
    // The building-physics values are written under the preview, across the panel so that
    // the name and type fields keep their width.
    wxWindow* panel = FindWindow(XRCID("PANEL_CMP"));
    panel->GetSizer()->Insert(1, new wxStaticText(panel, XRCID("STAT_PHYSICS"), wxString()),
                              wxSizerFlags().Border(wxLEFT | wxBOTTOM, 4));
    parent->Layout();
}

void DlgCompositions::updateStructure() {
    if (m_plies)
        m_plies->setComposition(m_composition, unit(), m_composition && vl_db::writable(m_libs, m_dbType));
}

void DlgCompositions::updateProps() {
    if (!m_grid)
        return;
    const bool wasUpdating = m_updating;
    m_updating = true;
    m_grid->Freeze();
    m_grid->Clear();
    if (m_composition) {
        m_grid->Append(typed(new wxStringProperty(label(kPropCompositionDescription), "description",
                                                  toWx(m_composition->description())),
                             kPropCompositionDescription));
        const wxString layer = m_composition->layer() ? toWx(m_composition->layer()->name()) : wxString();
        m_grid->Append(typed(new wxStringProperty(label(kPropCompositionLayer), "layer", layer), kPropCompositionLayer));
        m_grid->Append(typed(new wxLongStringProperty(label(kPropCompositionComments), "comments",
                                                      toWx(m_composition->comments())),
                             kPropCompositionComments));
        m_grid->Append(typed(new wxArrayStringProperty(label(kPropCompositionTags), "tags",
                                                       arrStr(m_composition->tags())),
                             kPropCompositionTags));
        m_grid->Append(readOnlyRow(label(kPropCompositionThickness).Trim(), "thickness",
                                   CmpThickness(m_composition, unit()).format()));
        updatePhysicsProps();
        updateCustomProps();
    }
    m_grid->Thaw();
    m_updating = wasUpdating;
    if (auto* physics = FindWindow(XRCID("STAT_PHYSICS"))) {
        physics->SetLabel(m_composition ? physicsSummary(*m_composition, unit()) : wxString());
        physics->GetParent()->Layout();
    }
}

void DlgCompositions::updatePhysicsProps() {
    const vantlib::BuildUpPhysics values = vantlib::buildUpPhysics(*m_composition, unit());
    const PhysicsTexts texts = physicsTexts(*m_composition, values, oddbIsImperialUnit(unit()));
    if (values.plies == 0)
        return;
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("Building physics"), "physics"));
    if (!texts.resistance.empty())
        m_grid->AppendIn(category, readOnlyRow(_("Thermal resistance R"), "resistance", texts.resistance));
    if (!texts.transmittance.empty())
        m_grid->AppendIn(category, readOnlyRow(_("Thermal transmittance U"), "transmittance", texts.transmittance));
    if (!texts.massPerArea.empty())
        m_grid->AppendIn(category, readOnlyRow(_("Mass per area"), "mass", texts.massPerArea));
    for (size_t index = 0; index < texts.notes.size(); ++index)
        m_grid->AppendIn(category, readOnlyRow(_("Note"), wxString::Format("note%zu", index), texts.notes[index]));
}

void DlgCompositions::updateCustomProps() {
    const vantlib::CustomValues& values = m_composition->custom_values();
    if (values.empty())
        return;
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("Custom"), "custom"));
    for (const vantlib::CustomValue& value : values) {
        const wxString name = toWx(value.property->name());
        m_grid->AppendIn(category, typed(new wxStringProperty(name, kCustomPrefix + name, toWx(value.value)),
                                         EPropType(kPropReserved)));
    }
}

QcSmartPtr<vantlib::CustomProperty> DlgCompositions::selectedCustomProperty() const {
    if (!m_composition || !m_grid)
        return QcSmartPtr<vantlib::CustomProperty>();
    return customPropertyOf(*m_composition, m_grid->GetSelection());
}

void DlgCompositions::onPropChanged(wxPropertyGridEvent& event) {
    wxPGProperty* row = event.GetProperty();
    if (m_updating || !row || !m_composition || !vl_db::writable(m_libs, m_dbType))
        return;
    const auto type = EPropType(row->GetAttributeAsLong(kTypeAttribute, -1));
    const wxVariant value = row->GetValue();
    changeComposition([&](vantlib::Composition& composition) {
        switch (type) {
        case kPropCompositionDescription: composition.set_description(toOd(value.GetString())); break;
        case kPropCompositionComments: composition.set_comments(toOd(value.GetString())); break;
        case kPropCompositionTags: setTags(m_composition, value.GetArrayString()); break;
        case kPropCompositionLayer: {
            const wxString name = value.GetString();
            composition.set_layer(name.empty() ? QcSmartPtr<vantlib::Layer>() : vantlib::Layer::create(toOd(name)));
            break;
        }
        case kPropReserved:
            if (const auto property = customPropertyOf(composition, row))
                composition.set_custom_value(property, toOd(value.GetString()));
            break;
        default: wxFAIL_MSG(wxString::Format("Unhandled property type (%d)", int(type))); break;
        }
    });
}

void DlgCompositions::onCustomProps(wxCommandEvent&) {
    if (!m_composition || !vl_db::writable(m_libs, m_dbType))
        return;
    saveComposition();
    try {
        DlgCustomProperties dialog(this, m_libs, m_dbType, vantlib::kComposition, vl_db::kModePicker);
        if (dialog.ShowModal() != wxID_OK)
            return;
        const auto property = dialog.selected();
        if (!property)
            return;
        if (!property->appliesTo(vantlib::kComposition)) {
            showMessage(this, _("That custom property is for materials only."), wxICON_WARNING);
            return;
        }
        if (!m_composition->has_custom_value(property))
            changeComposition([&](vantlib::Composition& composition) {
                composition.set_custom_value(property, OdString());
            });
    } catch (const std::exception& error) {
        reportError(error);
    }
    updateProps();
}

void DlgCompositions::onDelCustomPropValue(wxCommandEvent&) {
    const auto property = selectedCustomProperty();
    if (!property)
        return;
    changeComposition([&](vantlib::Composition& composition) { composition.clear_custom_value(property); });
    CallAfter([this] { updateProps(); });
}

void DlgCompositions::onAddPly(wxCommandEvent&) {
    if (!m_composition || !m_plies || !vl_db::writable(m_libs, m_dbType))
        return;
    if (const QcSmartPtr<vantlib::Material> material = pickMaterial(QcSmartPtr<vantlib::Material>()))
        m_plies->addPly(material);
}

void DlgCompositions::onRemovePly(wxCommandEvent&) {
    if (m_plies && vl_db::writable(m_libs, m_dbType))
        m_plies->removeSelectedPlies();
}

void DlgCompositions::onDuplicatePly(wxCommandEvent&) {
    if (m_plies && vl_db::writable(m_libs, m_dbType))
        m_plies->duplicateSelectedPlies();
}

QcSmartPtr<vantlib::Material> DlgCompositions::pickMaterial(const QcSmartPtr<vantlib::Material>& current) {
    const auto library = lib();
    if (!vl_db::writable(library))
        return QcSmartPtr<vantlib::Material>();
    saveComposition();
    try {
        DlgMaterials dialog(this, m_libs, vl_db::kModePicker, m_dbType, current ? current->id() : 0);
        if (dialog.ShowModal() != wxID_OK || !dialog.material())
            return QcSmartPtr<vantlib::Material>();
        if (dialog.dbType() == m_dbType)
            return dialog.material();
        // A ply refers to a material of its own library: one from the other library is copied
        // first (a clash of names goes to the library reactor's question).
        return library->save(dialog.material());
    } catch (const std::exception& error) {
        reportError(error);
        return QcSmartPtr<vantlib::Material>();
    }
}

void DlgCompositions::pliesChanged() {
    try {
        if (m_status == kValid && vl_db::writable(m_libs, m_dbType))
            m_composition->save();
    } catch (const std::exception& error) {
        reportError(error);
        // The grid shows what is stored once its own event is over.
        const auto library = lib();
        if (library && m_composition && m_composition->id() != 0)
            if (auto stored = library->get<vantlib::Composition>(m_composition->id()))
                m_composition = stored;
        CallAfter([this] { updateStructure(); });
    }
    updatePreview();
    updateProps();
}

}  // namespace vl_app
