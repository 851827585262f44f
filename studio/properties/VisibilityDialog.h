#pragma once
// The studio's visibility dialog: the namespaces of a library with their property sets, each
// with a check box for whether the drawing shows it. A namespace's box stands for all its sets.
// OK writes the changed flags to the library as edits of the caller's session.
#include <cstdint>
#include <memory>

#include <wx/dialog.h>
#include <wx/treelist.h>

namespace vl_db {
class ILibrary;
}

class VisibilityDialog : public wxDialog {
public:
    VisibilityDialog(wxWindow* parent, const std::shared_ptr<vl_db::ILibrary>& library);

    wxTreeListCtrl* tree() const { return m_tree; }
    // The item of a namespace (by name) or of a set in it (by name).
    wxTreeListItem findItem(const wxString& namespaceName, const wxString& setName = wxString()) const;
    // Checks or unchecks an item as the user's click would.
    void setChecked(const wxTreeListItem& item, bool checked);
    // Writes the flags that changed; the number of sets changed.
    unsigned apply();

private:
    void fill();
    void onChecked(wxTreeListEvent& event);
    void onOk(wxCommandEvent& event);

    std::shared_ptr<vl_db::ILibrary> m_library;
    wxTreeListCtrl* m_tree = nullptr;
};
