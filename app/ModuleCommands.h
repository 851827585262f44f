#pragma once
// Studio commands of the module. Each area of the module declares its commands where it
// implements them, with a static ModuleCommandRegistration; module start-up hands the whole
// list to the host and shut-down withdraws it.
#include <functional>
#include <vector>

#include <wx/string.h>

namespace ca {
class CaApp;
}

namespace vl_app {

struct ModuleCommand {
    wxString name;       // short name typed on the command line and used by --command
    wxString menuLabel;  // English label, translated when the menu is built (mark with wxTRANSLATE)
    std::function<void()> action;
};

// Every command declared by the module's code, in declaration order.
const std::vector<ModuleCommand>& moduleCommands();

struct ModuleCommandRegistration {
    ModuleCommandRegistration(const wxString& name, const wxString& menuLabel, std::function<void()> action);
};

void registerModuleCommands(ca::CaApp* app);
void unregisterModuleCommands(ca::CaApp* app);

}  // namespace vl_app
