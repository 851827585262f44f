#pragma once
// Storage code's access to the private state of objects (ids, owning library, fields that
// have no public setter).
#include <memory>

#include <vantlib/Composition.h>
#include <vantlib/Library.h>

namespace vantlib {

class LibraryAccess {
public:
    static void setId(Object& object, uint32_t id) { object.m_id = id; }
    static void setLibrary(Object& object, const std::shared_ptr<Library>& library) { object.m_library = library; }
    static void bind(Object& object, uint32_t id, const std::weak_ptr<Library>& library) {
        object.m_id = id;
        object.m_library = library;
    }
    static bool belongsTo(const Object& object, const Library* library) {
        auto owner = object.m_library.lock();
        return owner && owner.get() == library;
    }
    // A copy that keeps id and library (cloneObject() makes an unstored one).
    static QcSmartPtr<Object> exactCopy(const Object& object) { return QcSmartPtr<Object>(object.cloneImpl()); }
    static Tags& tags(AnnotatedObject& object) { return object.m_tags; }
    static CustomValues& customValues(AnnotatedObject& object) { return object.m_customValues; }
    static std::vector<Ply>& plies(Composition& composition) { return composition.m_plies; }
    static void setVariablePlyRaw(Composition& composition, int index) { composition.m_variablePly = index; }
};

}  // namespace vantlib
