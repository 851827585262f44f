#include "app/common/BrowserRules.h"

namespace vl_app {

bool writable(const BrowserState& state, vl_db::EDbType type) {
    switch (type) {
    case vl_db::kDbProject: return state.projectWritable;
    case vl_db::kDbCentral: return state.centralWritable;
    default: return false;
    }
}

vl_db::EDbType creationTarget(const BrowserState& state) {
    if (state.current == vl_db::kDbNone || !writable(state, state.current))
        return vl_db::kDbProject;
    return state.current;
}

bool isEnabled(ListCommand command, const BrowserState& state) {
    const bool anySelected = state.selected > 0;
    switch (command) {
    case ListCommand::kNew: return writable(state, creationTarget(state));
    case ListCommand::kNewInProject: return state.projectWritable;
    case ListCommand::kNewInCentral: return state.centralWritable;
    case ListCommand::kDuplicate:
        return anySelected && state.currentStored && writable(state, creationTarget(state));
    case ListCommand::kDelete:
    case ListCommand::kDerive: return anySelected && writable(state, state.current);
    case ListCommand::kCopyToProject:
        return anySelected && state.current == vl_db::kDbCentral && state.projectWritable;
    case ListCommand::kCopyToCentral:
        return anySelected && state.current == vl_db::kDbProject && state.centralWritable;
    }
    return false;
}

}  // namespace vl_app
