#pragma once
// The drawing-side manager's library preferences, kept in the host's preferences.
#include <vl_db/DbPreferencesProvider.h>

namespace vl_app {

class DbPreferencesProvider : public vl_db::DbPreferencesProvider {
public:
    void setDefaultImperialLibrary(const OdString& path) override;
    OdString defaultImperialLibrary() const override;
    void setDefaultMetricLibrary(const OdString& path) override;
    OdString defaultMetricLibrary() const override;
    void setRoamableRootFolder(const OdString& path) override;
    OdString roamableRootFolder() const override;
};

}  // namespace vl_app
