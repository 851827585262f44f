// A module that does not state its host interface version: the host must not start it.
#include "CaApp.h"
#include "Prompt.h"

namespace {
ca::CAppInitializer g_initializer([](ca::CaApp*) { ca::prompt("init vl_test_no_interface"); }, {});
}  // namespace
