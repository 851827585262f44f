// Studio commands that open the material editor's sub-dialogs on their own, on the active
// drawing's project library and its first material, so each can be used and pictured alone.
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdError.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vantlib/Exception.h>
#include <vantlib/Material.h>

#include <vl_db/DocumentLibraries.h>

#include "app/common/ErrorMessages.h"
#include "app/ModuleCommands.h"
#include "app/materials/DlgCustomProperties.h"
#include "app/materials/DlgHatchPattern.h"
#include "app/materials/DlgMaterialClasses.h"
#include "app/materials/DlgRenderMaterial.h"

namespace vl_app {

namespace {

vl_db::DocumentLibraries* activeLibraries() {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("No drawing is open."));
        return nullptr;
    }
    return vl_db::docLibs(db);
}

// The first material of the project library, else of the central library; null when neither
// holds one.
QcSmartPtr<vantlib::Material> firstMaterial(vl_db::DocumentLibraries* libs) {
    for (vl_db::EDbType type : {vl_db::kDbProject, vl_db::kDbCentral}) {
        const auto library = vl_db::library(libs, type, false);
        if (!library)
            continue;
        std::vector<QcSmartPtr<vantlib::Material>> materials;
        library->get(materials);
        if (!materials.empty())
            return materials.front();
    }
    return QcSmartPtr<vantlib::Material>();
}

void reportLibraryError(const std::exception& error) {
    ca::prompt(wxString::Format(_("The library could not be used: %s"), errorText(error)));
}

void runMaterialClasses() {
    vl_db::DocumentLibraries* libs = activeLibraries();
    if (!libs)
        return;
    DlgMaterialClasses dialog(wxg::mainWindow(), libs, vl_db::kDbProject);
    if (dialog.ShowModal() == wxID_OK && !dialog.selected().empty())
        ca::prompt(wxString::Format(_("Material class: %s"), dialog.selected()));
}

void runHatchPattern() {
    vl_db::DocumentLibraries* libs = activeLibraries();
    if (!libs)
        return;
    try {
        QcSmartPtr<vantlib::Material> material = firstMaterial(libs);
        if (!material) {
            ca::prompt(_("The drawing's libraries hold no materials."));
            return;
        }
        vantlib::Pattern pattern = material->section_pattern();
        DlgHatchPattern dialog(wxg::mainWindow(), pattern, vl_db::kHatchSection);
        if (dialog.ShowModal() != wxID_OK)
            return;
        if (!vl_db::writable(material->library())) {
            ca::prompt(_("The material's library is read-only; the hatch pattern was not saved."));
            return;
        }
        material->section_pattern() = pattern;
        material->save();
        ca::prompt(wxString::Format(_("Section hatch of %s saved."), toWx(material->name())));
    } catch (const std::exception& error) {
        reportLibraryError(error);
    }
}

void runRenderMaterial() {
    vl_db::DocumentLibraries* libs = activeLibraries();
    if (!libs)
        return;
    try {
        QcSmartPtr<vantlib::Material> material = firstMaterial(libs);
        const wxString current = material ? toWx(material->appearance()) : wxString();
        DlgRenderMaterial dialog(wxg::mainWindow(), current);
        if (dialog.ShowModal() != wxID_OK || !material)
            return;
        if (!vl_db::writable(material->library())) {
            ca::prompt(_("The material's library is read-only; the render material was not saved."));
            return;
        }
        material->set_appearance(toOd(dialog.materialName()));
        material->save();
        ca::prompt(wxString::Format(_("Render material of %s saved."), toWx(material->name())));
    } catch (const std::exception& error) {
        reportLibraryError(error);
    }
}

void runCustomProperties() {
    vl_db::DocumentLibraries* libs = activeLibraries();
    if (!libs)
        return;
    DlgCustomProperties dialog(wxg::mainWindow(), libs, vl_db::kDbProject, vantlib::kMaterial, vl_db::kModeManager);
    dialog.ShowModal();
}

const ModuleCommandRegistration g_materialClasses("material-classes", wxTRANSLATE("Material classes"),
                                                  runMaterialClasses);
const ModuleCommandRegistration g_hatchPattern("hatch-pattern", wxTRANSLATE("Hatch pattern of a material"),
                                               runHatchPattern);
const ModuleCommandRegistration g_renderMaterial("render-material", wxTRANSLATE("Render material of a material"),
                                                 runRenderMaterial);
const ModuleCommandRegistration g_customProperties("custom-properties", wxTRANSLATE("Custom properties"),
                                                   runCustomProperties);

}  // namespace

}  // namespace vl_app
