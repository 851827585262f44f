#include "ConfigSettingsStore.h"

#include "OdStringWx.h"
#include "WxgConfig.h"

namespace wxg {

namespace {
const wxString kGroup = "/Settings";

// Names may hold characters wxFileConfig treats as structure ('/'); those are escaped.
wxString entryKey(const OdString& name) {
    wxString key = toWx(name);
    key.Replace("%", "%25");
    key.Replace("/", "%2F");
    return kGroup + "/" + key;
}

OdString nameOfEntry(wxString entry) {
    entry.Replace("%2F", "/");
    entry.Replace("%25", "%");
    return toOd(entry);
}
}  // namespace

bool ConfigSettingsStore::read(const OdString& name, OdTypedValue& value) {
    wxConfigBase& config = WxgConfig::store();
    const wxString key = entryKey(name);
    if (!config.HasEntry(key))
        return false;
    try {
        value = OdTypedValue::fromText(toOd(config.Read(key, wxString())));
        return true;
    } catch (const OdError&) {
        return false;  // an entry edited by hand into something unreadable counts as absent
    }
}

void ConfigSettingsStore::write(const OdString& name, const OdTypedValue& value) {
    WxgConfig::writeString(entryKey(name), toWx(value.toText()));
}

void ConfigSettingsStore::remove(const OdString& name) {
    WxgConfig::store().DeleteEntry(entryKey(name), false);
    WxgConfig::flush();
}

std::vector<OdString> ConfigSettingsStore::names() {
    std::vector<OdString> result;
    wxConfigBase& config = WxgConfig::store();
    const wxString oldPath = config.GetPath();
    config.SetPath(kGroup);
    wxString entry;
    long cookie = 0;
    for (bool more = config.GetFirstEntry(entry, cookie); more; more = config.GetNextEntry(entry, cookie))
        result.push_back(nameOfEntry(entry));
    config.SetPath(oldPath);
    return result;
}

void ConfigSettingsStore::flush() { WxgConfig::flush(); }

}  // namespace wxg
