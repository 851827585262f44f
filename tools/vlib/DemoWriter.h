#pragma once
// Writes the demo content into libraries and the demo drawing.
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <vector>

#include <vantlib/Library.h>

#include "DemoContent.h"

namespace vlib::demo {

// Stores the materials, then the compositions (whose plies must name materials of the same
// library), in one transaction.
void fillLibrary(const std::shared_ptr<vantlib::Library>& library, const std::vector<Material>& materials,
                 const std::vector<Composition>& compositions);

struct DemoFiles {
    std::filesystem::path drawing;
    std::filesystem::path centralLibrary;
};

// Writes DIR/central-metric.vlib and DIR/demo.vldwg (millimetres, with an embedded project
// library and entities that use both libraries). Each file is built under a temporary name
// and moved into place only when complete, so an earlier demo survives a failure.
DemoFiles writeDemo(const std::filesystem::path& dir, std::ostream& out);

}  // namespace vlib::demo
