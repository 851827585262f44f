#pragma once
// Property sets of the demo's central library: the official sets shipped beside the program in
// a read-only namespace, and the office's own namespace, editable, with sets for wall finishes,
// doors and the handover.
#include <memory>
#include <string>

#include <vantlib/Library.h>

namespace vlib::demo {

// Adds the office's namespace and its sets; returns the number of sets.
size_t addOfficePropertySets(const std::shared_ptr<vantlib::Library>& central);

// Imports the official definition files found beside the program (res/psd) as the read-only
// namespace "IFC4"; returns the number of sets. Without the files nothing is added and 0 is
// returned, with `missing` saying where they were looked for.
size_t addOfficialPropertySets(const std::shared_ptr<vantlib::Library>& central, std::string& missing);

}  // namespace vlib::demo
