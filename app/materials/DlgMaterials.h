#pragma once
// The materials manager and picker: the materials of a drawing's project and central libraries
// in two lists, the current material's identity, appearance and properties on the right. Every
// edit is saved into the material's library at once; OK and Cancel undo nothing.
#include <functional>
#include <map>
#include <memory>

#include <wx/arrstr.h>
#include <wx/bitmap.h>
#include <wx/listctrl.h>
#include <wx/notebook.h>
#include <wx/propgrid/propgrid.h>
#include <wx/timer.h>

#include <OdString.h>
#include <QcSmartPtr.h>
#include <QcThemedDialog.h>

#include <vantlib/CustomProperty.h>
#include <vantlib/Library.h>
#include <vantlib/Material.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/HatchPattern.h>
#include <vl_db/Types.h>

#include "app/common/TwoListBrowser.h"

class OdDbDatabase;
class wxPropertyGridEvent;

namespace wxg {
class QcPropertyGrid;
}

namespace vl_app {

class DlgMaterials : public wxg::QcThemedDialog, private TwoListClient {
public:
    // Validation state of the identity page; anything but kValid blocks the lists and OK.
    enum EStatus : unsigned {
        kValid = 0,
        kNameEmpty = 1,
        kNameTaken = 2,
        kNoClass = 3,
        kUnknownClass = 4,
    };

    // `libs` is not owned. `dbType` and `materialId` preselect a material (id 0: none).
    DlgMaterials(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode, vl_db::EDbType dbType,
                 unsigned materialId);
    ~DlgMaterials() override;

    // The current material (null when none is selected) and the library it belongs to.
    const QcSmartPtr<vantlib::Material>& material() const { return m_material; }
    vl_db::EDbType dbType() const { return m_dbType; }
    vl_db::EMode mode() const { return m_mode; }
    EStatus status() const { return m_status; }
    // The library of the current material (null when none is chosen or it is unavailable).
    std::shared_ptr<vantlib::Library> lib() const;
    ObjectListCtrl* list(vl_db::EDbType type) const;
    // Selected rows of the current library's list.
    int numSelected() const;
    // The two lists and their commands (null until the dialog is initialised).
    TwoListBrowser* browser() const { return m_browser.get(); }

private:
    // ---- start-up, selection, closing (DlgMaterials.cpp)
    void onInitDialog(wxInitDialogEvent& event);
    void onSelect(wxListEvent& event);
    void onDeselect(wxListEvent& event);
    void onPageChanging(wxBookCtrlEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);
    void onSize(wxSizeEvent& event);
    void onOK(wxCommandEvent& event);
    void updateMaterial();
    void updateReadOnly();
    void saveMaterial();
    // Applies a change to the current material and saves it at once. A failure is reported and
    // the material is read back from its library, so the dialog shows what is stored.
    void changeMaterial(const std::function<void(vantlib::Material&)>& change);
    // Makes the material just stored in the library of `type` the selected, loaded one.
    void showStoredMaterial(vl_db::EDbType type);
    // Shows a library failure to the user.
    void reportError(const std::exception& error);
    // The current material's row shows its saved name and its thumbnail.
    void updateCurrentRow();
    OdDb::UnitsValue unit() const;
    void bindControls();

    // ---- lists, filters and list commands (DlgMaterialsLists.cpp)
    void initLists();
    void updateLists(bool keepSelection);
    void updateFilter();
    void updateClasses();
    void onFilterClass(wxCommandEvent& event);
    void onToggleFilter(wxCommandEvent& event);
    void onMakeComp(wxCommandEvent& event);

    // ---- what the lists ask of the dialog (DlgMaterialsLists.cpp)
    std::vector<ObjectRow> queryRows(const std::shared_ptr<vantlib::Library>& library) override;
    wxBitmap drawThumbnail(const std::shared_ptr<vantlib::Library>& library, const ObjectRow& row,
                           const wxSize& size) override;
    std::set<unsigned> removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                     const std::set<unsigned>& ids) override;
    wxString keptMessage(const std::vector<wxString>& names) const override;
    wxString rowsText(unsigned count) const override;
    unsigned currentObjectId() const override;
    bool currentValid() const override { return m_status == kValid; }
    void saveCurrent() override { saveMaterial(); }
    void currentChanged() override;
    void rowActivated() override;
    void librariesChanged() override { updateClasses(); }
    void createObject(vl_db::EDbType type) override;
    void duplicateCurrent(vl_db::EDbType type) override;

