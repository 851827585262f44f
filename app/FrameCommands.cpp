#include "app/common/ErrorMessages.h"
#include "app/FrameCommands.h"

#include <set>
#include <vector>

#include <wx/intl.h>
#include <wx/msgdlg.h>
#include <wx/generic/msgdlgg.h>
#include <wx/progdlg.h>

#include <MainWindow.h>
#include <OdDbDatabase.h>
#include <OdStringWx.h>
#include <Prompt.h>

#include <vantlib/vantlib.h>

#include <vl_db/DocumentLibraries.h>

#include "app/LibraryReactor.h"
#include "app/ModuleCommands.h"

namespace vl_app {

namespace {

template <class T>
void collectKeys(const vantlib::Library& source, std::vector<vantlib::ObjectKey>& keys, std::vector<wxString>& names) {
    std::vector<QcSmartPtr<T>> objects;
    source.get<T>(objects);
    for (const auto& object : objects) {
        keys.emplace_back(T::kType, object->id());
        names.push_back(toWx(object->name()));
    }
}

bool isStored(const vantlib::IdMapping::Value& value) {
    return value.state == vantlib::IdMapping::kCopied || value.state == vantlib::IdMapping::kOverwritten ||
           value.state == vantlib::IdMapping::kRenamed;
}

}  // namespace

LibraryCopyReport copyMaterialsAndCompositions(const std::shared_ptr<vantlib::Library>& target,
                                               const std::shared_ptr<const vantlib::Library>& source,
                                               const CopyProgress& progress) {
    std::vector<vantlib::ObjectKey> keys;
    std::vector<wxString> names;
    collectKeys<vantlib::Material>(*source, keys, names);
    collectKeys<vantlib::Composition>(*source, keys, names);

    LibraryCopyReport report;
    const LibraryReactor::DlgEnabler askAboutClashes({vantlib::kMaterial, vantlib::kComposition});
    vantlib::IdMapping mapping(target);
    vantlib::Transaction transaction(target);
    const unsigned total = unsigned(keys.size());
    for (unsigned i = 0; i < total; ++i) {
        if (progress && !progress(i, total, names[i])) {
            report.cancelled = true;
            return report;
        }
        // One object at a time, so that progress moves; the outer transaction keeps it all or nothing.
        target->copy(source, std::set<vantlib::ObjectKey>{keys[i]}, mapping, vantlib::Library::kSingleTransaction);
    }
    transaction.commit();
    if (progress)
        progress(total, total, wxString());

    for (const auto& entry : mapping)
        if ((entry.first.type == vantlib::kMaterial || entry.first.type == vantlib::kComposition) &&
            isStored(entry.second))
            ++report.copied;
    const LibraryReactor* reactor = LibraryReactor::instance();
    report.skippedMaterials = reactor->skipped(vantlib::kMaterial);
    report.skippedCompositions = reactor->skipped(vantlib::kComposition);
    return report;
}

wxArrayString copyReportLines(const LibraryCopyReport& report) {
    wxArrayString lines;
    lines.push_back(wxString::Format(
        wxPLURAL("%u material or composition copied from the central library into the project library.",
                 "%u materials and compositions copied from the central library into the project library.",
                 report.copied),
        report.copied));
    if (report.skippedMaterials)
        lines.push_back(wxString::Format(
            wxPLURAL("%u material skipped.", "%u materials skipped.", report.skippedMaterials), report.skippedMaterials));
    if (report.skippedCompositions)
        lines.push_back(wxString::Format(
            wxPLURAL("%u composition skipped.", "%u compositions skipped.", report.skippedCompositions),
            report.skippedCompositions));
    return lines;
}

wxString transmittalFileLine(const std::pair<OdString, ca::TransmittalGraphNode::EFileType>& file) {
    if (file.second == ca::TransmittalGraphNode::kLibraryFile)
        return wxString::Format(_("Project library: %s"), toWx(file.first));
    return wxString::Format(_("File of type %d: %s"), int(file.second), toWx(file.first));
}

namespace {

void showLibraryError(const std::exception& error) { showError(wxg::mainWindow(), error); }

void runTransmittal() {
    OdDbDatabase* db = ca::curDb();
    ca::CaApp* app = ca::CaApp::instance();
    if (!db || !app) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    const ca::TransmittalFiles files = app->collectTransmittalFiles(db);
    if (files.empty()) {
        ca::prompt(wxString::Format(_("No files are added to the transmittal of %s."), toWx(db->fileName())));
        return;
    }
    ca::prompt(wxString::Format(_("Files added to the transmittal of %s:"), toWx(db->fileName())));
    for (const auto& file : files)
        ca::prompt("  " + transmittalFileLine(file));
}

void runCopyCentralToProject() {
    try {
        vl_db::DocumentLibraries* libs = vl_db::docLibs(ca::curDb());
        if (!libs) {
            ca::prompt(_("No drawing is open."));
            return;
        }
        const std::shared_ptr<vantlib::Library> project = vl_db::library(libs, vl_db::kDbProject, false);
        const std::shared_ptr<vantlib::Library> central = vl_db::library(libs, vl_db::kDbCentral, false);
        if (!project) {
            ca::prompt(_("The drawing has no project library."));
            return;
        }
        if (!vl_db::writable(libs, vl_db::kDbProject)) {
            ca::prompt(_("The project library is read-only."));
            return;
        }
        if (!central) {
            ca::prompt(_("The drawing has no central library."));
            return;
        }
        wxProgressDialog progressDialog(_("Copy central library into project"),
                                        _("Copying materials and compositions into the project library."), 100,
                                        wxg::mainWindow(), wxPD_APP_MODAL | wxPD_AUTO_HIDE | wxPD_CAN_ABORT | wxPD_SMOOTH);
        const LibraryCopyReport report = copyMaterialsAndCompositions(
            project, central, [&progressDialog](unsigned done, unsigned total, const wxString& name) {
                const int percent = total ? int(done * 100 / total) : 100;
                if (name.empty())
                    return progressDialog.Update(percent);
                return progressDialog.Update(percent, wxString::Format(_("Copying %s into the project library."), name));
            });
        if (report.cancelled) {
            ca::prompt(_("The copy was cancelled; the project library is unchanged."));
            return;
        }
        for (const wxString& line : copyReportLines(report))
            ca::prompt(line);
    } catch (const std::exception& error) {
        showLibraryError(error);
    }
}

void runProjectInfo() {
    ca::CaApp* app = ca::CaApp::instance();
    OdDbDatabase* db = ca::curDb();
    if (!db || !app || !app->hasLibraryInfoProvider()) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    // The generic dialog is a window of our own, so the studio can picture it.
    wxGenericMessageDialog dialog(wxg::mainWindow(), app->libraryInfo(db), _("BIM project information"),
                                  wxOK | wxICON_INFORMATION);
    dialog.ShowModal();
}

const ModuleCommandRegistration g_transmittal("transmittal", wxTRANSLATE("Collect files for transmittal"),
                                              runTransmittal);
const ModuleCommandRegistration g_copyCentral("copy-central-to-project",
                                              wxTRANSLATE("Copy central library into project"),
                                              runCopyCentralToProject);
const ModuleCommandRegistration g_projectInfo("bimprojectinfo", wxTRANSLATE("BIM project information"),
                                              runProjectInfo);

}  // namespace

}  // namespace vl_app
