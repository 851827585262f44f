#pragma once
// Column layout of the material and composition rows, shared by reading and writing.
#include <memory>
#include <string>

#include <vantlib/Composition.h>
#include <vantlib/Material.h>

#include "Statement.h"

namespace vantlib {

// SELECT of a material row with the names of its class and layers; ends with the FROM and
// joins, so a WHERE clause may follow (table alias m, class alias c).
extern const char* const kMaterialSelect;
// INSERT / UPDATE binding the columns 1..kMaterialColumns (UPDATE binds the id last).
extern const char* const kMaterialInsert;
extern const char* const kMaterialUpdate;
constexpr int kMaterialColumns = 46;

struct MaterialRefs {
    uint32_t classId = 0;
    uint32_t sectionLayerId = 0;
    uint32_t elevationLayerId = 0;
};

// Fills a material from the current row; false when the row holds values this version
// cannot represent (the caller reports it and leaves it out).
bool readMaterialRow(const Statement& row, Material& material, const std::weak_ptr<Library>& library);
void bindMaterialRow(Statement& stmt, const Material& material, const MaterialRefs& refs);

// Composition rows (alias k, composition type alias ct).
extern const char* const kCompositionSelect;
extern const char* const kCompositionInsert;
extern const char* const kCompositionUpdate;
constexpr int kCompositionColumns = 8;

struct CompositionRefs {
    uint32_t typeId = 0;
    uint32_t layerId = 0;
};

bool readCompositionRow(const Statement& row, Composition& composition, const std::weak_ptr<Library>& library);
void bindCompositionRow(Statement& stmt, const Composition& composition, const CompositionRefs& refs);

std::string thicknessesToText(const std::set<double>& values);
std::set<double> thicknessesFromText(const std::string& text);

}  // namespace vantlib
