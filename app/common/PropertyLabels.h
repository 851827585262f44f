#pragma once
// Kinds of rows in the library dialogs' property grids and their labels.
#include <cstdint>

#include <wx/string.h>

namespace vl_app {

enum EPropType : uint32_t {
    kPropId = 0,
    kPropName = 1,
    kPropDescription = 2,
    kPropTags = 3,
    kPropComments = 4,
    kPropClass = 5,
    kPropClassification = 6,
    kPropUniqueCode = 7,
    kPropCost = 8,
    kPropKeynote = 9,
    kPropLabel = 10,
    kPropManufacturer = 11,
    kPropMark = 12,
    kPropModel = 13,
    kPropUrl = 14,
    kPropFunction = 15,
    kPropThickness = 16,
    kPropVariableThickness = 17,
    kPropUnionElevation = 18,
    kPropUnionSection = 19,
    kPropDensity = 20,
    kPropSpecificHeat = 21,
    kPropThermalConductivity = 22,
    kPropCompositionId = 23,
    kPropCompositionName = 24,
    kPropCompositionDescription = 25,
    kPropCompositionTags = 26,
    kPropCompositionType = 27,
    kPropCompositionLayer = 28,
    kPropCompositionComments = 29,
    kPropCompositionThickness = 30,
    kPropResistance = 31,
    kPropThermal = 32,
    kPropReserved = 33,
    kPropMaterialName = 34,
    kPropArea = 35,
    kPropGrossArea = 36,
};

// Translated label of a row kind; unknown kinds give "Unrecognized property type (<n>)".
wxString label(EPropType type);

}  // namespace vl_app
