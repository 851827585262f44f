#pragma once
// The settings store of the host: a wxFileConfig file "vlstudio.ini" in $VL_CONFIG_DIR, or in
// the user's config folder. Every write through these helpers is flushed at once.
#include <wx/config.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

class wxTopLevelWindow;

namespace wxg {

class WxgConfig {
public:
    static wxConfigBase& store();
    static wxString storePath();
    static void flush();
    // Drops the in-memory store; the next use reads the file again (as after a restart).
    static void reload();
    // Makes the SDK's settings manager (OdEdSettingsManager) keep its values in this store.
    static void connectSdkSettings();

    // The rectangle stored under `key`; when none is stored, `rect` gets the default position
    // and `defaultSize` and the result is false.
    static bool loadWindowRect(const wxString& key, wxRect& rect, wxSize defaultSize = wxDefaultSize);
    static void saveWindowRect(const wxString& key, const wxRect& rect);

    // Applies the stored rectangle to a window, keeping it on a visible display.
    static void restoreWindow(wxTopLevelWindow* window, const wxString& key, wxSize defaultSize = wxDefaultSize);
    static void saveWindow(const wxTopLevelWindow* window, const wxString& key);

    static wxString readString(const wxString& key, const wxString& fallback = wxString());
    static void writeString(const wxString& key, const wxString& value);
    static long readLong(const wxString& key, long fallback);
    static void writeLong(const wxString& key, long value);
};

}  // namespace wxg
