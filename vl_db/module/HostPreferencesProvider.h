#pragma once
// Library preferences read from and written to the host's preference store.
#include <vl_db/DbPreferencesProvider.h>

namespace vl_db {

class HostPreferencesProvider : public DbPreferencesProvider {
public:
    void setDefaultImperialLibrary(const OdString& path) override;
    OdString defaultImperialLibrary() const override;
    void setDefaultMetricLibrary(const OdString& path) override;
    OdString defaultMetricLibrary() const override;
    void setRoamableRootFolder(const OdString& path) override;
    OdString roamableRootFolder() const override;
};

}  // namespace vl_db
