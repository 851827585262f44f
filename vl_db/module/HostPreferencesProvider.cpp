#include "HostPreferencesProvider.h"

#include <CaPreferences.h>

namespace vl_db {

void HostPreferencesProvider::setDefaultImperialLibrary(const OdString& path) {
    ca::preferences().set_DefaultVantlibImperial(path);
}

OdString HostPreferencesProvider::defaultImperialLibrary() const {
    return ca::preferences().DefaultVantlibImperial();
}

void HostPreferencesProvider::setDefaultMetricLibrary(const OdString& path) {
    ca::preferences().set_DefaultVantlibMetric(path);
}

OdString HostPreferencesProvider::defaultMetricLibrary() const {
    return ca::preferences().DefaultVantlibMetric();
}

void HostPreferencesProvider::setRoamableRootFolder(const OdString& path) {
    ca::preferences().set_RoamableRootFolder(path);
}

OdString HostPreferencesProvider::roamableRootFolder() const {
    return ca::preferences().RoamableRootFolder();
}

}  // namespace vl_db
