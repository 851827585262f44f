// A module that loads the base module from its own start-up, as the library modules do.
#include "CaApp.h"
#include "Prompt.h"

VL_MODULE_INTERFACE_EXPORT

namespace {
ca::CAppInitializer g_initializer(
    [](ca::CaApp* app) {
        const bool loaded = app->loadDrx("vl_test_base", true);
        ca::prompt(loaded ? "init vl_test_dependent (base loaded)" : "init vl_test_dependent (base missing)");
    },
    [](ca::CaApp*) { ca::prompt("uninit vl_test_dependent"); });
}  // namespace
