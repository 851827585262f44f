#pragma once
// The benchmark's data: plain records from which both the library objects and the raw rows
// of the floor are made, so that both sides store exactly the same values.
#include <string>
#include <vector>

struct MaterialRecord {
    std::string name, description, className, tag1, tag2, layer, uniqueCode, manufacturer;
    int function = 0;
    double thickness1 = 0, thickness2 = 0, density = 0;
};

struct CompositionRecord {
    std::string name, description, typeName, tag, layer;
    int baseType = 1;
    int plyMaterial[3] = {0, 0, 0};  // indices into the material records
    double plyThickness[3] = {0, 0, 0};
    int plyFunction[3] = {0, 0, 0};
};

std::vector<MaterialRecord> makeMaterials(size_t count);
std::vector<CompositionRecord> makeCompositions(size_t count, size_t materialCount);

// The class and tag the filtered queries ask for.
extern const char* const kQueryClass;
extern const char* const kQueryTag;
constexpr int kQueryBaseType = 1;
extern const char* const kQueryCompositionTag;
