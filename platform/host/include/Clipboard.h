#pragma once
// Clipboard and drag-and-drop formats that the host registers.
#include <wx/dataobj.h>

namespace cma {

struct ClipboardFormatIds {
    // The format of library objects dragged or copied between lists of one process.
    static const wxDataFormat& vantlibObject();
};

}  // namespace cma