    // ---- identity page (DlgMaterialsIdentity.cpp)
    void onEditText(wxCommandEvent& event);
    void onClasses(wxCommandEvent& event);
    void updateIdentity();
    void updateName();
    void updateDscr();
    void updateClass();
    void updateStatus();
    void editName(const wxString& text);
    void editClass(const wxString& text);
    // The state of the typed name and class of the current material; `classTyped` checks the
    // class even when it is the material's own (the user has just typed it).
    EStatus validate(bool classTyped) const;

    // ---- appearance page (DlgMaterialsAppearance.cpp)
    void onSectHatch(wxCommandEvent& event);
    void onElevHatch(wxCommandEvent& event);
    void onSectHatchType(wxCommandEvent& event);
    void onElevHatchType(wxCommandEvent& event);
    void onSectHatchName(wxCommandEvent& event);
    void onElevHatchName(wxCommandEvent& event);
    void onSectHatchCross(wxCommandEvent& event);
    void onElevHatchCross(wxCommandEvent& event);
    void onSectHatchAnnotative(wxCommandEvent& event);
    void onElevHatchAnnotative(wxCommandEvent& event);
    void onSectBkgColorChoice(wxCommandEvent& event);
    void onElevBkgColorChoice(wxCommandEvent& event);
    void onRenderMat(wxCommandEvent& event);
    void updateAppearance();
    void updateHatch(vl_db::EHatchViewType view);
    void updateLayer(vl_db::EHatchViewType view);
    void updateThumbnail();
    void updateRenderMat();
    void openHatchDialog(vl_db::EHatchViewType view);
    void chooseHatchType(vl_db::EHatchViewType view);
    void chooseHatchName(vl_db::EHatchViewType view);
    void chooseBackground(vl_db::EHatchViewType view);
    void editHatchNumber(vl_db::EHatchViewType view, int field, const wxString& text);
    void editLayer(vl_db::EHatchViewType view, const wxString& text);

    // ---- properties page (DlgMaterialsProperties.cpp)
    void createPropertyGrid();
    void onPropChanged(wxPropertyGridEvent& event);
    void onCustomProps(wxCommandEvent& event);
    void onDelCustomPropValue(wxCommandEvent& event);
    void updateProps();
    void updateInformationProps();
    void updatePhysicalProps();
    void updateBimProps();
    void updateCustomProps();
    // The custom property of the grid's selected row; null when that row is no custom value.
    QcSmartPtr<vantlib::CustomProperty> selectedCustomProperty() const;

    vl_db::EMode m_mode;
    vl_db::EDbType m_dbType;
    QcSmartPtr<vantlib::Material> m_material;
    vl_db::DocumentLibraries* m_libs;
    std::unique_ptr<TwoListBrowser> m_browser;
    wxg::QcPropertyGrid* m_grid = nullptr;
    wxString m_selName;
    wxString m_nameText;
    wxString m_classText;
    wxString m_sectHatchName;
    wxString m_elevHatchName;
    wxString m_filterClass;
    wxArrayString m_filterClasses;
    wxArrayString m_comboClasses;
    EStatus m_status = kValid;
    // Set while the dialog fills its own controls, so their change events edit nothing.
    bool m_updating = false;

    wxDECLARE_EVENT_TABLE();
};

// ---- entry points for host commands

// The manager on a drawing's libraries, nothing preselected. Returns the modal result.
int dlgMaterials(wxWindow* parent, vl_db::DocumentLibraries* libs);
// The picker on the drawing's libraries with project material `id` preselected. On OK the
// picked material, saved into the project library first when `copyToProject` and it comes
// from the central library; null when the user cancelled or picked nothing.
QcSmartPtr<vantlib::Material> selectMaterialFromDlg(OdDbDatabase* db, unsigned id, bool copyToProject);
QcSmartPtr<vantlib::Material> selectMaterialFromDlg(OdDbDatabase* db, const OdString& name, bool copyToProject);
// The manager with project material `id` (or of that name) preselected.
int showMaterialDlg(OdDbDatabase* db, unsigned id);
int showMaterialDlg(OdDbDatabase* db, const OdString& name);
// The section hatch of the project material of that name at `size`; null when there is none.
wxBitmap materialPreview(OdDbDatabase* db, const OdString& name, const wxSize& size);

}  // namespace vl_app
