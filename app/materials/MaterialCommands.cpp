// Studio commands of the materials dialog: the manager, the picker and a material's picture.
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vantlib/Exception.h>

#include <vl_db/DocumentLibraries.h>

#include "app/common/ErrorMessages.h"
#include "app/ModuleCommands.h"
#include "app/materials/DlgMaterials.h"
#include "app/materials/DlgMaterialsPreview.h"

namespace vl_app {

namespace {

OdDbDatabase* activeDrawing() {
    OdDbDatabase* db = ca::curDb();
    if (!db)
        ca::prompt(_("No drawing is open."));
    return db;
}

void reportFailure(const std::exception& error) {
    ca::prompt(wxString::Format(_("The materials could not be shown: %s"), errorText(error)));
}

void runMaterials() {
    OdDbDatabase* db = activeDrawing();
    if (!db)
        return;
    try {
        dlgMaterials(wxg::mainWindow(), vl_db::docLibs(db));
    } catch (const std::exception& error) {
        reportFailure(error);
    }
}

void runPickMaterial() {
    OdDbDatabase* db = activeDrawing();
    if (!db)
        return;
    try {
        const QcSmartPtr<vantlib::Material> material = selectMaterialFromDlg(db, 0u, true);
        if (material)
            ca::prompt(wxString::Format(_("Material: %s"), toWx(material->name())));
        else
            ca::prompt(_("No material was picked."));
    } catch (const std::exception& error) {
        reportFailure(error);
    }
}

void runMaterialPreview() {
    OdDbDatabase* db = activeDrawing();
    if (!db)
        return;
    try {
        DlgMaterialsPreview preview(wxg::mainWindow(), db, wxString());
        preview.ShowModal();
    } catch (const std::exception& error) {
        reportFailure(error);
    }
}

const ModuleCommandRegistration g_materials("materials", wxTRANSLATE("Materials"), runMaterials);
const ModuleCommandRegistration g_pickMaterial("pick-material", wxTRANSLATE("Pick a material"), runPickMaterial);
const ModuleCommandRegistration g_materialPreview("material-preview", wxTRANSLATE("Material preview"),
                                                  runMaterialPreview);

}  // namespace

}  // namespace vl_app
