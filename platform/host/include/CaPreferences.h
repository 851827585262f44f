#pragma once
// Preferences of the host application, kept in the settings store (see WxgConfig.h).
#include <vector>

#include "OdString.h"

namespace oa {

class AppPreferences {
public:
    virtual ~AppPreferences() = default;

    // Folder for user files that roam with the user's profile.
    OdString RoamableRootFolder() const;
    void set_RoamableRootFolder(const OdString& folder);

    // Folders searched for referenced files, separated by ';'.
    OdString ReferenceSearchPaths() const;
    void set_ReferenceSearchPaths(const OdString& paths);
    std::vector<OdString> referenceSearchPathList() const;

protected:
    static OdString readString(const wchar_t* key, const OdString& fallback);
    static void writeString(const wchar_t* key, const OdString& value);
};

AppPreferences& appPreferences();

}  // namespace oa

namespace ca {

class Preferences : public oa::AppPreferences {
public:
    // Central library used for new drawings in metric and imperial units.
    OdString DefaultVantlibMetric() const;
    void set_DefaultVantlibMetric(const OdString& path);
    OdString DefaultVantlibImperial() const;
    void set_DefaultVantlibImperial(const OdString& path);

    // Answer to library name clashes that is used without asking: 0 ask, 1 skip, 2 overwrite,
    // 3 rename.
    unsigned VantlibDefaultClashAnswer() const;
    void set_VantlibDefaultClashAnswer(unsigned answer);

    // Points both default libraries at `path` for this run only; nothing is written to the
    // store. Setting a default library afterwards replaces the override.
    void overrideDefaultLibraries(const OdString& path);

private:
    OdString m_metricOverride;
    OdString m_imperialOverride;
};

Preferences& preferences();

}  // namespace ca
