#pragma once
// Picks the render material (the look of a material in 3D views) from the host's
// render-material library: a searchable grid of thumbnails with category and name.
#include <wx/string.h>

#include <QcThemedDialog.h>

#include "app/materials/RenderMaterialGrid.h"

class wxSearchCtrl;

namespace vl_app {

class DlgRenderMaterial : public wxg::QcThemedDialog {
public:
    // `materialName` is the current render material; it is selected when the library has it.
    DlgRenderMaterial(wxWindow* parent, const wxString& materialName);

    // The chosen render material; empty for none.
    wxString materialName() const { return m_materialName; }
    // Selects a render material; with `accept` the dialog ends with OK at once.
    void set(const wxString& name, bool accept);

    RenderMaterialGrid* grid() const { return m_grid; }

private:
    void onInitDialog(wxInitDialogEvent& event);
    void onSearch(wxCommandEvent& event);
    void onClear(wxCommandEvent& event);
    void onOK(wxCommandEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);

    // Refills the grid with the materials matching the search text.
    void updateGrid();
    void updatePreview();
    // Shows the chosen name in the caption.
    void updateMaterialName();

    wxString m_materialName;
    RenderMaterialGrid* m_grid = nullptr;
    wxSearchCtrl* m_search = nullptr;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app
