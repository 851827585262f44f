// Questions the editors ask about classes and custom properties.
#include <algorithm>

#include <vantlib/Library.h>
#include <vantlib/Material.h>

#include "LibraryStore.h"
#include "Text.h"

namespace vantlib {

bool setClass(const QcSmartPtr<Material>& material, const OdString& className) {
    if (!material)
        return false;
    if (className.isEmpty()) {
        material->set_type(QcSmartPtr<MaterialType>());
        return true;
    }
    std::shared_ptr<Library> library = material->library();
    if (!library) {
        material->set_type(MaterialType::create(className));
        return true;
    }
    QcSmartPtr<MaterialType> found = library->get<MaterialType>(NameKey(className));
    if (!found)
        return false;
    material->set_type(found);
    return true;
}

bool isMaterialClassUsed(const std::shared_ptr<const Library>& library, const QcSmartPtr<MaterialType>& materialClass) {
    if (!library || !materialClass)
        return false;
    uint32_t id = materialClass->id();
    LibraryStore& store = library->store();
    if (id == 0 || materialClass->library().get() != library.get())
        id = store.findId(kMaterialType, materialClass->name());
    return id != 0 && store.isReferenced(kMaterialType, id);
}

std::vector<QcSmartPtr<CustomProperty>> getCustomProperties(const std::shared_ptr<const Library>& library,
                                                            ObjectType objectType) {
    std::vector<QcSmartPtr<CustomProperty>> all, result;
    if (!library)
        return result;
    library->get<CustomProperty>(all);
    for (const auto& property : all)
        if (objectType == kUnknownObject || property->appliesTo(objectType))
            result.push_back(property);
    std::sort(result.begin(), result.end(), [](const QcSmartPtr<CustomProperty>& a, const QcSmartPtr<CustomProperty>& b) {
        return foldCase(a->name()) < foldCase(b->name());
    });
    return result;
}

bool isCustomPropUsed(const std::shared_ptr<const Library>& library, const QcSmartPtr<CustomProperty>& property) {
    if (!library || !property)
        return false;
    uint32_t id = property->id();
    LibraryStore& store = library->store();
    if (id == 0 || property->library().get() != library.get())
        id = store.findId(kCustomProperty, property->name());
    return id != 0 && store.isReferenced(kCustomProperty, id);
}

}  // namespace vantlib
