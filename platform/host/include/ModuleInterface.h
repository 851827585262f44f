#pragma once
// The version of the host interface a module was built against. The host's headers define
// classes that modules derive from and call into; a module built against other headers would
// break in ways that show only later, so CaApp::loadDrx loads a module only when the version it
// exports equals the host's own. A module exports it with one line at namespace scope in one of
// its source files:
//
//     VL_MODULE_INTERFACE_EXPORT
//
// Raise kModuleInterfaceVersion with every change to the host headers that modules use which
// changes their layout or calls (classes, virtual functions, the module start-up).
namespace ca {

constexpr int kModuleInterfaceVersion = 2;

// The name of the exported int the host reads; the same spelling as in the macro below.
constexpr const char* kModuleInterfaceSymbol = "vl_module_interface_version";

}  // namespace ca

#define VL_MODULE_INTERFACE_EXPORT_VERSION(version) \
    extern "C" __attribute__((visibility("default"))) const int vl_module_interface_version = (version);

#define VL_MODULE_INTERFACE_EXPORT VL_MODULE_INTERFACE_EXPORT_VERSION(::ca::kModuleInterfaceVersion)
