#include "app/materials/DlgRenderMaterial.h"

#include <wx/bmpbuttn.h>
#include <wx/dcmemory.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <RenderMaterialLibrary.h>

#include "app/common/ListHelpers.h"

namespace vl_app {

wxBEGIN_EVENT_TABLE(DlgRenderMaterial, wxg::QcThemedDialog)
    EVT_INIT_DIALOG(DlgRenderMaterial::onInitDialog)
    EVT_TEXT(XRCID("SEARCH_MAT"), DlgRenderMaterial::onSearch)
    EVT_SEARCH(XRCID("SEARCH_MAT"), DlgRenderMaterial::onSearch)
    EVT_SEARCH_CANCEL(XRCID("SEARCH_MAT"), DlgRenderMaterial::onSearch)
    EVT_BUTTON(XRCID("BTN_CLEAR"), DlgRenderMaterial::onClear)
    EVT_BUTTON(wxID_OK, DlgRenderMaterial::onOK)
    EVT_UPDATE_UI(XRCID("BTN_CLEAR"), DlgRenderMaterial::onUpdateUI)
wxEND_EVENT_TABLE()

DlgRenderMaterial::DlgRenderMaterial(wxWindow* parent, const wxString& materialName)
    : QcThemedDialog(parent, "DlgRenderMaterial"), m_materialName(materialName) {
    m_search = XRCCTRL(*this, "SEARCH_MAT", wxSearchCtrl);
    m_search->ShowCancelButton(true);
    m_grid = new RenderMaterialGrid(this, this, wxID_ANY);
    wxXmlResource::Get()->AttachUnknownControl("GRID_MATS", m_grid, this);
}


void DlgRenderMaterial::set(const wxString& name, bool accept) {
    m_materialName = name;
    if (accept && IsModal()) {
        EndModal(wxID_OK);
        return;
    }
    updatePreview();
    updateMaterialName();
}

void DlgRenderMaterial::onInitDialog(wxInitDialogEvent& event) {
    updateGrid();
    updatePreview();
    updateMaterialName();
    m_grid->layoutColumns();
    event.Skip();
}

void DlgRenderMaterial::updateGrid() {
    const auto& library = ca::RenderMaterialLibrary::instance();
    const auto found = library.search(m_search->GetValue());
    m_grid->Freeze();
    m_grid->ClearSelection();
    if (m_grid->GetNumberRows() > 0)
        m_grid->DeleteRows(0, m_grid->GetNumberRows());
    m_grid->AppendRows(int(found.size()));
    int selectedRow = -1;
    for (size_t i = 0; i < found.size(); ++i) {
        const int row = int(i);
        m_grid->SetCellValue(row, 0, library.previewPath(*found[i], true));
        m_grid->SetCellValue(row, 1, ca::RenderMaterialLibrary::categoryText(*found[i]));
        m_grid->SetCellValue(row, 2, found[i]->name);
        if (selectedRow < 0 && found[i]->name.CmpNoCase(m_materialName) == 0)
            selectedRow = row;
    }
    if (selectedRow >= 0) {
        m_grid->SetGridCursor(selectedRow, 2);
        m_grid->SelectRow(selectedRow);
        m_grid->MakeCellVisible(selectedRow, 2);
    } else {
        m_materialName.clear();
    }
    m_grid->Thaw();
}

void DlgRenderMaterial::updatePreview() {
    auto* button = XRCCTRL(*this, "PREVIEW", wxBitmapButton);
    // The picture fills the button inside its border.
    const wxSize size = button->GetClientSize() - wxSize(12, 12);
    if (size.x <= 0 || size.y <= 0)
        return;
    wxBitmap picture;
    const auto& library = ca::RenderMaterialLibrary::instance();
    if (const ca::RenderMaterial* material = library.find(m_materialName)) {
        wxImage image = library.loadPreview(*material, true);
        if (image.IsOk())
            picture = wxBitmap(image.Rescale(size.x, size.y, wxIMAGE_QUALITY_HIGH));
    }
    if (!picture.IsOk()) {
        // No selection: an empty square in the button's colour.
        picture = wxBitmap(size.x, size.y);
        wxMemoryDC dc(picture);
        dc.SetBackground(wxBrush(button->GetBackgroundColour()));
        dc.Clear();
    }
    setBitmap(button, picture);
}

void DlgRenderMaterial::updateMaterialName() {
    const auto& library = ca::RenderMaterialLibrary::instance();
    const ca::RenderMaterial* material = library.find(m_materialName);
    auto* name = XRCCTRL(*this, "STAT_MAT_NAME", wxStaticText);
    auto* category = XRCCTRL(*this, "STAT_MAT_CATEGORY", wxStaticText);
    name->SetLabel(material ? material->name : _("No render material"));
    category->SetLabel(material ? ca::RenderMaterialLibrary::categoryText(*material) : wxString());
    XRCCTRL(*this, "PREVIEW", wxBitmapButton)->SetToolTip(material ? material->name : wxString());
}

void DlgRenderMaterial::onSearch(wxCommandEvent&) {
    updateGrid();
    updatePreview();
    updateMaterialName();
}

void DlgRenderMaterial::onClear(wxCommandEvent&) {
    m_materialName.clear();
    m_grid->ClearSelection();
    updatePreview();
    updateMaterialName();
}

void DlgRenderMaterial::onOK(wxCommandEvent&) { EndModal(wxID_OK); }

void DlgRenderMaterial::onUpdateUI(wxUpdateUIEvent& event) { event.Enable(!m_materialName.empty()); }

}  // namespace vl_app
