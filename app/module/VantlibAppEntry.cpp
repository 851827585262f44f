// The host runs the module's start-up and shut-down through this initialiser, which it finds
// when it maps the module.
#include <CaApp.h>

#include "app/Module.h"

VL_MODULE_INTERFACE_EXPORT

namespace {
const ca::CAppInitializer g_initializer(vl_app::initModule, vl_app::uninitModule);
}
