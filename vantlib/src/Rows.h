#pragma once
// Column layout of the material and composition rows, shared by reading and writing through
// their kind descriptions (Kinds.cpp). Columns holding references are bound and read by the
// generic code; these functions handle the object's own values.
#include <set>
#include <string>
#include <vector>

#include <vantlib/Composition.h>
#include <vantlib/Material.h>

#include "Statement.h"

namespace vantlib {

// Written columns of a material, in bind order (class_id, sect_layer_id and elev_layer_id
// are references).
const std::vector<std::string>& materialColumns();
// Fills a material from the current row; false when the row holds values this version
// cannot represent (the caller reports it and leaves it out).
bool readMaterialRow(const Statement& row, Object& material);
void bindMaterialRow(Statement& stmt, const Object& material);

// Written columns of a composition (type_id and layer_id are references).
const std::vector<std::string>& compositionColumns();
bool readCompositionRow(const Statement& row, Object& composition);
void bindCompositionRow(Statement& stmt, const Object& composition);

std::string thicknessesToText(const std::set<double>& values);
std::set<double> thicknessesFromText(const std::string& text);

}  // namespace vantlib
