#pragma once
// Enumerations that the drawing-side manager shares with the dialogs.
#include <cstdint>

namespace vl_db {

// Which library of a drawing.
enum EDbType : uint32_t {
    kDbProject = 0,           // the primary library: embedded in the drawing or in a file beside it
    kDbCentral = 1,           // the secondary library, shared between projects
    kDbNone = 0xFFFFFFFFu,    // none chosen; "both" where a function accepts it
};

// How a library dialog is used.
enum EMode : uint32_t {
    kModeManager = 0,            // editing; a single closing button
    kModeManagerEditName = 1,    // editing with the name field focused
    kModePicker = 2,             // OK or activating a row ends the dialog with the selection
    kModeProfilePicker = 3,      // profile picker with an unselect button
};

}  // namespace vl_db
