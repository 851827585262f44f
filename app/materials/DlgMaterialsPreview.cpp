#include "app/materials/DlgMaterialsPreview.h"

#include <vector>

#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <OdError.h>
#include <OdStringWx.h>

#include <vantlib/Material.h>

#include <vl_db/DocumentLibraries.h>

#include "app/common/ListHelpers.h"
#include "app/materials/DlgMaterials.h"

namespace vl_app {

DlgMaterialsPreview::DlgMaterialsPreview(wxWindow* parent, OdDbDatabase* db, const wxString& materialName)
    : m_db(db) {
    if (!loadLayout(parent, "DlgMaterialsPreview"))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DlgMaterialsPreview\" is not loaded."));
    wxChoice* choice = XRCCTRL(*this, "CHOICE_MATERIAL", wxChoice);
    if (const auto project = vl_db::library(vl_db::docLibs(db), vl_db::kDbProject, false)) {
        std::vector<QcSmartPtr<vantlib::Material>> materials;
        project->get(materials);
        wxArrayString names;
        for (const auto& material : materials)
            names.Add(toWx(material->name()));
        names.Sort();
        choice->Append(names);
    }
    const int preselected = choice->FindString(materialName);
    if (choice->GetCount() > 0)
        choice->SetSelection(preselected == wxNOT_FOUND ? 0 : preselected);
    choice->Bind(wxEVT_CHOICE, &DlgMaterialsPreview::onMaterial, this);
    // Wide enough for the caption and a long material name beside the picture.
    SetMinClientSize(wxSize(300, -1));
    updatePicture();
}

wxSize DlgMaterialsPreview::pictureSize() { return wxSize(128, 128); }

wxString DlgMaterialsPreview::shownMaterial() const {
    return XRCCTRL(*this, "CHOICE_MATERIAL", wxChoice)->GetStringSelection();
}

void DlgMaterialsPreview::updatePicture() {
    const wxString name = shownMaterial();
    const wxBitmap picture = name.empty() ? wxNullBitmap : materialPreview(m_db, toOd(name), pictureSize());
    setBitmap(XRCCTRL(*this, "BMP_MATERIAL", wxStaticBitmap),
              picture.IsOk() ? picture : wxXmlResource::Get()->LoadBitmap("BmpEmptyMat_32"));
    wxString caption;
    if (name.empty())
        caption = _("The project library has no materials.");
    else if (picture.IsOk())
        caption = name;
    else
        caption = wxString::Format(_("Material '%s' has no section hatch to show."), name);
    XRCCTRL(*this, "STAT_MATERIAL", wxStaticText)->SetLabel(caption);
    GetSizer()->SetSizeHints(this);
    Layout();
}

void DlgMaterialsPreview::onMaterial(wxCommandEvent&) { updatePicture(); }

}  // namespace vl_app
