#pragma once
// The compositions manager and picker: the compositions of a drawing's project and central
// libraries in two lists, the current composition's name, type, plies and properties on the
// right. Every edit is saved into the composition's library at once; OK and Cancel undo nothing.
#include <functional>
#include <memory>

#include <wx/arrstr.h>
#include <wx/listctrl.h>

#include <OdUnits.h>
#include <QcSmartPtr.h>
#include <QcThemedDialog.h>

#include <vantlib/Composition.h>
#include <vantlib/CustomProperty.h>
#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

#include "app/common/TwoListBrowser.h"
#include "app/compositions/PlyGrid.h"

class wxPropertyGridEvent;

namespace wxg {
class QcPropertyGrid;
}

namespace vl_app {

class DlgCompositions : public wxg::QcThemedDialog, private TwoListClient, private PlyGridOwner {
public:
    // Validation state of the name; anything but kValid blocks the lists and OK.
    enum EStatus : unsigned { kValid = 0, kNameEmpty = 1, kNameTaken = 2 };

    // `libs` is not owned. `dbType` and `compositionId` preselect a composition (id 0: none);
    // `typeFilter` is the filter entry shown first (empty: the preselected composition's type).
    DlgCompositions(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode, vl_db::EDbType dbType,
                    unsigned compositionId, const wxString& typeFilter);
    ~DlgCompositions() override;

    // Picks a composition: `name` preselects (project library first) and, on OK, becomes the
    // picked composition's name, or empty after Unselect. False when the user cancelled.
    static bool selectComposition(wxString& name, vl_db::DocumentLibraries* libs, const wxString& typeFilter);

    const QcSmartPtr<vantlib::Composition>& composition() const { return m_composition; }
    vl_db::EDbType dbType() const { return m_dbType; }
    vl_db::EMode mode() const { return m_mode; }
    EStatus status() const { return m_status; }
    std::shared_ptr<vantlib::Library> lib() const;
    ObjectListCtrl* list(vl_db::EDbType type) const;
    int numSelected() const;
    TwoListBrowser* browser() const { return m_browser.get(); }
    PlyGrid* plyGrid() const { return m_plies; }
    wxg::QcPropertyGrid* propertyGrid() const { return m_grid; }
    // The length unit of the composition's library, else of the drawing.
    OdDb::UnitsValue unit() const;

private:
    // ---- start-up, selection, closing (DlgCompositions.cpp)
    void onInitDialog(wxInitDialogEvent& event);
    void onUnselect(wxCommandEvent& event);
    void onOK(wxCommandEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);
    void onEditText(wxCommandEvent& event);
    void onCmpType(wxCommandEvent& event);
    void updateComposition();
    void updateName();
    void updateType();
    void updateTypeChoice();
    void updateStatus();
    void updateReadOnly();
    void updatePreview();
    void saveComposition();
    // Applies a change to the current composition and saves it at once; a failure is reported
    // and the composition read back from its library.
    void changeComposition(const std::function<void(vantlib::Composition&)>& change);
    void reportError(const std::exception& error);

    // ---- lists, filters and list commands (DlgCompositionsLists.cpp)
    void initLists();
    void updateLists(bool keepSelection);
    void updateFilter();
    void updateFilterTypes();
    void onFilterType(wxCommandEvent& event);
    void onToggleFilter(wxCommandEvent& event);
    void showStoredComposition(vl_db::EDbType type);
    void updateCurrentRow();

    std::vector<ObjectRow> queryRows(const std::shared_ptr<vantlib::Library>& library) override;
    wxBitmap drawThumbnail(const std::shared_ptr<vantlib::Library>& library, const ObjectRow& row,
                           const wxSize& size) override;
    std::set<unsigned> removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                     const std::set<unsigned>& ids) override;
    wxString keptMessage(const std::vector<wxString>& names) const override;
    wxString rowsText(unsigned count) const override;
    unsigned currentObjectId() const override;
    bool currentValid() const override { return m_status == kValid; }
    void saveCurrent() override { saveComposition(); }
    void currentChanged() override;
    void createObject(vl_db::EDbType type) override;
    void duplicateCurrent(vl_db::EDbType type) override;
    void rowActivated() override;
    void librariesChanged() override { updateFilterTypes(); }

    // ---- plies and properties (DlgCompositionsPlies.cpp)
    void createPropertyGrid();
    void onAddPly(wxCommandEvent& event);
    void onRemovePly(wxCommandEvent& event);
    void onDuplicatePly(wxCommandEvent& event);
    void onCustomProps(wxCommandEvent& event);
    void onDelCustomPropValue(wxCommandEvent& event);
    void onPropChanged(wxPropertyGridEvent& event);
    void updateStructure();
    void updateProps();
    void updatePhysicsProps();
    void updateCustomProps();
    QcSmartPtr<vantlib::CustomProperty> selectedCustomProperty() const;
    void pliesChanged() override;
    QcSmartPtr<vantlib::Material> pickMaterial(const QcSmartPtr<vantlib::Material>& current) override;

    vl_db::EMode m_mode;
    vl_db::EDbType m_dbType;
    QcSmartPtr<vantlib::Composition> m_composition;
    vl_db::DocumentLibraries* m_libs;
    std::unique_ptr<TwoListBrowser> m_browser;
    PlyGrid* m_plies = nullptr;
    wxg::QcPropertyGrid* m_grid = nullptr;
    wxString m_selName;
    wxString m_filterType;
    wxArrayString m_filterTypes;
    EStatus m_status = kValid;
    // Set while the dialog fills its own controls, so their change events edit nothing.
    bool m_updating = false;

    wxDECLARE_EVENT_TABLE();
};

// ---- entry points for host commands

// The manager on a drawing's libraries, nothing preselected, all types listed. A null parent
// means the host's main window. Returns the modal result.
int dlgCompositions(wxWindow* parent, vl_db::DocumentLibraries* libs);
// The manager in name-editing mode with a new composition in the project library.
int dlgNewComposition(wxWindow* parent, vl_db::DocumentLibraries* libs);

}  // namespace vl_app
