// A module built against another version of the host interface: the host must not start it.
#include "CaApp.h"
#include "Prompt.h"

VL_MODULE_INTERFACE_EXPORT_VERSION(ca::kModuleInterfaceVersion + 1)

namespace {
ca::CAppInitializer g_initializer([](ca::CaApp*) { ca::prompt("init vl_test_other_interface"); }, {});
}  // namespace
