#pragma once
// Temporary folders and the settings store of a test.
#include <wx/string.h>

// A new empty folder under the system's temp folder, removed with its contents at destruction.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const wxString& path() const { return m_path; }
    wxString file(const wxString& name) const { return m_path + "/" + name; }
    // Writes `content` into the file `name`; returns its path.
    wxString write(const wxString& name, const std::string& content) const;

private:
    wxString m_path;
};

// Points the settings store at a fresh folder for the life of the object.
class FreshSettings {
public:
    FreshSettings();
    ~FreshSettings();
    const TempFolder& folder() const { return m_folder; }
    // Drops the in-memory settings, as a restart of the program does.
    void restart();

private:
    TempFolder m_folder;
    wxString m_previous;
    bool m_hadPrevious;
};

// Points the settings store at a temporary folder unless VL_CONFIG_DIR is set already, so that
// no test touches the user's own settings.
void useTemporarySettingsFolder();

// The prompt lines that contain `text`.
int countPromptLines(const wxString& text);
