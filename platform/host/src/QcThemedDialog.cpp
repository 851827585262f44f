#include "QcThemedDialog.h"

#include <wx/bookctrl.h>
#include <wx/splitter.h>
#include <wx/xrc/xmlres.h>

#include "OdError.h"
#include "OdStringWx.h"
#include "WxgConfig.h"

namespace wxg {

QcThemedDialog::QcThemedDialog(wxWindow* parent, const wxString& resourceName, wxSize defaultSize) {
    if (!loadLayout(parent, resourceName, defaultSize))
        throw OdError(eKeyNotFound, toOd(wxString::Format("The dialog layout \"%s\" is not loaded.", resourceName)));
}

QcThemedDialog::~QcThemedDialog() {
    // The children are destroyed after this destructor, so the kept controls are still there.
    saveGeometry();
}

bool QcThemedDialog::loadLayout(wxWindow* parent, const wxString& resourceName, wxSize defaultSize) {
    m_resourceName = resourceName;
    m_loaded = wxXmlResource::Get()->LoadDialog(this, parent, resourceName);
    if (m_loaded)
        WxgConfig::restoreWindow(this, m_resourceName, defaultSize);
    return m_loaded;
}

void QcThemedDialog::keepSashPosition(wxSplitterWindow* splitter, const wxString& key) {
    if (!splitter)
        return;
    const long sash = WxgConfig::readLong(key, 0);
    if (sash > 0)
        splitter->SetSashPosition(int(sash));
    m_sashes.emplace_back(splitter, key);
}

void QcThemedDialog::keepPage(wxBookCtrlBase* book, const wxString& key) {
    if (!book)
        return;
    const long page = WxgConfig::readLong(key, 0);
    if (page >= 0 && size_t(page) < book->GetPageCount())
        book->SetSelection(size_t(page));
    m_pages.emplace_back(book, key);
}

void QcThemedDialog::saveGeometry() const {
    if (!m_loaded)
        return;
    WxgConfig::saveWindow(this, m_resourceName);
    for (const auto& sash : m_sashes)
        WxgConfig::writeLong(sash.second, sash.first->GetSashPosition());
    for (const auto& page : m_pages)
        if (page.first->GetSelection() != wxNOT_FOUND)
            WxgConfig::writeLong(page.second, page.first->GetSelection());
}

}  // namespace wxg
