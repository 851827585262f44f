#pragma once
// Checks that the library objects a drawing's entities use exist in the drawing's libraries.
#include <string>
#include <vector>

namespace vlib {

struct DrawingCheck {
    std::vector<std::string> problems;
    unsigned checkedReferences = 0;
    unsigned uncheckedCentralReferences = 0;  // central uses, when no central library was given
};

// Opens the drawing and its embedded or external project library read-only; `centralPath`
// (may be empty) is the central library to check central uses against.
DrawingCheck checkDrawingReferences(const std::string& drawingPath, const std::string& centralPath);

}  // namespace vlib
