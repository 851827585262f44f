#pragma once
// Editing a library object in place, as the library dialogs do: every change is written into
// the object and saved in its library at once. A failure is reported and the object read back
// from its library, so that the dialog shows what is stored and loses nothing saved before.
#include <exception>
#include <functional>
#include <memory>

#include <QcSmartPtr.h>

#include <vantlib/Library.h>

namespace vl_app {

using ErrorReporter = std::function<void(const std::exception&)>;

// Saves the object in its library; true when it was saved, else the failure was reported.
template <class T>
bool saveObject(const QcSmartPtr<T>& object, const ErrorReporter& report) {
    try {
        object->save();
        return true;
    } catch (const std::exception& error) {
        report(error);
        return false;
    }
}

// Applies `change` to the object and, when `save`, saves it. On a failure the object becomes
// the stored one again (when the library has it). True when everything succeeded.
template <class T>
bool changeObject(QcSmartPtr<T>& object, const std::shared_ptr<vantlib::Library>& library, bool save,
                  const std::function<void(T&)>& change, const ErrorReporter& report) {
    try {
        change(*object);
        if (save)
            object->save();
        return true;
    } catch (const std::exception& error) {
        report(error);
        if (library && object->id() != 0) {
            if (auto stored = library->get<T>(object->id()))
                object = stored;
        }
        return false;
    }
}

}  // namespace vl_app
