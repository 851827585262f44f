#include "app/common/PropertyLabels.h"

#include <wx/intl.h>

namespace vl_app {

wxString label(EPropType type) {
    switch (type) {
    case kPropId:
    case kPropCompositionId: return _("ID");
    case kPropName:
    case kPropCompositionName: return _("Name");
    case kPropDescription:
    case kPropCompositionDescription: return _("Description");
    case kPropTags:
    case kPropCompositionTags: return _("Tags");
    case kPropComments:
    case kPropCompositionComments: return _("Comments");
    case kPropClass: return _("Class");
    case kPropClassification: return _("Classification");
    case kPropUniqueCode: return _("Unique code");
    case kPropCost: return _("Cost");
    case kPropKeynote: return _("Keynote");
    case kPropLabel: return _("Label");
    case kPropManufacturer: return _("Manufacturer");
    case kPropMark: return _("Mark");
    case kPropModel: return _("Model");
    case kPropUrl: return _("URL");
    case kPropFunction: return _("Function");
    case kPropThickness:
    case kPropCompositionThickness: return _("Thickness ");
    case kPropVariableThickness: return _("Variable thickness");
    case kPropUnionElevation: return _("Union elevation");
    case kPropUnionSection: return _("Union section");
    case kPropDensity: return _("Density");
    case kPropSpecificHeat: return _("Specific heat");
    case kPropThermalConductivity: return _("Thermal conductivity");
    case kPropCompositionType: return _("Type");
    case kPropCompositionLayer: return _("Layer");
    case kPropResistance: return _("Resistance");
    case kPropThermal: return _("Thermal");
    case kPropMaterialName: return _("Material name");
    case kPropArea: return _("Area");
    case kPropGrossArea: return _("Gross Area");
    case kPropReserved: break;
    }
    // A programming error rather than a user situation, so the text is not translated.
    return wxString::Format("Unrecognized property type (%d)", static_cast<int>(type));
}

}  // namespace vl_app
