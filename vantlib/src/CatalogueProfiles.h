#pragma once
// What the catalogue readers share.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <vantlib/Profile.h>

namespace vantlib {

// A number in the C locale's form, surrounding blanks allowed; none for anything else.
std::optional<double> parseNumber(std::string text);

// A profile of the shape with the given dimensions (millimetres, slopes in radians). Throws
// std::invalid_argument, saying what the row "has", for a negative dimension or a required one
// that is zero or missing.
QcSmartPtr<Profile> buildProfile(const ProfileClass& shape, const std::string& size,
                                 const std::vector<std::pair<ShapeParameter, double>>& values);

// The size of a catalogue's label: "HEA100" -> "100", "LNP20x3" -> "20x3"; a label without a
// leading name is its own size.
std::string sizeOf(const std::string& label);

}  // namespace vantlib
