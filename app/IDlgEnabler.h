#pragma once
// A scoped switch that another host module holds while it runs a library operation whose name
// clashes of certain object types are to be put to the user.
#include <memory>

namespace vl_app {

class IDlgEnabler {
public:
    virtual ~IDlgEnabler() = default;

    // Made for LibraryReactor::DlgEnabler with vantlib::ObjectType: enables the question for
    // the property-set definition kinds.
    template <class Enabler, class Type>
    static std::unique_ptr<IDlgEnabler> create();
};

}  // namespace vl_app
