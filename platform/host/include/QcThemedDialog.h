#pragma once
// Base of the module's dialogs: loads its layout from the XRC resources by name, restores its
// window rectangle from the settings store under that name and stores it again when the
// dialog goes, together with the splitter and notebook positions it was asked to keep.
#include <utility>
#include <vector>

#include <wx/dialog.h>

class wxBookCtrlBase;
class wxSplitterWindow;

namespace wxg {

class QcThemedDialog : public wxDialog {
public:
    // Two-step construction: call loadLayout() afterwards.
    QcThemedDialog() = default;
    // Throws OdError when no loaded layout has a dialog of that name.
    QcThemedDialog(wxWindow* parent, const wxString& resourceName, wxSize defaultSize = wxDefaultSize);
    // Stores the window rectangle and the kept positions.
    ~QcThemedDialog() override;

    // Creates this dialog from the layout `resourceName` and restores its rectangle (the
    // first time: `defaultSize`, where given); false when the layout is not loaded.
    bool loadLayout(wxWindow* parent, const wxString& resourceName, wxSize defaultSize = wxDefaultSize);
    const wxString& resourceName() const { return m_resourceName; }

    // Restores the splitter's sash position or the notebook's page stored under `key` now,
    // and stores it when the dialog goes.
    void keepSashPosition(wxSplitterWindow* splitter, const wxString& key);
    void keepPage(wxBookCtrlBase* book, const wxString& key);

    // Stores the rectangle and the kept positions now (the destructor does it too).
    void saveGeometry() const;

private:
    wxString m_resourceName;
    bool m_loaded = false;
    std::vector<std::pair<wxSplitterWindow*, wxString>> m_sashes;
    std::vector<std::pair<wxBookCtrlBase*, wxString>> m_pages;
};

}  // namespace wxg
