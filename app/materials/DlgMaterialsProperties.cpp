// Properties page of the materials dialog: a property grid of tags, comments, information,
// physical values, the BIM asset and custom values. Each row carries its kind in the "type"
// attribute, which decides how a change is written back.
#include <memory>

#include <wx/msgdlg.h>
#include <wx/panel.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/props.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include "app/common/ErrorMessages.h"
#include "app/common/Distances.h"
#include "app/common/Helpers.h"
#include "app/common/PhysicalUnit.h"
#include "app/common/PropertyGridEditors.h"
#include "app/common/PropertyLabels.h"
#include "app/common/Tags.h"
#include "app/materials/DlgCustomProperties.h"
#include "app/materials/DlgMaterials.h"

namespace vl_app {

namespace {
const char* const kTypeAttribute = "type";
const char* const kUnitsAttribute = "Units";
// Custom value rows are named by this prefix and the property's name.
const wxString kCustomPrefix = "custom:";

std::unique_ptr<PhysicalUnit> quantity(EPropType type) {
    switch (type) {
    case kPropDensity: return std::make_unique<Density>();
    case kPropSpecificHeat: return std::make_unique<SpecificHeat>();
    case kPropThermalConductivity: return std::make_unique<ThermalConductivity>();
    default: return nullptr;
    }
}

// The unit a stored identifier names; kNone when it names none.
PhysicalUnit::Unit unitOfId(const OdString& id) {
    for (unsigned unit = PhysicalUnit::kKgPerM3; unit <= PhysicalUnit::kBtuPerLbsF; ++unit)
        if (PhysicalUnit::unitId(PhysicalUnit::Unit(unit)) == toWx(id))
            return PhysicalUnit::Unit(unit);
    return PhysicalUnit::kNone;
}

wxPGProperty* typed(wxPGProperty* property, EPropType type) {
    property->SetAttribute(kTypeAttribute, long(type));
    return property;
}

wxPGProperty* textRow(EPropType type, const OdString& value) {
    return typed(new wxStringProperty(label(type), wxString::Format("prop%u", unsigned(type)), toWx(value)), type);
}

wxPGProperty* boolRow(EPropType type, bool value) {
    wxPGProperty* row = typed(new wxBoolProperty(label(type), wxString::Format("prop%u", unsigned(type)), value), type);
    row->SetAttribute(wxPG_BOOL_USE_CHECKBOX, true);
    return row;
}
}  // namespace

void DlgMaterials::createPropertyGrid() {
    wxWindow* placeholder = FindWindow(XRCID("PANEL_PROPGRID"));
    m_grid = new wxg::QcPropertyGrid(placeholder->GetParent(), wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     wxPG_DEFAULT_STYLE | wxPG_SPLITTER_AUTO_CENTER | wxPG_BOLD_MODIFIED);
    wxWindow* page = placeholder->GetParent();
    page->GetSizer()->Replace(placeholder, m_grid, true);
    placeholder->Destroy();
    page->Layout();
    registerPhysicalUnitEditor();
}

void DlgMaterials::updateProps() {
    m_grid->Freeze();
    m_grid->Clear();
    if (m_material) {
        m_grid->Append(typed(new wxArrayStringProperty(label(kPropTags), "tags", arrStr(m_material->tags())), kPropTags));
        m_grid->Append(typed(new wxLongStringProperty(label(kPropComments), "comments", toWx(m_material->comments())),
                             kPropComments));
        updateInformationProps();
        updatePhysicalProps();
        updateBimProps();
        updateCustomProps();
    }
    m_grid->Thaw();
}

void DlgMaterials::updateInformationProps() {
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("Information"), "information"));
    const vantlib::InformationAsset empty;
    const vantlib::InformationAsset* info = m_material->information_asset();
    const vantlib::InformationAsset& asset = info ? *info : empty;
    m_grid->AppendIn(category, textRow(kPropClassification, asset.classification()));
    if (asset.has_unique_code())
        m_grid->AppendIn(category, textRow(kPropUniqueCode, asset.unique_code()));
    m_grid->AppendIn(category, textRow(kPropCost, asset.cost()));
    m_grid->AppendIn(category, textRow(kPropKeynote, asset.keynote()));
    m_grid->AppendIn(category, textRow(kPropLabel, asset.label()));
    m_grid->AppendIn(category, textRow(kPropManufacturer, asset.manufacturer()));
    m_grid->AppendIn(category, textRow(kPropMark, asset.mark()));
    m_grid->AppendIn(category, textRow(kPropModel, asset.model()));
    m_grid->AppendIn(category, textRow(kPropUrl, asset.url()));
}

