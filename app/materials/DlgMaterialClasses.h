#pragma once
// Material classes of one library: add, rename and delete them in a list; the library changes
// only when the user confirms with OK.
#include <memory>

#include <wx/listbox.h>
#include <wx/string.h>

#include <QcThemedDialog.h>

#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

#include "app/materials/MaterialClassEdits.h"

namespace vl_app {

class DlgMaterialClasses : public wxg::QcThemedDialog {
public:
    // `libs` is not owned and must outlive the dialog.
    DlgMaterialClasses(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EDbType dbType);

    // Text of the selected entry; empty when nothing is selected.
    wxString selected() const;
    // The library being edited; null when the drawing has none of that type (any more).
    std::shared_ptr<vantlib::Library> lib() const;
    // False when another class of the library already carries exactly this name.
    bool nameOk(const wxString& name, unsigned id) const;

private:
    void onInitDialog(wxInitDialogEvent& event);
    void onNew(wxCommandEvent& event);
    void onDelete(wxCommandEvent& event);
    void onListDoubleClick(wxCommandEvent& event);
    void onOK(wxCommandEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);

    // Refills the list box from the edits, selecting the entry at `selectIndex` of the edits.
    void updateList(int selectIndex);
    // Index into the edits of the list box's selected entry, or -1.
    int selectedEntry() const;

    vl_db::DocumentLibraries* m_libs;
    vl_db::EDbType m_dbType;
    MaterialClassEdits m_edits;
    wxListBox* m_list = nullptr;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app
