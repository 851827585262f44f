// A module that registers a command while it is started.
#include "CaApp.h"
#include "Prompt.h"

VL_MODULE_INTERFACE_EXPORT

namespace {
ca::CAppInitializer g_initializer(
    [](ca::CaApp* app) {
        ca::prompt("init vl_test_base");
        app->addCommand("test_base_hello", "Hello from the base module", [] { ca::prompt("hello from vl_test_base"); });
    },
    [](ca::CaApp* app) {
        app->removeCommand("test_base_hello");
        ca::prompt("uninit vl_test_base");
    });
}  // namespace
