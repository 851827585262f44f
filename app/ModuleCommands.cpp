#include "app/ModuleCommands.h"

#include <wx/intl.h>

#include <CaApp.h>

namespace vl_app {

namespace {
std::vector<ModuleCommand>& commandList() {
    static std::vector<ModuleCommand> commands;
    return commands;
}
}  // namespace

const std::vector<ModuleCommand>& moduleCommands() { return commandList(); }

ModuleCommandRegistration::ModuleCommandRegistration(const wxString& name, const wxString& menuLabel,
                                                     std::function<void()> action) {
    commandList().push_back(ModuleCommand{name, menuLabel, std::move(action)});
}

void registerModuleCommands(ca::CaApp* app) {
    for (const auto& command : commandList())
        app->addCommand(command.name, wxGetTranslation(command.menuLabel), command.action);
}

void unregisterModuleCommands(ca::CaApp* app) {
    for (auto it = commandList().rbegin(); it != commandList().rend(); ++it)
        app->removeCommand(it->name);
}

}  // namespace vl_app
