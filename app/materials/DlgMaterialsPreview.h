#pragma once
// A small window that shows the picture host commands get for a material of the project
// library, with a choice of the material.
#include <wx/bitmap.h>
#include <wx/string.h>

#include <QcThemedDialog.h>

class OdDbDatabase;
class wxCommandEvent;

namespace vl_app {

class DlgMaterialsPreview : public wxg::QcThemedDialog {
public:
    // Offers the project materials of `db`, starting with `materialName` (the first one when
    // it is empty or unknown).
    DlgMaterialsPreview(wxWindow* parent, OdDbDatabase* db, const wxString& materialName);

    // Edge of the picture the window shows.
    static wxSize pictureSize();

    wxString shownMaterial() const;

private:
    void updatePicture();
    void onMaterial(wxCommandEvent& event);

    OdDbDatabase* m_db;
};

}  // namespace vl_app
