// Which central library a drawing uses: the preferences' default for its kind of units.
#include <filesystem>

#include <OdUnits.h>

#include <vl_db/DbPreferencesProvider.h>
#include <vl_db/DocumentLibraries.h>

#include "LibraryOpening.h"

namespace vl_db {

bool isImperialUnit(int insunits) {
    return insunits >= 0 && insunits <= OdDb::kUnitsMax &&
           oddbIsImperialUnit(static_cast<OdDb::UnitsValue>(insunits));
}

OdString centralLibraryPath(int insunits) {
    const DbPreferencesProvider* preferences = DbPreferencesProvider::instance();
    if (!preferences)
        return OdString();
    const OdString configured =
        isImperialUnit(insunits) ? preferences->defaultImperialLibrary() : preferences->defaultMetricLibrary();
    if (configured.isEmpty())
        return configured;
    const std::filesystem::path path(configured.str());
    const OdString root = preferences->roamableRootFolder();
    if (path.is_absolute() || root.isEmpty())
        return detail::normalisedPath(configured);
    return detail::normalisedPath(OdString((std::filesystem::path(root.str()) / path).wstring()));
}

}  // namespace vl_db