void DlgMaterials::updatePhysicalProps() {
    const vantlib::PhysicalAsset* asset = m_material->physical_asset();
    if (!asset || (!asset->has_density() && !asset->has_thermal_conductivity() && !asset->has_specific_heat()))
        return;
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("Physical"), "physical"));
    const auto library = lib();
    const bool imperial = library && library->isImperial();
    const auto addValue = [&](EPropType type, const vantlib::PhysicalValue& stored) {
        std::unique_ptr<PhysicalUnit> value = quantity(type);
        const PhysicalUnit::Unit storedUnit = unitOfId(stored.unit);
        value->value(stored.value, storedUnit == PhysicalUnit::kNone ? value->defaultUnit() : storedUnit);
        const PhysicalUnit::Unit shown = imperial ? value->defaultImperialUnit() : value->defaultMetricUnit();
        wxPGProperty* row = typed(new wxFloatProperty(label(type), wxString::Format("prop%u", unsigned(type)),
                                                      value->value(shown)), type);
        row->SetAttribute(kUnitsAttribute, PhysicalUnit::abbr(shown));
        m_grid->AppendIn(category, row);
        m_grid->SetPropertyEditor(row, registerPhysicalUnitEditor());
    };
    if (asset->has_density())
        addValue(kPropDensity, asset->density());
    if (asset->has_thermal_conductivity())
        addValue(kPropThermalConductivity, asset->thermal_conductivity());
    if (asset->has_specific_heat())
        addValue(kPropSpecificHeat, asset->specific_heat());
}

void DlgMaterials::updateBimProps() {
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("BIM"), "bim"));
    const vantlib::BimAsset empty;
    const vantlib::BimAsset* bim = m_material->bim_asset();
    const vantlib::BimAsset& asset = bim ? *bim : empty;
    const wxArrayString labels = functions();
    wxArrayInt values;
    for (size_t index = 0; index < labels.size(); ++index)
        values.Add(int(index));
    m_grid->AppendIn(category, typed(new wxEnumProperty(label(kPropFunction), "prop15", labels, values,
                                                        int(asset.default_function())),
                                     kPropFunction));
    const wxString thickness = asset.thicknesses().empty() ? wxString()
                                                           : formatDistance(asset.default_thickness(), unit(), false);
    m_grid->AppendIn(category, typed(new wxStringProperty(label(kPropThickness).Trim(), "prop16", thickness),
                                     kPropThickness));
    m_grid->AppendIn(category, boolRow(kPropVariableThickness, asset.variable_thickness()));
    m_grid->AppendIn(category, boolRow(kPropUnionElevation, asset.union_elevation()));
    m_grid->AppendIn(category, boolRow(kPropUnionSection, asset.union_section()));
}

void DlgMaterials::updateCustomProps() {
    const vantlib::CustomValues& values = m_material->custom_values();
    if (values.empty())
        return;
    wxPGProperty* category = m_grid->Append(new wxPropertyCategory(_("Custom Properties"), "custom"));
    for (const vantlib::CustomValue& value : values) {
        const wxString name = toWx(value.property->name());
        m_grid->AppendIn(category, typed(new wxStringProperty(name, kCustomPrefix + name, toWx(value.value)),
                                         EPropType(kPropReserved)));
    }
}

namespace {
// The custom property whose value a grid row shows; null for other rows.
QcSmartPtr<vantlib::CustomProperty> customPropertyOf(const vantlib::Material& material, const wxPGProperty* row) {
    if (!row || !row->GetName().StartsWith(kCustomPrefix))
        return QcSmartPtr<vantlib::CustomProperty>();
    const wxString name = row->GetName().Mid(kCustomPrefix.length());
    for (const vantlib::CustomValue& value : material.custom_values())
        if (toWx(value.property->name()).IsSameAs(name, false))
            return value.property;
    return QcSmartPtr<vantlib::CustomProperty>();
}
}  // namespace

QcSmartPtr<vantlib::CustomProperty> DlgMaterials::selectedCustomProperty() const {
    if (!m_material || !m_grid)
        return QcSmartPtr<vantlib::CustomProperty>();
    return customPropertyOf(*m_material, m_grid->GetSelection());
}

