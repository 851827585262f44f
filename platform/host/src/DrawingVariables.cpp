#include "DrawingVariables.h"

#include "CaApp.h"
#include "OdDbDatabase.h"

namespace host {

DrawingVariables activeDrawingVariables() {
    DrawingVariables vars;
    if (const OdDbDatabase* db = ca::curDb())
        vars.length = db->lengthFormat();
    return vars;
}

OdString drawingFileName(const OdDbDatabase* db) { return db ? db->fileName() : OdString(); }

}  // namespace host
