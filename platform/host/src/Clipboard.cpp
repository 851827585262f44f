#include "Clipboard.h"

namespace cma {

const wxDataFormat& ClipboardFormatIds::vantlibObject() {
    static const wxDataFormat format(wxASCII_STR("application/x-vantlib-object"));
    return format;
}

}  // namespace cma
