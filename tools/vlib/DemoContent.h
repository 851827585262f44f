#pragma once
// The demo content that `vlib demo` writes: a metric central library and the project library of
// the demo drawing. Plain tables, so that the values stay readable and reviewable in one place.
#include <vector>

namespace vlib::demo {

// One hatch as a pattern catalogue names it; scale and angle (degrees) as a drafter would set
// them for a 1:50 section or elevation in millimetres.
struct Hatch {
    const char* pattern;
    double scale;
    double angleDeg;
};

// Material functions as the library numbers them.
enum Function : unsigned {
    kNone = 0,
    kStructure = 1,
    kSubstrate = 2,
    kInsulation = 3,
    kFinish1 = 4,
    kFinish2 = 5,
    kMembrane = 6,
};

struct Material {
    const char* name;
    const char* className;
    const char* description;
    Function function;
    double density;               // kg/m³
    double thermalConductivity;   // W/(m·K)
    double specificHeat;          // J/(kg·K)
    Hatch section;
    Hatch elevation;
    std::vector<const char*> tags;
    std::vector<double> thicknesses;  // mm, the thicknesses the product is sold in
    bool variableThickness;
};

// Base types of compositions as the library numbers them.
enum BaseType : unsigned {
    kWall = 1,
    kRoof = 2,
    kSlab = 4,
};

struct Ply {
    const char* material;
    double thickness;  // mm
    Function function;
    bool variable;
};

struct Composition {
    const char* name;
    const char* className;
    const char* description;
    BaseType baseType;
    std::vector<const char*> tags;
    std::vector<Ply> plies;  // outside to inside, top to bottom
};

const std::vector<Material>& centralMaterials();
const std::vector<Composition>& centralCompositions();

// Edited copies of central objects under the same names, as a project keeps them, plus the
// project's own additions. Every material a project composition uses is in projectMaterials().
const std::vector<Material>& projectMaterials();
const std::vector<Composition>& projectCompositions();

}  // namespace vlib::demo