void DlgMaterials::onPropChanged(wxPropertyGridEvent& event) {
    wxPGProperty* row = event.GetProperty();
    if (m_updating || !row || !m_material || !vl_db::writable(m_libs, m_dbType))
        return;
    const auto type = EPropType(row->GetAttributeAsLong(kTypeAttribute, -1));
    const wxVariant value = row->GetValue();
    const OdString text = toOd(row->GetValueAsString());
    bool refresh = false;
    changeMaterial([&](vantlib::Material& material) {
        vantlib::InformationAsset* info = nullptr;
        if (type >= kPropClassification && type <= kPropUrl)
            info = material.information_asset(true);
        switch (type) {
        case kPropTags:
            setTags(m_material, value.GetArrayString());
            break;
        case kPropComments: material.set_comments(toOd(value.GetString())); break;
        case kPropClassification: info->set_classification(text); break;
        case kPropUniqueCode: info->set_unique_code(text); break;
        case kPropCost: info->set_cost(text); break;
        case kPropKeynote: info->set_keynote(text); break;
        case kPropLabel: info->set_label(text); break;
        case kPropManufacturer: info->set_manufacturer(text); break;
        case kPropMark: info->set_mark(text); break;
        case kPropModel: info->set_model(text); break;
        case kPropUrl: info->set_url(text); break;
        case kPropFunction:
            material.bim_asset(true)->set_default_function(vantlib::MaterialFunction(value.GetLong()));
            break;
        case kPropThickness: {
            double thickness = 0.0;
            if (!parseDistance(thickness, value.GetString(), unit())) {
                refresh = true;
                showMessage(this, _("The thickness is not a length."), wxICON_WARNING);
                break;
            }
            material.bim_asset(true)->set_thicknesses(std::set<double>{thickness});
            refresh = true;
            break;
        }
        case kPropVariableThickness: material.bim_asset(true)->set_variable_thickness(value.GetBool()); break;
        case kPropUnionElevation: material.bim_asset(true)->set_union_elevation(value.GetBool()); break;
        case kPropUnionSection: material.bim_asset(true)->set_union_section(value.GetBool()); break;
        case kPropDensity:
        case kPropThermalConductivity:
        case kPropSpecificHeat: {
            const PhysicalUnit::Unit shown = PhysicalUnit::unitByAbbr(row->GetAttribute(kUnitsAttribute).GetString());
            const OdString unitId = toOd(PhysicalUnit::unitId(shown));
            vantlib::PhysicalAsset* physical = material.physical_asset(true);
            if (type == kPropDensity)
                physical->set_density(value.GetDouble(), unitId);
            else if (type == kPropThermalConductivity)
                physical->set_thermal_conductivity(value.GetDouble(), unitId);
            else
                physical->set_specific_heat(value.GetDouble(), unitId);
            break;
        }
        case kPropReserved: {
            if (const auto property = customPropertyOf(material, row))
                material.set_custom_value(property, toOd(value.GetString()));
            break;
        }
        default:
            wxFAIL_MSG(wxString::Format("Unhandled property type (%d)", int(type)));
            break;
        }
    });
    if (refresh)
        CallAfter([this] { updateProps(); });
}

void DlgMaterials::onCustomProps(wxCommandEvent&) {
    if (!m_material || !vl_db::writable(m_libs, m_dbType))
        return;
    saveMaterial();
    try {
        DlgCustomProperties dialog(this, m_libs, m_dbType, vantlib::kMaterial, vl_db::kModePicker);
        if (dialog.ShowModal() != wxID_OK)
            return;
        const auto property = dialog.selected();
        if (!property)
            return;
        if (!property->appliesTo(vantlib::kMaterial)) {
            showMessage(this, _("That custom property is for compositions only."), wxICON_WARNING);
            return;
        }
        if (!m_material->has_custom_value(property))
            changeMaterial([&](vantlib::Material& material) { material.set_custom_value(property, OdString()); });
    } catch (const std::exception& error) {
        reportError(error);
    }
    updateProps();
}

void DlgMaterials::onDelCustomPropValue(wxCommandEvent&) {
    const auto property = selectedCustomProperty();
    if (!property)
        return;
    changeMaterial([&](vantlib::Material& material) { material.clear_custom_value(property); });
    updateProps();
}

}  // namespace vl_app
