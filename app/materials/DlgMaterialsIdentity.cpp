// Identity page of the materials dialog: name, class and description, validated as the user
// types, and the status line that reports what blocks the material.
#include <wx/combobox.h>
#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include "app/materials/DlgMaterialClasses.h"
#include "app/materials/DlgMaterials.h"
#include "app/materials/MaterialEditRules.h"

namespace vl_app {

void DlgMaterials::onEditText(wxCommandEvent& event) {
    if (m_updating || !m_material)
        return;
    try {
        const int id = event.GetId();
        const wxString text = event.GetString();
        if (id == XRCID("TEXT_NAME"))
            editName(text);
        else if (id == XRCID("COMBO_CLASS"))
            editClass(text);
        else if (id == XRCID("TEXT_DSCR"))
            changeMaterial([&](vantlib::Material& material) { material.set_description(toOd(text)); });
        else if (id == XRCID("SECT_LAYER"))
            editLayer(vl_db::kHatchSection, text);
        else if (id == XRCID("ELEV_LAYER"))
            editLayer(vl_db::kHatchElevation, text);
        else if (id == XRCID("TEXT_SECT_HATCH_SCALE"))
            editHatchNumber(vl_db::kHatchSection, 0, text);
        else if (id == XRCID("TEXT_SECT_HATCH_SPACE"))
            editHatchNumber(vl_db::kHatchSection, 1, text);
        else if (id == XRCID("TEXT_SECT_HATCH_ANGLE"))
            editHatchNumber(vl_db::kHatchSection, 2, text);
        else if (id == XRCID("TEXT_ELEV_HATCH_SCALE"))
            editHatchNumber(vl_db::kHatchElevation, 0, text);
        else if (id == XRCID("TEXT_ELEV_HATCH_SPACE"))
            editHatchNumber(vl_db::kHatchElevation, 1, text);
        else if (id == XRCID("TEXT_ELEV_HATCH_ANGLE"))
            editHatchNumber(vl_db::kHatchElevation, 2, text);
        if (id == XRCID("TEXT_DSCR"))
            updateDscr();
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::editName(const wxString& text) {
    m_nameText = text;
    m_status = validate(false);
    if (m_status == kValid) {
        changeMaterial([&](vantlib::Material& material) { material.set_name(toOd(text)); });
        updateName();
    }
    updateStatus();
}

void DlgMaterials::editClass(const wxString& text) {
    m_classText = text;
    m_status = validate(true);
    if (m_status == kValid)
        changeMaterial([&](vantlib::Material&) { vantlib::setClass(m_material, toOd(text)); });
    updateStatus();
}

DlgMaterials::EStatus DlgMaterials::validate(bool classTyped) const {
    const auto library = lib();
    const bool nameUsed = library && !m_nameText.empty() &&
                          library->isNameUsed(vantlib::kMaterial, toOd(m_nameText), m_material->id());
    const unsigned name = nameStatus(m_nameText, m_selName, nameUsed);
    if (name != kValid)
        return EStatus(name);
    // The class is checked once the user has typed one that differs from the material's own.
    const wxString currentClass = m_material->material_type() ? toWx(m_material->material_type()->name()) : wxString();
    if (!classTyped && m_classText == currentClass)
        return kValid;
    const bool classExists = library && !m_classText.empty() &&
                             library->get<vantlib::MaterialType>(vantlib::NameKey(toOd(m_classText)));
    return EStatus(classStatus(m_classText, classExists));
}

void DlgMaterials::onClasses(wxCommandEvent&) {
    const vl_db::EDbType type = m_dbType == vl_db::kDbNone ? vl_db::kDbProject : m_dbType;
    saveMaterial();
    try {
        DlgMaterialClasses classes(this, m_libs, type);
        if (classes.ShowModal() != wxID_OK)
            return;
        const wxString picked = classes.selected();
        // Renamed or removed classes change what the lists and the current material show.
        updateLists(true);
        updateMaterial();
        updateClasses();
        if (!picked.empty() && m_material) {
            auto* combo = XRCCTRL(*this, "COMBO_CLASS", wxComboBox);
            combo->ChangeValue(picked);
            editClass(picked);
        }
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgMaterials::updateIdentity() {
    const bool wasUpdating = m_updating;
    m_updating = true;
    updateName();
    updateDscr();
    updateClass();
    m_updating = wasUpdating;
}

void DlgMaterials::updateName() {
    auto* name = XRCCTRL(*this, "TEXT_NAME", wxTextCtrl);
    if (name->GetValue() != m_nameText)
        name->ChangeValue(m_nameText);
    XRCCTRL(*this, "STAT_NAME", wxStaticText)->SetLabel(m_material ? m_nameText : wxString());
    // The row of the current material follows the name as it is saved.
    updateCurrentRow();
}

void DlgMaterials::updateDscr() {
    const wxString description = m_material ? toWx(m_material->description()) : wxString();
    auto* text = XRCCTRL(*this, "TEXT_DSCR", wxTextCtrl);
    if (text->GetValue() != description)
        text->ChangeValue(description);
    // The header shows the first line only.
    XRCCTRL(*this, "STAT_DSCR", wxStaticText)->SetLabel(description.BeforeFirst('\n'));
}

void DlgMaterials::updateClass() {
    auto* combo = XRCCTRL(*this, "COMBO_CLASS", wxComboBox);
    if (combo->GetValue() != m_classText)
        combo->ChangeValue(m_classText);
}

void DlgMaterials::updateStatus() {
    const bool invalid = m_status != kValid;
    auto* text = XRCCTRL(*this, "STAT_ERROR", wxStaticText);
    text->SetLabel(statusText(m_status, m_classText));
    text->Show(invalid);
    XRCCTRL(*this, "BMP_ERROR", wxStaticBitmap)->Show(invalid);
    // The user cannot leave a material that is not valid.
    XRCCTRL(*this, "PANEL_LEFT", wxPanel)->Enable(!invalid);
    XRCCTRL(*this, "PANEL_IDENTITY", wxPanel)->Layout();
}

}  // namespace vl_app
