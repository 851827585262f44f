#pragma once
// A small window that shows the picture host commands get for one material.
#include <wx/bitmap.h>
#include <wx/string.h>

#include <QcThemedDialog.h>

namespace vl_app {

class DlgMaterialsPreview : public wxg::QcThemedDialog {
public:
    // An invalid `picture` says that the material has no hatch to show.
    DlgMaterialsPreview(wxWindow* parent, const wxString& materialName, const wxBitmap& picture);

    // Edge of the picture the window shows.
    static wxSize pictureSize();
};

}  // namespace vl_app
