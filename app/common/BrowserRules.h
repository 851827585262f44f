#pragma once
// When the list commands of a two-list dialog are enabled. A pure function of the dialog's
// state, so that toolbar, context menus and tests agree and need no window.
#include <vl_db/Types.h>

namespace vl_app {

enum class ListCommand {
    kNew,            // toolbar: in the current library, else the project library
    kNewInProject,   // context menu of the project list
    kNewInCentral,   // context menu of the central list
    kDuplicate,
    kDelete,
    kDerive,         // a command that makes other objects from the selection (Make Composition)
    kCopyToProject,
    kCopyToCentral,
};

struct BrowserState {
    vl_db::EDbType current = vl_db::kDbNone;  // the list that holds the selection
    bool projectWritable = false;
    bool centralWritable = false;
    int selected = 0;                          // selected rows of the current list
    bool currentStored = false;                // the current object exists in its library
};

bool writable(const BrowserState& state, vl_db::EDbType type);
// The library New and Duplicate create in: the current one when it may change, else the project.
vl_db::EDbType creationTarget(const BrowserState& state);
bool isEnabled(ListCommand command, const BrowserState& state);

}  // namespace vl_app
