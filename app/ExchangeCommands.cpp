#include "app/ExchangeCommands.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include <wx/choicdlg.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/progdlg.h>

#include <CaApp.h>
#include <CaFileDialog.h>
#include <CaUnits.h>
#include <MainWindow.h>
#include <OdDbDatabase.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>

#include "app/ModuleCommands.h"
#include "app/common/ErrorMessages.h"

namespace vl_app {

namespace {

vantlib::ExchangeProgress progressOf(const ExchangeStep& step) {
    if (!step)
        return {};
    return [&step](size_t done, size_t total) {
        if (!step(done, total))
            throw ExchangeCancelled();
    };
}

std::string fileSystemPath(const wxString& path) { return std::string(path.fn_str()); }

}  // namespace

void exportLibraryFile(const vantlib::Library& library, const wxString& path, const ExchangeStep& step) {
    const std::string document = vantlib::exportLibrary(library, {}, progressOf(step));
    const std::string target = fileSystemPath(path);
    const std::string partial = target + ".partial";
    std::ofstream file(partial, std::ios::binary | std::ios::trunc);
    file << document;
    file.close();
    if (!file || std::rename(partial.c_str(), target.c_str()) != 0) {
        std::remove(partial.c_str());
        throw vantlib::ExchangeError(toOd(wxString::Format(_("The file %s could not be written."), path)));
    }
}

vantlib::ImportReport importLibraryFile(const std::shared_ptr<vantlib::Library>& library, const wxString& path,
                                        vantlib::ClashAnswer onClash, const ExchangeStep& step) {
    std::ifstream file(fileSystemPath(path), std::ios::binary);
    if (!file)
        throw vantlib::ExchangeError(toOd(wxString::Format(_("The file %s could not be read."), path)));
    std::ostringstream text;
    text << file.rdbuf();
    return vantlib::importLibrary(library, text.str(), onClash, progressOf(step));
}

wxArrayString importReportLines(const vantlib::ImportReport& report) {
    wxArrayString lines;
    if (report.converted)
        lines.push_back(wxString::Format(_("Lengths were converted from %s into %s, the unit of the library."),
                                         ca::unitsToString(report.documentUnit), ca::unitsToString(report.libraryUnit)));
    const vantlib::ImportCounts total = report.total();
    lines.push_back(wxString::Format(wxPLURAL("%u object created.", "%u objects created.", total.created), total.created));
    if (total.skipped)
        lines.push_back(wxString::Format(
            wxPLURAL("%u object skipped: the library has one of that name.",
                     "%u objects skipped: the library has objects of those names.", total.skipped),
            total.skipped));
    if (total.overwritten)
        lines.push_back(wxString::Format(wxPLURAL("%u object overwritten.", "%u objects overwritten.", total.overwritten),
                                         total.overwritten));
    if (total.renamed)
        lines.push_back(wxString::Format(
            wxPLURAL("%u object stored under a new name.", "%u objects stored under new names.", total.renamed),
            total.renamed));
    return lines;
}

namespace {

// The drawing's library the user picks; null when the drawing has none or the user cancelled. `forWriting` leaves out read-only libraries.
std::shared_ptr<vantlib::Library> chooseLibrary(bool forWriting, const wxString& title) {
    vl_db::DocumentLibraries* libs = vl_db::docLibs(ca::curDb());
    if (!libs) {
        ca::prompt(_("No drawing is open."));
        return nullptr;
    }
    std::vector<std::shared_ptr<vantlib::Library>> libraries;
    wxArrayString names;
    const struct {
        vl_db::EDbType type;
        wxString name;
    } kinds[] = {{vl_db::kDbProject, _("Project library")}, {vl_db::kDbCentral, _("Central library")}};
    for (const auto& kind : kinds) {
        auto library = vl_db::library(libs, kind.type, false);
        if (library && (!forWriting || vl_db::writable(library))) {
            libraries.push_back(library);
            names.push_back(kind.name);
        }
    }
    if (libraries.empty()) {
        ca::prompt(forWriting ? _("The drawing has no library that can be changed.") : _("The drawing has no library."));
        return nullptr;
    }
    int index = 0;
    if (libraries.size() > 1) {
        wxSingleChoiceDialog dialog(wxg::mainWindow(), _("Which library?"), title, names);
        if (dialog.ShowModal() != wxID_OK)
            return nullptr;
        index = dialog.GetSelection();
    }
    return libraries[size_t(index)];
}

ExchangeStep progressDialogStep(wxProgressDialog& dialog) {
    return [&dialog](size_t done, size_t total) { return dialog.Update(total ? int(done * 100 / total) : 100); };
}

ca::FileDialogRequest documentRequest(const wxString& title, ca::EFileDialogMode mode) {
    ca::FileDialogRequest request;
    request.dialogKey = "LibraryExchange";
    request.title = title;
    request.filterDescription = _("Library exchange documents");
    request.defaultExtension = "json";
    request.mode = mode;
    return request;
}

void runExportLibrary() {
    try {
        const auto library = chooseLibrary(false, _("Export Library"));
        if (!library)
            return;
        ca::FileDialogRequest request = documentRequest(_("Export Library"), ca::kSaveFile);
        request.defaultName = wxFileName(toWx(library->filename())).GetName() + ".json";
        wxString path;
        if (!ca::getFilePath(path, request))
            return;
        wxProgressDialog progress(_("Export Library"), wxString::Format(_("Writing the library exchange document %s."), path), 100,
                                  wxg::mainWindow(), wxPD_APP_MODAL | wxPD_AUTO_HIDE | wxPD_CAN_ABORT | wxPD_SMOOTH);
        exportLibraryFile(*library, path, progressDialogStep(progress));
        ca::prompt(wxString::Format(_("The library was exported to %s."), path));
    } catch (const ExchangeCancelled&) {
        ca::prompt(_("The export was cancelled; no file was written."));
    } catch (const std::exception& error) {
        showError(wxg::mainWindow(), error);
    }
}

void runImportLibrary() {
    try {
        const auto library = chooseLibrary(true, _("Import Library"));
        if (!library)
            return;
        wxString path;
        if (!ca::getFilePath(path, documentRequest(_("Import Library"), ca::kOpenExistingFile)))
            return;
        const wxString answers[] = {_("Skip it and keep the library's object"),
                                    _("Overwrite the library's object"), _("Import it under a new name")};
        wxSingleChoiceDialog clash(wxg::mainWindow(),
                                   _("What should happen to a material or composition whose name the library already has?"),
                                   _("Import Library"), wxArrayString(3, answers));
        if (clash.ShowModal() != wxID_OK)
            return;
        const vantlib::ClashAnswer onClash = vantlib::ClashAnswer(clash.GetSelection());
        vantlib::ImportReport report;
        {
            wxProgressDialog progress(_("Import Library"), wxString::Format(_("Reading the library exchange document %s."), path),
                                      100, wxg::mainWindow(),
                                      wxPD_APP_MODAL | wxPD_AUTO_HIDE | wxPD_CAN_ABORT | wxPD_SMOOTH);
            report = importLibraryFile(library, path, onClash, progressDialogStep(progress));
        }
        const wxArrayString lines = importReportLines(report);
        for (const wxString& line : lines)
            ca::prompt(line);
        showMessage(wxg::mainWindow(), wxJoin(lines, '\n', '\0'), wxICON_INFORMATION);
    } catch (const ExchangeCancelled&) {
        ca::prompt(_("The import was cancelled; the library is unchanged."));
    } catch (const std::exception& error) {
        showError(wxg::mainWindow(), error, _("Nothing was imported: %s"));
    }
}

// No menu label: the studio offers these in its File menu.
const ModuleCommandRegistration g_exportLibrary("export-library", wxString(), runExportLibrary);
const ModuleCommandRegistration g_importLibrary("import-library", wxString(), runImportLibrary);

}  // namespace

}  // namespace vl_app
