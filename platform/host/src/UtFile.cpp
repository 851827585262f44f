#include "UtFile.h"

#include "OdMainThread.h"
#include "OdStringWx.h"

namespace ut {

FileName::FileName(const OdString& path) : m_name(toWx(path)) {}
FileName::FileName(const wxString& path) : m_name(path) {}

OdString FileName::fullPath() const { return toOd(m_name.GetFullPath()); }
OdString FileName::fullName() const { return toOd(m_name.GetFullName()); }
OdString FileName::name() const { return toOd(m_name.GetName()); }
OdString FileName::ext() const { return toOd(m_name.GetExt()); }
OdString FileName::dir() const { return toOd(m_name.GetPath()); }
bool FileName::isAbsolute() const { return m_name.IsAbsolute(); }
bool FileName::exists() const { return m_name.FileExists(); }

OdString getAbsolutePath(const OdString& path, const OdString& relativeToFile) {
    if (path.isEmpty())
        return path;
    wxFileName name(toWx(path));
    wxString base;
    if (!relativeToFile.isEmpty()) {
        wxFileName anchor(toWx(relativeToFile));
        anchor.MakeAbsolute();
        base = anchor.GetPath();
    }
    name.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE | wxPATH_NORM_TILDE, base);
    return toOd(name.GetFullPath());
}

void markMainThread() { odSetMainThread(); }

bool isMainThread() { return odIsMainThread(); }

}  // namespace ut
