#include "WxgConfig.h"

#include <memory>
#include <mutex>

#include <wx/display.h>
#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/tokenzr.h>
#include <wx/toplevel.h>
#include <wx/utils.h>

#include "ConfigSettingsStore.h"

namespace wxg {

namespace {

std::recursive_mutex g_storeMutex;
std::unique_ptr<wxFileConfig> g_store;

wxString configFolder() {
    wxString dir;
    if (wxGetEnv("VL_CONFIG_DIR", &dir) && !dir.empty())
        return dir;
    wxString xdg;
    if (wxGetEnv("XDG_CONFIG_HOME", &xdg) && !xdg.empty())
        return xdg + "/vlstudio";
    return wxGetHomeDir() + "/.config/vlstudio";
}

wxString rectKey(const wxString& key) { return "/WindowRects/" + (key.empty() ? wxString("Default") : key); }

}  // namespace

wxString WxgConfig::storePath() { return configFolder() + wxFILE_SEP_PATH + "vlstudio.ini"; }

wxConfigBase& WxgConfig::store() {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    if (!g_store) {
        const wxString path = storePath();
        wxFileName::Mkdir(wxFileName(path).GetPath(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
        g_store = std::make_unique<wxFileConfig>(wxString(), wxString(), path, wxString(),
                                                 wxCONFIG_USE_LOCAL_FILE);
    }
    return *g_store;
}

void WxgConfig::flush() {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    if (g_store && !g_store->Flush())
        wxLogWarning("Settings could not be written to %s.", storePath());
}

void WxgConfig::reload() {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    if (g_store)
        g_store->Flush();
    g_store.reset();
}

void WxgConfig::connectSdkSettings() {
    OdEdSettingsManager::instance().setStore(std::make_shared<ConfigSettingsStore>());
}

bool WxgConfig::loadWindowRect(const wxString& key, wxRect& rect, wxSize defaultSize) {
    rect = wxRect(wxDefaultPosition, defaultSize);
    long values[4];
    int count = 0;
    wxStringTokenizer parts(readString(rectKey(key)), ",");
    while (parts.HasMoreTokens()) {
        if (count == 4 || !parts.GetNextToken().Trim().Trim(false).ToLong(&values[count]))
            return false;
        ++count;
    }
    if (count != 4 || values[2] <= 0 || values[3] <= 0)
        return false;
    rect = wxRect(int(values[0]), int(values[1]), int(values[2]), int(values[3]));
    return true;
}

void WxgConfig::saveWindowRect(const wxString& key, const wxRect& rect) {
    writeString(rectKey(key), wxString::Format("%d,%d,%d,%d", rect.x, rect.y, rect.width, rect.height));
}

void WxgConfig::restoreWindow(wxTopLevelWindow* window, const wxString& key, wxSize defaultSize) {
    if (!window)
        return;
    wxRect rect;
    if (!loadWindowRect(key, rect, defaultSize)) {
        wxSize size = window->GetSize();
        if (defaultSize.x > 0)
            size.x = defaultSize.x;
        if (defaultSize.y > 0)
            size.y = defaultSize.y;
        window->SetSize(size);
        return;
    }
    // A rectangle saved on a display that is gone would put the window out of reach.
    if (wxDisplay::GetFromPoint(rect.GetTopLeft()) == wxNOT_FOUND) {
        window->SetSize(rect.GetSize());
        window->CentreOnParent();
        return;
    }
    window->SetSize(rect);
}

void WxgConfig::saveWindow(const wxTopLevelWindow* window, const wxString& key) {
    if (!window || window->IsIconized() || window->IsMaximized())
        return;
    saveWindowRect(key, window->GetRect());
}

wxString WxgConfig::readString(const wxString& key, const wxString& fallback) {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    return store().Read(key, fallback);
}

void WxgConfig::writeString(const wxString& key, const wxString& value) {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    store().Write(key, value);
    flush();
}

long WxgConfig::readLong(const wxString& key, long fallback) {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    return store().ReadLong(key, fallback);
}

void WxgConfig::writeLong(const wxString& key, long value) {
    std::lock_guard<std::recursive_mutex> lock(g_storeMutex);
    store().Write(key, value);
    flush();
}

}  // namespace wxg
