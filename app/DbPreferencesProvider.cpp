#include "app/DbPreferencesProvider.h"

#include <CaPreferences.h>

namespace vl_app {

void DbPreferencesProvider::setDefaultImperialLibrary(const OdString& path) {
    ca::preferences().set_DefaultVantlibImperial(path);
}

OdString DbPreferencesProvider::defaultImperialLibrary() const { return ca::preferences().DefaultVantlibImperial(); }

void DbPreferencesProvider::setDefaultMetricLibrary(const OdString& path) {
    ca::preferences().set_DefaultVantlibMetric(path);
}

OdString DbPreferencesProvider::defaultMetricLibrary() const { return ca::preferences().DefaultVantlibMetric(); }

void DbPreferencesProvider::setRoamableRootFolder(const OdString& path) {
    ca::preferences().set_RoamableRootFolder(path);
}

OdString DbPreferencesProvider::roamableRootFolder() const { return ca::preferences().RoamableRootFolder(); }

}  // namespace vl_app
