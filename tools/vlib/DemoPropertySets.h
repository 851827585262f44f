#pragma once
// Property sets of the demo office: its own namespace in the central library, editable, with
// sets for wall finishes, doors and the handover.
#include <memory>

#include <vantlib/Library.h>

namespace vlib::demo {

// Adds the office's namespace and its sets; returns the number of sets.
size_t addOfficePropertySets(const std::shared_ptr<vantlib::Library>& central);

}  // namespace vlib::demo
