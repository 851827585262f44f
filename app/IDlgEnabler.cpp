#include "app/IDlgEnabler.h"

#include <set>

#include <vantlib/Types.h>

#include "app/LibraryReactor.h"

namespace vl_app {

template <class Enabler, class Type>
std::unique_ptr<IDlgEnabler> IDlgEnabler::create() {
    // The property-set definition kinds whose imports clash by name and are put to the user.
    return std::unique_ptr<IDlgEnabler>(new Enabler(std::set<Type>{Type(42), Type(43), Type(44)}));
}

template std::unique_ptr<IDlgEnabler> IDlgEnabler::create<LibraryReactor::DlgEnabler, vantlib::ObjectType>();

}  // namespace vl_app
