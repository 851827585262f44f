#pragma once
// The module's application reactor: a drawing with an external project library takes that
// library along in its transmittal packages.
#include <CaApp.h>

namespace vl_app {

class VantlibAppModule : public ca::CAppReactor {
public:
    // Adds the drawing's external project library (file type kLibraryFile); nothing for an
    // embedded one or a drawing without library manager. Throws OdError_NotThatKindOfClass when
    // the drawing's manager record is of another class.
    void onDatabaseAddedToEtransmit(const OdDbDatabase* db, ca::TransmittalFiles& files) override;
};

}  // namespace vl_app
