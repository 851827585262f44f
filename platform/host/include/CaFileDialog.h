#pragma once
// The host's file-path service: a file dialog that remembers its last folder per dialog key.
#include <wx/string.h>

class wxWindow;

namespace ca {

enum EFileDialogMode { kOpenExistingFile = 0, kSaveFile = 1 };

struct FileDialogRequest {
    wxString dialogKey;          // the last folder is remembered under this key
    wxString title;
    wxString filterDescription;  // e.g. "XML Files"
    wxString defaultExtension;   // without the dot, e.g. "xml"
    wxString defaultFolder;      // used until a folder was remembered
    wxString defaultName;        // proposed file name (saving)
    EFileDialogMode mode = kOpenExistingFile;
    // The host's FILEDIA setting: false asks for the path as text instead of showing the file
    // dialog (for scripts and users who type paths).
    bool showDialog = true;
};

// Shows the dialog (parent: the main window when null). On OK `path` receives the chosen file,
// with the default extension added when a saved name has none, and the result is true; a
// cancel leaves `path` alone and returns false.
bool getFilePath(wxString& path, const FileDialogRequest& request, wxWindow* parent = nullptr);

}  // namespace ca
