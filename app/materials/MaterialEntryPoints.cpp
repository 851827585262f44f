// Entry points through which host commands open the materials dialog, pick a material or get
// the picture of one.
#include <wx/image.h>

#include <MainWindow.h>
#include <OdStringWx.h>

#include <vantlib/Exception.h>

#include "app/common/Previews.h"
#include "app/common/PropertyGridEditors.h"
#include "app/materials/DlgMaterials.h"

namespace vl_app {

namespace {
unsigned projectMaterialId(vl_db::DocumentLibraries* libs, const OdString& name) {
    if (!libs || name.isEmpty())
        return 0;
    const auto material = libs->getFromPrimary<vantlib::Material>(vantlib::NameKey(name));
    return material ? material->id() : 0;
}

// Material rows of property grids pick their material with the manager.
const struct MaterialPickerInstaller {
    MaterialPickerInstaller() {
        MaterialStringProperty::setMaterialPicker([](wxWindow* parent, vl_db::DocumentLibraries* libs, wxString& name) {
            DlgMaterials dialog(parent, libs, vl_db::kModeManager, vl_db::kDbNone, 0);
            dialog.ShowModal();
            if (!dialog.material())
                return false;
            name = toWx(dialog.material()->name());
            return true;
        });
    }
} materialPickerInstaller;
}  // namespace

int dlgMaterials(wxWindow* parent, vl_db::DocumentLibraries* libs) {
    DlgMaterials dialog(parent, libs, vl_db::kModeManager, vl_db::kDbNone, 0);
    return dialog.ShowModal();
}

QcSmartPtr<vantlib::Material> selectMaterialFromDlg(OdDbDatabase* db, unsigned id, bool copyToProject) {
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    DlgMaterials dialog(wxg::mainWindow(), libs, vl_db::kModePicker, vl_db::kDbProject, id);
    if (dialog.ShowModal() != wxID_OK || !dialog.material())
        return QcSmartPtr<vantlib::Material>();
    QcSmartPtr<vantlib::Material> picked = dialog.material();
    if (!copyToProject || dialog.dbType() == vl_db::kDbProject)
        return picked;
    const auto project = vl_db::library(libs, vl_db::kDbProject, false);
    if (!vl_db::writable(project))
        return picked;
    // A clash with a project material of the same name goes to the library reactor's question.
    return project->save(picked);
}

QcSmartPtr<vantlib::Material> selectMaterialFromDlg(OdDbDatabase* db, const OdString& name, bool copyToProject) {
    return selectMaterialFromDlg(db, projectMaterialId(vl_db::docLibs(db), name), copyToProject);
}

int showMaterialDlg(OdDbDatabase* db, unsigned id) {
    DlgMaterials dialog(wxg::mainWindow(), vl_db::docLibs(db), vl_db::kModeManager, vl_db::kDbProject, id);
    return dialog.ShowModal();
}

int showMaterialDlg(OdDbDatabase* db, const OdString& name) {
    return showMaterialDlg(db, projectMaterialId(vl_db::docLibs(db), name));
}

wxBitmap materialPreview(OdDbDatabase* db, const OdString& name, const wxSize& size) {
    vl_db::DocumentLibraries* libs = vl_db::docLibs(db);
    const auto material = libs && !name.isEmpty() ? libs->getFromPrimary<vantlib::Material>(vantlib::NameKey(name))
                                                  : QcSmartPtr<vantlib::Material>();
    if (!material)
        return wxNullBitmap;
    wxBitmap picture = hatchPreview(material, vl_db::kHatchSection, size);
    if (picture.IsOk() && picture.GetSize() != size)
        picture = wxBitmap(picture.ConvertToImage().Rescale(size.x, size.y, wxIMAGE_QUALITY_HIGH));
    return picture;
}

}  // namespace vl_app
