#include "app/VantlibAppModule.h"

#include <OdDbDatabase.h>
#include <OdError.h>
#include <UtFile.h>

#include <vl_db/DbVantLibManager.h>

namespace vl_app {

void VantlibAppModule::onDatabaseAddedToEtransmit(const OdDbDatabase* db, ca::TransmittalFiles& files) {
    if (!db)
        return;
    const OdDbObjectId id = vl_db::DbVantLibManager::getInstance(*db);
    if (id.isNull())
        return;
    const OdDbObjectPtr object = id.openObject(OdDb::kForRead);
    if (!object)
        return;
    if (!object->isKindOf(vl_db::DbVantLibManager::desc()))
        throw OdError_NotThatKindOfClass();
    const auto* manager = static_cast<const vl_db::DbVantLibManager*>(object.get());
    if (manager->isPrimaryLibraryEmbedded())
        return;
    const OdString path = ut::getAbsolutePath(manager->primaryLibraryPath(), db->fileName());
    files.push_back(std::make_pair(path, ca::TransmittalGraphNode::kLibraryFile));
}

}  // namespace vl_app
