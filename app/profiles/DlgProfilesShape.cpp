// The right side of the profiles dialog for the selected profile: its identity fields, the
// parameter panel of its shape with the dimensions it has, and its attributes.
#include <wx/choice.h>
#include <wx/dcclient.h>
#include <wx/numformatter.h>
#include <wx/propgrid/props.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include <vl_db/Profiles.h>

#include "app/common/Distances.h"
#include "app/common/Helpers.h"
#include "app/profiles/DlgProfiles.h"
#include "app/profiles/ProfileShapes.h"

namespace vl_app {

namespace {
const char* const kRowParts[] = {"_COL", "_LABEL", "_ABBR", "", "_UNIT"};

void setFieldText(wxWindow* window, const wxString& text, bool editable) {
    if (auto* field = dynamic_cast<wxTextCtrl*>(window)) {
        field->ChangeValue(text);
        field->SetEditable(editable);
    }
}

void setReadOnlyText(wxWindow* window, const wxString& text) { setFieldText(window, text, false); }
}  // namespace

void DlgProfiles::createPropertyGrid() {
    wxWindow* host = FindWindow(XRCID("PANEL_PROPGRID"));
    const bool large = wxg::isDpiForLargeIcons();
    m_grid = new wxg::QcPropertyGrid(host, wxID_ANY, wxDefaultPosition, wxSize(-1, large ? 300 : 150),
                                     wxPG_DEFAULT_STYLE | wxPG_SPLITTER_AUTO_CENTER);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_grid, 1, wxEXPAND);
    host->SetSizer(sizer);
}

void DlgProfiles::displayMeasureUnit() {
    const auto library = getLib(currentDb() == vl_db::kDbNone ? vl_db::kDbProject : currentDb());
    const wxString unit = abbr(library ? library->unit() : OdDb::kUnitsMillimeters);
    for (const ShapePanel& panel : shapePanels())
        for (const ShapeRow& row : panel.rows)
            if (row.length)
                if (auto* label = dynamic_cast<wxStaticText*>(FindWindow(XRCID(wxString(row.control) + "_UNIT"))))
                    label->SetLabel(unit);
}

void DlgProfiles::showShapePanel(vantlib::ObjectType type) {
    for (const ShapePanel& panel : shapePanels())
        FindWindow(XRCID(panel.panel))->Show(panel.type == type);
}

void DlgProfiles::fillParameters(const vantlib::Profile& profile, bool editable, bool withValues) {
    const ShapePanel* panel = shapePanel(profile.type());
    if (!panel)
        return;
    const auto library = getLib(currentDb());
    const OdDb::UnitsValue unit = library ? library->unit() : OdDb::kUnitsMillimeters;
    const vantlib::ProfileClass& shape = profile.isA();
    for (const ShapeRow& row : panel->rows) {
        const vantlib::ShapeParameterInfo* info = shape.parameter(row.parameter);
        const bool present = profile.hasParameter(row.parameter);
        // Optional dimensions that the profile does not carry are not shown at all.
        const bool shown = info && (!info->optional || present);
        for (const char* part : kRowParts)
            if (wxWindow* control = FindWindow(XRCID(wxString(row.control) + part)))
                control->Show(shown);
        const double value = present ? profile.parameter(row.parameter) : 0.0;
        const wxString text = !present || !withValues ? wxString()
                              : row.length
                                  ? formatDistance(value, unit, false)
                                  : wxNumberFormatter::ToString(value, 4, wxNumberFormatter::Style_NoTrailingZeroes);
        setFieldText(FindWindow(XRCID(row.control)), text, editable);
    }
}

void DlgProfiles::fillIdentity() {
    wxString type, standard, name, size, shape;
    if (m_selected) {
        if (const auto& profileName = m_selected->name()) {
            type = profileTypeLabel(profileName->type());
            name = toWx(profileName->name());
            if (profileName->standard())
                standard = toWx(vl_db::convertProfileStandardLabel(profileName->standard()->name(), vl_db::kDisplayedString));
        }
        size = toWx(m_selected->size());
        shape = shapeLabel(m_selected->type(), false);
        if (shape.empty())
            shape = _("Generic");
    }
    setReadOnlyText(FindWindow(XRCID("ID_TYPE_TXTCTRL")), type);
    setReadOnlyText(FindWindow(XRCID("ID_SET_STANDARD")), standard);
    setReadOnlyText(FindWindow(XRCID("ID_SET_NAME")), name);
    setReadOnlyText(FindWindow(XRCID("ID_SIZE_VALUE")), size);
    setReadOnlyText(FindWindow(XRCID("ID_SHAPE_TXTCTRL")), shape);
}

void DlgProfiles::updateProfileProps() {
    m_grid->Freeze();
    m_grid->Clear();
    if (m_selected || m_creating) {
        const bool editable = m_creating || isEditableProfile(m_selected);
        wxPGProperty* description =
            m_grid->Append(new wxLongStringProperty(_("Description"), "description",
                                                  m_selected ? toWx(m_selected->description()) : wxString()));
        const auto material = m_selected ? m_selected->material() : QcSmartPtr<vantlib::Material>();
        wxPGProperty* materialName =
            m_grid->Append(new wxStringProperty(_("Material"), "material", material ? toWx(material->name()) : wxString()));
        if (!editable)
            m_grid->setPropertyReadOnly(description);
        m_grid->setPropertyReadOnly(materialName);
    }
    m_grid->Thaw();
}

void DlgProfiles::onPaintPreview(wxPaintEvent& event) {
    auto* panel = dynamic_cast<wxWindow*>(event.GetEventObject());
    wxPaintDC dc(panel);
    if (!m_preview.IsOk())
        return;
    const wxSize area = panel->GetClientSize();
    dc.DrawBitmap(m_preview, (area.x - m_preview.GetWidth()) / 2, (area.y - m_preview.GetHeight()) / 2, true);
}

void DlgProfiles::updateProfileDlg() {
    // A profile being created keeps what the user typed.
    if (m_creating)
        return;
    wxWindowUpdateLocker freeze(this);
    const ShapePanel* shown = m_selected ? shapePanel(m_selected->type()) : nullptr;
    m_preview = shown && shown->picture ? wxXmlResource::Get()->LoadBitmap(shown->picture) : wxNullBitmap;
    wxWindow* preview = FindWindow(XRCID("PANEL_PREVIEW"));
    preview->Show(m_preview.IsOk());
    preview->Refresh();
    fillIdentity();
    if (m_selected) {
        showShapePanel(m_selected->type());
        fillParameters(*m_selected, isEditableProfile(m_selected), true);
    } else {
        // Without a selection the panel of the shape the filter names stays in view, empty.
        const wxString shortName = shapeShortName(isAllFilterSelected(kFilterShape) ? wxString() : getFilterLabel(kFilterShape));
        vantlib::ObjectType type = vantlib::kUnknownObject;
        for (const ShapePanel& panel : shapePanels())
            if (shortName == panel.shortName)
                type = panel.type;
        showShapePanel(type);
    }
    displayMeasureUnit();
    showPropChoiceFields(isEditableProfile(m_selected));
    updateProfileProps();
    updateCustomPanels();
    FindWindow(XRCID("PANEL_PROPS"))->Layout();
    Layout();
}

}  // namespace vl_app
