#pragma once
// The custom property definitions of one library: add generic, material or composition
// properties, rename them in place and delete unused ones. Edits stay in the dialog until
// save() (OK, or activating a row when picking).
#include <memory>
#include <set>
#include <vector>

#include <wx/listctrl.h>

#include <QcSmartPtr.h>
#include <QcThemedDialog.h>

#include <vantlib/CustomProperty.h>
#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

namespace vl_app {

class DlgCustomProperties : public wxg::QcThemedDialog {
public:
    // Which kind of property the user adds.
    enum EChooseKind : int {
        kChooseAny = 0,          // any object may carry it
        kChooseMaterial = 1,
        kChooseComposition = 2,
    };

    // `libs` is not owned. `objectType` is the kind of object the dialog is opened for
    // (kMaterial or kComposition hide the other kind's tool); `mode` kModePicker makes
    // activating a row save and end the dialog.
    DlgCustomProperties(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EDbType dbType,
                        vantlib::ObjectType objectType, vl_db::EMode mode);

    // The property of the selected row (after save(), the stored one); null when none.
    QcSmartPtr<vantlib::CustomProperty> selected() const;

    static vantlib::ObjectType type(EChooseKind kind);
    static EChooseKind type(vantlib::ObjectType objectType);

    std::shared_ptr<vantlib::Library> lib() const;
    // Writes deletions, new and renamed properties to the library in one transaction. False,
    // after telling the user, when the library is not writable or refused the changes; the
    // edits then stay in the dialog.
    bool save();

private:
    void onInitDialog(wxInitDialogEvent& event);
    void onNew(wxCommandEvent& event);
    void onDelete(wxCommandEvent& event);
    void onEndLabelEdit(wxListEvent& event);
    void onActivate(wxListEvent& event);
    void onOK(wxCommandEvent& event);
    void onSize(wxSizeEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);

    void updateList();
    // The translated base name made unique among the listed and the stored properties.
    wxString newName() const;
    bool isNameListed(const wxString& name, size_t exceptIndex) const;
    int imageOf(const vantlib::CustomProperty& property) const;
    long selectedRow() const;
    long rowOf(size_t index) const;

    vl_db::DocumentLibraries* m_libs;
    vl_db::EDbType m_dbType;
    vantlib::ObjectType m_objectType;
    vl_db::EMode m_mode;
    std::vector<QcSmartPtr<vantlib::CustomProperty>> m_properties;
    std::set<size_t> m_changed;     // indices into m_properties renamed or added
    std::set<unsigned> m_removed;   // ids of stored properties deleted in the list
    wxListCtrl* m_list = nullptr;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app
