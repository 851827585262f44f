#pragma once
// Smart pointer to drawing objects: a QcSmartPtr that also converts down the class tree with a
// check. Converting to a class the object is not a kind of throws OdError_NotThatKindOfClass;
// a null pointer stays null. Use T::cast(object) for a test that returns null instead.
#include <type_traits>

#include "OdError.h"
#include "QcSmartPtr.h"

template <class T>
class OdSmartPtr : public QcSmartPtr<T> {
public:
    OdSmartPtr() = default;
    OdSmartPtr(std::nullptr_t) {}
    OdSmartPtr(T* object) : QcSmartPtr<T>(object) {}
    OdSmartPtr(const QcSmartPtr<T>& other) : QcSmartPtr<T>(other) {}

    template <class U, std::enable_if_t<std::is_convertible<U*, T*>::value, int> = 0>
    OdSmartPtr(const QcSmartPtr<U>& other) : QcSmartPtr<T>(other.get()) {}

    template <class U, std::enable_if_t<!std::is_convertible<U*, T*>::value &&
                                            std::is_base_of<U, T>::value, int> = 0>
    OdSmartPtr(const QcSmartPtr<U>& other) : QcSmartPtr<T>(checkedCast(other.get())) {}

    template <class U, std::enable_if_t<!std::is_convertible<U*, T*>::value &&
                                            std::is_base_of<U, T>::value, int> = 0>
    explicit OdSmartPtr(U* other) : QcSmartPtr<T>(checkedCast(other)) {}

    static OdSmartPtr attach(T* object) { OdSmartPtr p; static_cast<QcSmartPtr<T>&>(p) = QcSmartPtr<T>::attach(object); return p; }

private:
    template <class U>
    static T* checkedCast(U* object) {
        if (!object) return nullptr;
        if (!object->isKindOf(T::desc())) throw OdError_NotThatKindOfClass();
        return static_cast<T*>(object);
    }
};
