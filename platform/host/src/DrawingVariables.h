#pragma once
// What the host reads from the active drawing for its formatting and file services.
#include "OdString.h"
#include "OdUnitsFormatter.h"

class OdDbDatabase;

namespace host {

struct DrawingVariables {
    OdLengthFormat length;  // decimal, 4 places, when no drawing is active
};

DrawingVariables activeDrawingVariables();
// The drawing's file name; empty for a null drawing.
OdString drawingFileName(const OdDbDatabase* db);

}  // namespace host
