#include "app/materials/DlgMaterialsPreview.h"

#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <OdError.h>

#include "app/common/ListHelpers.h"

namespace vl_app {

DlgMaterialsPreview::DlgMaterialsPreview(wxWindow* parent, const wxString& materialName, const wxBitmap& picture) {
    if (!loadLayout(parent, "DlgMaterialsPreview"))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgMaterialsPreview\" is not loaded."));
    setBitmap(XRCCTRL(*this, "BMP_MATERIAL", wxStaticBitmap),
              picture.IsOk() ? picture : wxXmlResource::Get()->LoadBitmap("BmpEmptyMat_32"));
    XRCCTRL(*this, "STAT_MATERIAL", wxStaticText)
        ->SetLabel(picture.IsOk() ? materialName
                                  : wxString::Format(_("Material '%s' has no section hatch to show."), materialName));
    // Wide enough for the caption and a long material name beside the picture.
    SetMinClientSize(wxSize(260, -1));
    GetSizer()->SetSizeHints(this);
}

wxSize DlgMaterialsPreview::pictureSize() { return wxSize(128, 128); }

}  // namespace vl_app
