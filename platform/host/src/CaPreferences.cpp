#include "CaPreferences.h"

#include <wx/stdpaths.h>
#include <wx/tokenzr.h>

#include "OdStringWx.h"
#include "WxgConfig.h"

namespace oa {

namespace {
const wchar_t* const kRoamableRoot = L"/Preferences/RoamableRootFolder";
const wchar_t* const kSearchPaths = L"/Preferences/ReferenceSearchPaths";
}  // namespace

OdString AppPreferences::readString(const wchar_t* key, const OdString& fallback) {
    return toOd(wxg::WxgConfig::readString(key, toWx(fallback)));
}

void AppPreferences::writeString(const wchar_t* key, const OdString& value) {
    wxg::WxgConfig::writeString(key, toWx(value));
}

OdString AppPreferences::RoamableRootFolder() const {
    return readString(kRoamableRoot, toOd(wxStandardPaths::Get().GetUserDataDir()));
}

void AppPreferences::set_RoamableRootFolder(const OdString& folder) { writeString(kRoamableRoot, folder); }

OdString AppPreferences::ReferenceSearchPaths() const { return readString(kSearchPaths, OdString()); }

void AppPreferences::set_ReferenceSearchPaths(const OdString& paths) { writeString(kSearchPaths, paths); }

std::vector<OdString> AppPreferences::referenceSearchPathList() const {
    std::vector<OdString> result;
    wxStringTokenizer parts(toWx(ReferenceSearchPaths()), ";", wxTOKEN_STRTOK);
    while (parts.HasMoreTokens()) {
        wxString part = parts.GetNextToken().Trim().Trim(false);
        if (!part.empty())
            result.push_back(toOd(part));
    }
    return result;
}

AppPreferences& appPreferences() { return ca::preferences(); }

}  // namespace oa

namespace ca {

namespace {
const wchar_t* const kDefaultMetric = L"/Preferences/DefaultVantlibMetric";
const wchar_t* const kDefaultImperial = L"/Preferences/DefaultVantlibImperial";
const wchar_t* const kClashAnswer = L"/Preferences/VantlibDefaultClashAnswer";
}  // namespace

OdString Preferences::DefaultVantlibMetric() const {
    return m_metricOverride.isEmpty() ? readString(kDefaultMetric, OdString()) : m_metricOverride;
}

void Preferences::set_DefaultVantlibMetric(const OdString& path) {
    m_metricOverride = OdString();
    writeString(kDefaultMetric, path);
}

OdString Preferences::DefaultVantlibImperial() const {
    return m_imperialOverride.isEmpty() ? readString(kDefaultImperial, OdString()) : m_imperialOverride;
}

void Preferences::set_DefaultVantlibImperial(const OdString& path) {
    m_imperialOverride = OdString();
    writeString(kDefaultImperial, path);
}

unsigned Preferences::VantlibDefaultClashAnswer() const {
    const long value = wxg::WxgConfig::readLong(kClashAnswer, 0);
    return value < 0 ? 0u : static_cast<unsigned>(value);
}

void Preferences::set_VantlibDefaultClashAnswer(unsigned answer) {
    wxg::WxgConfig::writeLong(kClashAnswer, static_cast<long>(answer));
}

void Preferences::overrideDefaultLibraries(const OdString& path) {
    m_metricOverride = path;
    m_imperialOverride = path;
}

Preferences& preferences() {
    static Preferences instance;
    return instance;
}

}  // namespace ca
