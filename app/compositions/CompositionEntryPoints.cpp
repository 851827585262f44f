// Entry points through which host commands open the compositions dialog or pick a composition,
// and the studio commands that call them.
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>
#include <CaApp.h>

#include "app/ModuleCommands.h"
#include "app/common/ErrorMessages.h"
#include "app/compositions/DlgCompositions.h"
#include "app/materials/MaterialEditRules.h"

namespace vl_app {

int dlgCompositions(wxWindow* parent, vl_db::DocumentLibraries* libs) {
    DlgCompositions dialog(parent ? parent : wxg::mainWindow(), libs, vl_db::kModeManager, vl_db::kDbNone, 0,
                           _("All"));
    return dialog.ShowModal();
}

int dlgNewComposition(wxWindow* parent, vl_db::DocumentLibraries* libs) {
    const auto project = vl_db::library(libs, vl_db::kDbProject, false);
    unsigned id = 0;
    if (vl_db::writable(project)) {
        const wxString name = uniqueName(_("New"), [&](const wxString& candidate) {
            return bool(project->get<vantlib::Composition>(vantlib::NameKey(toOd(candidate))));
        });
        id = project->save(vantlib::Composition::create(toOd(name)))->id();
    }
    DlgCompositions dialog(parent ? parent : wxg::mainWindow(), libs, vl_db::kModeManagerEditName,
                           id ? vl_db::kDbProject : vl_db::kDbNone, id, _("All"));
    return dialog.ShowModal();
}

bool DlgCompositions::selectComposition(wxString& name, vl_db::DocumentLibraries* libs, const wxString& typeFilter) {
    vl_db::EDbType type = vl_db::kDbProject;
    unsigned id = 0;
    if (!name.empty() && libs) {
        const vantlib::NameKey key(toOd(name));
        if (const auto found = libs->getFromPrimary<vantlib::Composition>(key)) {
            id = found->id();
        } else if (const auto central = libs->getFromSecondary<vantlib::Composition>(key)) {
            id = central->id();
            type = vl_db::kDbCentral;
        }
    }
    DlgCompositions dialog(wxg::mainWindow(), libs, vl_db::kModePicker, type, id, typeFilter);
    if (dialog.ShowModal() != wxID_OK)
        return false;
    if (dialog.dbType() == vl_db::kDbNone || !dialog.composition())
        name.clear();
    else
        name = toWx(dialog.composition()->name());
    return true;
}

namespace {

OdDbDatabase* activeDrawing() {
    OdDbDatabase* db = ca::curDb();
    if (!db)
        ca::prompt(_("No drawing is open."));
    return db;
}

void reportFailure(const std::exception& error) {
    ca::prompt(wxString::Format(_("The compositions could not be shown: %s"), errorText(error)));
}

void runCompositions() {
    if (OdDbDatabase* db = activeDrawing()) {
        try {
            dlgCompositions(wxg::mainWindow(), vl_db::docLibs(db));
        } catch (const std::exception& error) {
            reportFailure(error);
        }
    }
}

void runNewComposition() {
    if (OdDbDatabase* db = activeDrawing()) {
        try {
            dlgNewComposition(wxg::mainWindow(), vl_db::docLibs(db));
        } catch (const std::exception& error) {
            reportFailure(error);
        }
    }
}

void runPickComposition() {
    if (OdDbDatabase* db = activeDrawing()) {
        try {
            wxString name;
            if (DlgCompositions::selectComposition(name, vl_db::docLibs(db), _("All")))
                ca::prompt(wxString::Format(_("Composition: %s"), name));
        } catch (const std::exception& error) {
            reportFailure(error);
        }
    }
}

const ModuleCommandRegistration g_compositions("compositions", wxTRANSLATE("Compositions"), runCompositions);
const ModuleCommandRegistration g_newComposition("new-composition", wxTRANSLATE("New composition"),
                                                 runNewComposition);
const ModuleCommandRegistration g_pickComposition("pick-composition", wxTRANSLATE("Pick a composition"),
                                                  runPickComposition);

}  // namespace

}  // namespace vl_app
