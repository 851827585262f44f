// Demo materials. Physical values are design values of the kind that EN ISO 10456 and product
// data sheets give (density kg/m³, thermal conductivity W/(m·K), specific heat J/(kg·K)); hatch
// names are those of the host's pattern catalogue, with scales that suit a metric drawing in
// millimetres.
#include "DemoContent.h"

namespace vlib::demo {

namespace {

const Hatch kConcreteSection{"CONCRETE", 10.0, 0.0};
const Hatch kReinforcedSection{"DIAG", 25.0, 0.0};
const Hatch kMasonrySection{"DIAG", 20.0, 0.0};
const Hatch kBrickElevation{"BRICK", 10.0, 0.0};
const Hatch kBlockElevation{"BLOCK", 20.0, 0.0};
const Hatch kStoneElevation{"STONE", 20.0, 0.0};
const Hatch kTimberSection{"WOOD", 10.0, 0.0};
const Hatch kBoardSection{"DASH", 10.0, 0.0};
const Hatch kSteelSection{"STEEL", 10.0, 0.0};
const Hatch kMetalSection{"BRONZE", 10.0, 0.0};
const Hatch kInsulationSection{"INSUL", 10.0, 0.0};
const Hatch kFoamSection{"DIAG-CROSS", 10.0, 0.0};
const Hatch kGypsumSection{"SAND", 5.0, 0.0};
const Hatch kGlassSection{"GLASS", 10.0, 0.0};
const Hatch kGlassElevation{"DIAG-WIDE", 20.0, 0.0};
const Hatch kMembraneSection{"SOLID", 1.0, 0.0};
const Hatch kRenderSection{"SAND", 3.0, 0.0};
const Hatch kTileSection{"PLAST", 10.0, 0.0};
const Hatch kRoofTileElevation{"BLOCK", 15.0, 0.0};
const Hatch kEarthSection{"EARTH", 20.0, 0.0};
const Hatch kGravelSection{"GRAVEL", 20.0, 0.0};
const Hatch kPlain{"SOLID", 1.0, 0.0};
const Hatch kNoHatch{"", 1.0, 0.0};

}  // namespace

const std::vector<Material>& centralMaterials() {
    static const std::vector<Material> materials{
        // Concrete
        {"Concrete C20/25", "Concrete", "Plain in-situ concrete, blinding and mass fill", kStructure,
         2300, 2.0, 1000, kConcreteSection, kPlain, {"structural", "non-combustible"}, {50, 100, 150}, false},
        {"Concrete C30/37", "Concrete", "Reinforced in-situ concrete, 1 % reinforcement", kStructure,
         2400, 2.3, 1000, kReinforcedSection, kPlain, {"structural", "load-bearing", "non-combustible"},
         {160, 180, 200, 220, 250, 300}, false},
        {"Concrete C35/45", "Concrete", "Reinforced concrete for exposed and basement elements, 2 % reinforcement",
         kStructure, 2400, 2.5, 1000, kReinforcedSection, kPlain, {"structural", "load-bearing", "exterior"},
         {200, 250, 300}, false},
        {"Precast concrete C45/55", "Concrete", "Precast hollow-core and solid elements", kStructure,
         2450, 2.5, 1000, kReinforcedSection, kPlain, {"structural", "prefabricated"}, {200, 265, 320}, false},
        {"Lightweight concrete LC16/18", "Concrete", "Lightweight aggregate concrete, closed structure",
         kStructure, 1600, 0.81, 1000, kConcreteSection, kPlain, {"structural", "thermal"}, {150, 200}, false},
        {"Autoclaved aerated concrete AAC 4/500", "Masonry", "Aerated concrete blocks, thin-bed mortar",
         kStructure, 500, 0.12, 1000, kMasonrySection, kBlockElevation, {"load-bearing", "thermal"},
         {240, 300, 365}, false},
        {"Cement screed CT-C25-F4", "Concrete", "Floating cement screed on impact sound insulation",
         kSubstrate, 2000, 1.4, 1000, kConcreteSection, kPlain, {"interior"}, {50, 60, 70}, false},
        // Masonry and stone
        {"Clay brick, solid", "Masonry", "Solid facing brick NF 240x115x71", kStructure, 1800, 0.81, 1000,
         kMasonrySection, kBrickElevation, {"load-bearing", "exterior", "non-combustible"}, {115, 240}, false},
        {"Clay block, perforated", "Masonry", "Vertically perforated clay block, general-purpose mortar",
         kStructure, 800, 0.33, 1000, kMasonrySection, kBlockElevation, {"load-bearing", "thermal"},
         {175, 240, 365}, false},
        {"Calcium silicate block", "Masonry", "Calcium silicate units, thin-bed mortar", kStructure,
         1800, 0.99, 1000, kMasonrySection, kBlockElevation, {"load-bearing", "acoustic"}, {115, 175, 240}, false},
        {"Concrete block", "Masonry", "Dense aggregate concrete block", kStructure, 2000, 1.1, 1000,
         kMasonrySection, kBlockElevation, {"load-bearing", "non-combustible"}, {100, 140, 190}, false},
        {"Granite", "Stone", "Natural granite, flamed finish", kFinish1, 2700, 2.8, 800, {"PLAST", 20.0, 0.0},
         kStoneElevation, {"exterior", "non-combustible"}, {30, 40}, false},
        {"Limestone", "Stone", "Natural limestone cladding, honed", kFinish1, 2200, 1.7, 1000,
         {"PLAST", 20.0, 0.0}, kStoneElevation, {"exterior"}, {30, 50}, false},
        // Timber and wood-based boards
        {"Softwood C24", "Timber", "Structural spruce, kiln dried to 15 % moisture", kStructure, 450, 0.13, 1600,
         kTimberSection, {"BLOCK", 10.0, 0.0}, {"structural", "renewable"}, {60, 80, 100, 120, 140, 160, 200}, false},
        {"Hardwood oak", "Timber", "European oak, planed", kFinish1, 700, 0.18, 1600, kTimberSection,
         {"PARQUET", 10.0, 0.0}, {"interior", "renewable"}, {20, 22}, false},
        {"Glued laminated timber GL24h", "Timber", "Homogeneous glulam beams and columns", kStructure,
         450, 0.13, 1600, kTimberSection, kPlain, {"structural", "renewable"}, {100, 120, 140, 160, 200}, false},
        {"Cross-laminated timber", "Timber", "Five-layer CLT panel, visible quality one side", kStructure,
         470, 0.12, 1600, kTimberSection, kPlain, {"structural", "load-bearing", "renewable"},
         {100, 120, 140, 160, 200}, false},
        {"Oriented strand board OSB/3", "Timber", "Load-bearing board for humid conditions, also vapour retarder",
         kSubstrate, 650, 0.13, 1700, kBoardSection, kPlain, {"renewable"}, {12, 15, 18, 22}, false},
        {"Plywood, birch", "Timber", "Exterior-grade birch plywood", kSubstrate, 650, 0.17, 1600, kBoardSection,
         kPlain, {"renewable"}, {9, 12, 15, 18}, false},
        {"Wood fibre insulation board", "Insulation", "Rigid wood fibre board, render carrier", kInsulation,
         160, 0.040, 2100, kInsulationSection, kPlain, {"thermal", "renewable"}, {40, 60, 80, 100}, false},
        // Metals
        {"Structural steel S235", "Metal", "Hot-rolled structural steel", kStructure, 7850, 50.0, 450,
         kSteelSection, kPlain, {"structural", "non-combustible"}, {}, false},
        {"Structural steel S355", "Metal", "Hot-rolled high-strength structural steel", kStructure, 7850, 50.0, 450,
         kSteelSection, kPlain, {"structural", "non-combustible"}, {}, false},
        {"Reinforcing steel B500B", "Metal", "Ribbed reinforcing bars and mesh", kStructure, 7850, 50.0, 450,
         kSteelSection, kPlain, {"structural"}, {}, false},
        {"Stainless steel 1.4301", "Metal", "Austenitic stainless steel sheet and fixings", kFinish1, 7900, 17.0, 500,
         kMetalSection, kPlain, {"exterior", "non-combustible"}, {1, 1.5, 2}, false},
        {"Aluminium EN AW-6060", "Metal", "Extruded aluminium alloy for frames and cladding rails", kFinish1,
         2700, 160.0, 880, kMetalSection, kPlain, {"exterior", "non-combustible"}, {2, 3}, false},
        {"Copper sheet", "Metal", "Rolled copper sheet, standing seam", kFinish1, 8900, 380.0, 380, kMetalSection,
         {"LINE", 5.0, 0.0}, {"exterior", "roofing"}, {0.6, 0.7}, false},
        {"Zinc sheet", "Metal", "Titanium zinc sheet, standing seam", kFinish1, 7200, 110.0, 380, kMetalSection,
         {"LINE", 5.0, 0.0}, {"exterior", "roofing"}, {0.7, 0.8}, false},
        // Insulation
        {"Mineral wool, glass", "Insulation", "Glass wool batts between studs and rafters", kInsulation,
         30, 0.035, 1030, kInsulationSection, kNoHatch, {"thermal", "acoustic", "non-combustible"},
         {50, 75, 100, 140, 160, 200}, true},
        {"Mineral wool, stone", "Insulation", "Stone wool slab for facades and fire stops", kInsulation,
         140, 0.038, 1030, kInsulationSection, kNoHatch, {"thermal", "fire-resistant", "non-combustible"},
         {60, 80, 100, 120, 160, 200}, true},
        {"Expanded polystyrene EPS 035", "Insulation", "EPS facade board for external thermal insulation composite systems",
         kInsulation, 20, 0.035, 1450, kFoamSection, kNoHatch, {"thermal", "exterior"},
         {80, 100, 120, 140, 160, 200}, true},
        {"Extruded polystyrene XPS 035", "Insulation", "Moisture-resistant board for perimeter and inverted roofs",
         kInsulation, 35, 0.035, 1450, kFoamSection, kNoHatch, {"thermal", "waterproof"}, {60, 80, 100, 120, 160}, true},
        {"Polyisocyanurate PIR 023", "Insulation", "Foil-faced PIR board, tapered for flat roofs", kInsulation,
         32, 0.023, 1400, kFoamSection, kNoHatch, {"thermal", "roofing"}, {80, 100, 120, 140, 160}, true},
        {"Cellulose fibre, blown", "Insulation", "Loose-fill recycled cellulose, blown into cavities", kInsulation,
         50, 0.040, 2000, kInsulationSection, kNoHatch, {"thermal", "renewable"}, {}, true},
        {"Impact sound insulation EPS-T", "Insulation", "Elastified EPS under floating screeds", kInsulation,
         15, 0.040, 1450, kFoamSection, kNoHatch, {"acoustic"}, {20, 30}, false},
        // Gypsum
        {"Gypsum plasterboard type A", "Gypsum", "Standard gypsum plasterboard 12.5 mm", kFinish1, 700, 0.21, 1000,
         kGypsumSection, kPlain, {"interior"}, {12.5, 15}, false},
        {"Gypsum plasterboard type DF", "Gypsum", "Fire-resistant gypsum board with glass fibre reinforcement",
         kFinish1, 800, 0.25, 1000, kGypsumSection, kPlain, {"interior", "fire-resistant"}, {12.5, 15, 18}, false},
        {"Gypsum fibreboard", "Gypsum", "Cellulose-reinforced gypsum board, bracing", kSubstrate, 1150, 0.32, 1100,
         kGypsumSection, kPlain, {"interior", "acoustic"}, {10, 12.5, 15}, false},
        {"Gypsum plaster", "Gypsum", "Single-coat gypsum plaster on masonry", kFinish1, 1200, 0.43, 1000,
         kRenderSection, kPlain, {"interior"}, {10, 15}, false},
        // Glass
        {"Float glass", "Glass", "Clear soda-lime float glass", kFinish1, 2500, 1.0, 750, kGlassSection,
         kGlassElevation, {"exterior"}, {4, 6, 8, 10}, false},
        {"Laminated safety glass", "Glass", "Two float panes bonded with PVB interlayer", kFinish1, 2500, 1.0, 750,
         kGlassSection, kGlassElevation, {"exterior", "safety"}, {8.76, 10.76, 12.76}, false},
        // Membranes
        {"Bituminous membrane", "Membrane", "Polymer-modified bitumen sheet, two layers", kMembrane, 1100, 0.23, 1000,
         kMembraneSection, kNoHatch, {"waterproof", "roofing"}, {4, 5}, false},
        {"Polyethylene vapour barrier", "Membrane", "Low-density PE sheet, sd 100 m", kMembrane, 920, 0.33, 2200,
         kMembraneSection, kNoHatch, {"interior"}, {0.2}, false},
        {"EPDM membrane", "Membrane", "Single-ply EPDM roofing membrane", kMembrane, 1150, 0.25, 1000,
         kMembraneSection, kNoHatch, {"waterproof", "roofing"}, {1.2, 1.5}, false},
        {"Breather membrane", "Membrane", "Vapour-open polypropylene underlay", kMembrane, 910, 0.22, 1800,
         kMembraneSection, kNoHatch, {"exterior", "roofing"}, {0.5}, false},
        // Finishes, earth and fill
        {"Lime-cement render", "Finish", "Exterior two-coat lime-cement render", kFinish1, 1800, 1.0, 1000,
         kRenderSection, {"SAND", 10.0, 0.0}, {"exterior"}, {10, 15, 20}, false},
        {"Silicone resin render", "Finish", "Thin-coat render for insulation systems", kFinish1, 1800, 0.70, 1000,
         kRenderSection, {"SAND", 10.0, 0.0}, {"exterior"}, {3, 5}, false},
        {"Ceramic tiles", "Finish", "Porcelain stoneware tiles in thin-bed adhesive", kFinish2, 2300, 1.3, 840,
         kTileSection, {"NET", 100.0, 0.0}, {"interior"}, {10, 12}, false},
        {"Linoleum", "Finish", "Sheet linoleum floor covering", kFinish2, 1200, 0.17, 1400, kPlain, kPlain,
         {"interior", "renewable"}, {2.5, 3.2}, false},
        {"Clay roof tile", "Finish", "Interlocking clay roof tiles on battens", kFinish1, 2000, 1.0, 800,
         kTileSection, kRoofTileElevation, {"exterior", "roofing"}, {20}, false},
        {"Gravel ballast 16/32", "Earth", "Rounded gravel ballast on flat roofs", kFinish1, 1800, 2.0, 1000,
         kGravelSection, kNoHatch, {"exterior", "roofing"}, {50, 60}, false},
        {"Sand and gravel fill", "Earth", "Compacted granular fill under slabs", kSubstrate, 1950, 2.0, 1050,
         kEarthSection, kNoHatch, {"exterior"}, {150, 200, 300}, false},
        {"Substrate, extensive green roof", "Earth", "Mineral substrate for extensive planting, saturated",
         kFinish1, 1300, 1.1, 1300, kEarthSection, kNoHatch, {"exterior", "roofing"}, {80, 100}, false},
    };
    return materials;
}

const std::vector<Material>& projectMaterials() {
    // Copies of central materials as the project edited them (finish, hatch scale, stock sizes)
    // and two materials of its own.
    static const std::vector<Material> materials{
        {"Concrete C30/37", "Concrete", "Exposed fair-faced concrete SB3, sealed; reinforced 1 %", kStructure,
         2400, 2.3, 1000, {"DIAG", 20.0, 0.0}, kPlain, {"structural", "load-bearing", "exposed"},
         {200, 250}, false},
        {"Mineral wool, stone", "Insulation", "Stone wool facade slab, 35 kPa, laminated", kInsulation,
         150, 0.036, 1030, kInsulationSection, kNoHatch, {"thermal", "fire-resistant", "non-combustible"},
         {140, 160, 180, 200}, true},
        {"Gypsum plasterboard type A", "Gypsum", "Gypsum plasterboard, Q3 finish throughout", kFinish1, 700, 0.21,
         1000, kGypsumSection, kPlain, {"interior"}, {12.5}, false},
        {"Lime-cement render", "Finish", "Exterior render, fine float finish, colour to sample", kFinish1, 1800, 1.0,
         1000, kRenderSection, {"SAND", 10.0, 0.0}, {"exterior"}, {15}, false},
        {"Clay block, perforated", "Masonry", "Clay block filled with mineral wool", kStructure, 750, 0.08, 1000,
         kMasonrySection, kBlockElevation, {"load-bearing", "thermal"}, {365, 425}, false},
        {"Polyethylene vapour barrier", "Membrane", "Low-density PE sheet, sd 100 m", kMembrane, 920, 0.33, 2200,
         kMembraneSection, kNoHatch, {"interior"}, {0.2}, false},
        {"Oak parquet, oiled", "Finish", "Project floor finish: oak strip parquet, natural oil", kFinish2, 700, 0.18,
         1600, kTimberSection, {"PARQUET", 10.0, 0.0}, {"interior", "renewable"}, {15}, false},
        {"Cement screed CT-C25-F4", "Concrete", "Floating cement screed with underfloor heating pipes", kSubstrate,
         2000, 1.4, 1000, kConcreteSection, kPlain, {"interior"}, {70}, false},
        {"Impact sound insulation EPS-T", "Insulation", "Elastified EPS under floating screeds", kInsulation,
         15, 0.040, 1450, kFoamSection, kNoHatch, {"acoustic"}, {30}, false},
    };
    return materials;
}

}  // namespace vlib::demo
