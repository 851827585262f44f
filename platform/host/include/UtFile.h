#pragma once
// File-name helpers and the main-thread test.
#include <wx/filename.h>

#include "OdString.h"

namespace ut {

class FileName {
public:
    FileName() = default;
    explicit FileName(const OdString& path);
    explicit FileName(const wxString& path);

    OdString fullPath() const;  // as given, with its folder when it has one
    OdString fullName() const;  // name and extension, without the folder
    OdString name() const;      // name without extension
    OdString ext() const;
    OdString dir() const;
    bool isAbsolute() const;
    bool exists() const;

private:
    wxFileName m_name;
};

// `path` made absolute against the folder of `relativeToFile` (a file name, such as the
// drawing's). An absolute `path` is only normalised; an empty `relativeToFile` means the
// current folder.
OdString getAbsolutePath(const OdString& path, const OdString& relativeToFile);

// The host marks its user-interface thread at start-up.
void markMainThread();
bool isMainThread();

}  // namespace ut
