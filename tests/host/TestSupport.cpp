#include "TestSupport.h"

#include <fstream>

#include <wx/dir.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/utils.h>

#include "Prompt.h"
#include "WxgConfig.h"

TempFolder::TempFolder() {
    const wxString base = wxFileName::CreateTempFileName(wxFileName::GetTempDir() + "/vlhost");
    wxRemoveFile(base);
    m_path = base;
    wxFileName::Mkdir(m_path, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
}

TempFolder::~TempFolder() { wxFileName::Rmdir(m_path, wxPATH_RMDIR_RECURSIVE); }

wxString TempFolder::write(const wxString& name, const std::string& content) const {
    const wxString path = file(name);
    std::ofstream out(path.utf8_string(), std::ios::binary);
    out << content;
    return path;
}

FreshSettings::FreshSettings() {
    m_hadPrevious = wxGetEnv("VL_CONFIG_DIR", &m_previous);
    wxSetEnv("VL_CONFIG_DIR", m_folder.path());
    wxg::WxgConfig::reload();
}

FreshSettings::~FreshSettings() {
    wxg::WxgConfig::reload();
    if (m_hadPrevious)
        wxSetEnv("VL_CONFIG_DIR", m_previous);
    else
        wxUnsetEnv("VL_CONFIG_DIR");
}

void FreshSettings::restart() { wxg::WxgConfig::reload(); }

void useTemporarySettingsFolder() {
    wxString current;
    if (wxGetEnv("VL_CONFIG_DIR", &current) && !current.empty())
        return;
    static TempFolder folder;
    wxSetEnv("VL_CONFIG_DIR", folder.path());
    wxg::WxgConfig::reload();
}

int countPromptLines(const wxString& text) {
    int count = 0;
    for (const wxString& line : ca::promptLog())
        if (line.Contains(text))
            ++count;
    return count;
}
