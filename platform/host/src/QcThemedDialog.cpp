#include "QcThemedDialog.h"

#include <wx/xrc/xmlres.h>

#include "OdError.h"
#include "OdStringWx.h"
#include "WxgConfig.h"

namespace wxg {

QcThemedDialog::QcThemedDialog(wxWindow* parent, const wxString& resourceName) {
    if (!loadLayout(parent, resourceName))
        throw OdError(eKeyNotFound, toOd(wxString::Format("The dialog layout \"%s\" is not loaded.", resourceName)));
}

bool QcThemedDialog::loadLayout(wxWindow* parent, const wxString& resourceName) {
    m_resourceName = resourceName;
    return wxXmlResource::Get()->LoadDialog(this, parent, resourceName);
}

void QcThemedDialog::restoreWindowRect(wxSize defaultSize, const wxString& key) {
    WxgConfig::restoreWindow(this, key.empty() ? m_resourceName : key, defaultSize);
}

void QcThemedDialog::saveWindowRect(const wxString& key) const {
    WxgConfig::saveWindow(this, key.empty() ? m_resourceName : key);
}

}  // namespace wxg
