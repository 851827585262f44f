#include "CaFileDialog.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/textdlg.h>

#include "MainWindow.h"
#include "WxgConfig.h"

namespace ca {

namespace {
wxString folderKey(const wxString& dialogKey) {
    return "/FileDialogs/" + (dialogKey.empty() ? wxString("Default") : dialogKey);
}
}  // namespace

bool getFilePath(wxString& path, const FileDialogRequest& request, wxWindow* parent) {
    wxString wildcard;
    if (!request.defaultExtension.empty())
        wildcard = wxString::Format("%s (*.%s)|*.%s|", request.filterDescription, request.defaultExtension,
                                    request.defaultExtension);
    wildcard += _("All files") + "|*";
    const wxString folder = wxg::WxgConfig::readString(folderKey(request.dialogKey), request.defaultFolder);
    if (!request.showDialog) {
        wxTextEntryDialog entry(parent ? parent : wxg::mainWindow(), _("Path of the file:"), request.title,
                                wxFileName(folder, request.defaultName).GetFullPath());
        if (entry.ShowModal() != wxID_OK || entry.GetValue().empty())
            return false;
        wxFileName typed(entry.GetValue());
        if (request.mode == kSaveFile && !typed.HasExt() && !request.defaultExtension.empty())
            typed.SetExt(request.defaultExtension);
        typed.MakeAbsolute(folder);
        wxg::WxgConfig::writeString(folderKey(request.dialogKey), typed.GetPath());
        path = typed.GetFullPath();
        return true;
    }
    const long style = request.mode == kSaveFile ? wxFD_SAVE | wxFD_OVERWRITE_PROMPT : wxFD_OPEN | wxFD_FILE_MUST_EXIST;
    wxFileDialog dialog(parent ? parent : wxg::mainWindow(), request.title, folder, request.defaultName, wildcard,
                        style);
    if (dialog.ShowModal() != wxID_OK)
        return false;

    wxFileName chosen(dialog.GetPath());
    if (request.mode == kSaveFile && !chosen.HasExt() && !request.defaultExtension.empty())
        chosen.SetExt(request.defaultExtension);
    if (chosen.GetPath().empty())
        chosen.SetPath(folder);
    wxg::WxgConfig::writeString(folderKey(request.dialogKey), chosen.GetPath());
    path = chosen.GetFullPath();
    return true;
}

}  // namespace ca
