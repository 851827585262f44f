#pragma once
// Where the central libraries are: the preferences of the host, reached through an installed
// provider. The default central library of a drawing is the metric or the imperial one,
// chosen by the drawing's units; a relative path is taken against the roamable root folder.
#include <OdString.h>

namespace vl_db {

class DbPreferencesProvider {
public:
    virtual ~DbPreferencesProvider();

    virtual void setDefaultImperialLibrary(const OdString& path) = 0;
    virtual OdString defaultImperialLibrary() const = 0;
    virtual void setDefaultMetricLibrary(const OdString& path) = 0;
    virtual OdString defaultMetricLibrary() const = 0;
    virtual void setRoamableRootFolder(const OdString& path) = 0;
    virtual OdString roamableRootFolder() const = 0;

    // The installed provider or null. The caller keeps ownership of what it installs and
    // withdraws it (setInstance(nullptr)) before deleting it.
    static DbPreferencesProvider* instance();
    static void setInstance(DbPreferencesProvider* provider);
};

// Preferences held in memory: for tools that take the library paths from their command line
// and for processes without a host.
class MemoryPreferencesProvider : public DbPreferencesProvider {
public:
    MemoryPreferencesProvider() = default;
    MemoryPreferencesProvider(const OdString& metric, const OdString& imperial, const OdString& root = OdString())
        : m_metric(metric), m_imperial(imperial), m_root(root) {}

    void setDefaultImperialLibrary(const OdString& path) override { m_imperial = path; }
    OdString defaultImperialLibrary() const override { return m_imperial; }
    void setDefaultMetricLibrary(const OdString& path) override { m_metric = path; }
    OdString defaultMetricLibrary() const override { return m_metric; }
    void setRoamableRootFolder(const OdString& path) override { m_root = path; }
    OdString roamableRootFolder() const override { return m_root; }

private:
    OdString m_metric;
    OdString m_imperial;
    OdString m_root;
};

}  // namespace vl_db
