#pragma once
// What the reader and the writer of definition files share: the quantity types and the
// comparison of names.
#include <string>

#include <vl_db/PsdXml.h>

namespace vl_db {
namespace psd {

// The primitive and measure of a quantity type ("Q_LENGTH", ...); false for an unknown one.
bool quantityType(const std::string& qtoType, PsdPrimitive& primitive, std::string& measure);
// The quantity type of a primitive and measure; empty when no quantity type has them.
std::string quantityTypeOf(PsdPrimitive primitive, const std::string& measure);

// Names of properties compare without regard to the case of ASCII letters, as the library's
// names do.
bool sameName(const std::string& a, const std::string& b);

}  // namespace psd
}  // namespace vl_db
