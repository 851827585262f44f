#pragma once
// The profiles manager and picker: the construction profiles of a drawing's project and central
// libraries in two lists narrowed by four filters and a search field, the selected profile's
// identity and dimensions on the right. Host commands pick a profile through selectProfiles.
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <wx/listctrl.h>

#include <OdError.h>
#include <OdString.h>
#include <QcSmartPtr.h>
#include <QcThemedDialog.h>

#include <vantlib/Criteria.h>
#include <vantlib/Library.h>
#include <vantlib/Profile.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

#include "app/common/TwoListBrowser.h"
#include "app/profiles/ProfileParameters.h"
#include "app/profiles/ProfilesInfo.h"

class wxChoice;

namespace wxg {
class DlgUpdateProfile;
class QcPropertyGrid;
}

namespace vl_app {

class DlgSaveProfile;

// The host allows standards of which the libraries hold none.
class NoStandardsError : public OdError {
public:
    NoStandardsError();
};

class DlgProfiles : public wxg::QcThemedDialog, private TwoListClient {
public:
    // The geometry picked in the drawing for a custom profile, as the host fills it.
    using CustomProfileInfo = ::CustomProfileInfo;

    enum EButton : unsigned { kButtonOk = 0, kButtonCancel = 1, kButtonUnselect = 2 };
    enum EFilterKind : unsigned { kFilterType = 0, kFilterStandard = 1, kFilterShape = 2, kFilterName = 3, kFilterAll = 4 };

    // `libs`, `customInfo` and `host` are not owned and may be null. `dbType` and `profileId`
    // preselect a profile (id 0: row 0 of the central list is selected).
    DlgProfiles(wxWindow* parent, vl_db::DocumentLibraries* libs, vl_db::EMode mode, vl_db::EDbType dbType,
                unsigned profileId, CustomProfileInfo* customInfo, ProfilesInfo* host);
    ~DlgProfiles() override;

    // Runs the dialog for a host command until the user chooses: kButtonOk with `result` set to
    // the chosen profile, kButtonCancel, or kButtonUnselect.
    static EButton selectProfiles(unsigned profileId, vl_db::DocumentLibraries* libs,
                                  QcSmartPtr<vantlib::Profile>& result, CustomProfileInfo* customInfo,
                                  ProfilesInfo* host, vl_db::EDbType dbType, vl_db::EMode mode);

    const QcSmartPtr<vantlib::Profile>& selectedProfile() const { return m_selected; }
    bool selectedNone() const { return !m_selected; }
    unsigned id() const { return m_selected ? m_selected->id() : 0; }
    vl_db::EDbType currentDb() const;

    // The query both lists are filled with; throws NoStandardsError.
    vantlib::ProfilesPanelQuery composeProfilesQuery() const;
    // Refills both lists from the libraries.
    void updateLists(bool keepSelection);
    // Makes the given list's selected row the dialog's selection.
    void setSelectedProfile(vl_db::EDbType type);

    wxChoice* getFilter(EFilterKind kind) const;
    wxString getFilterLabel(EFilterKind kind) const;
    bool isAllFilterSelected(EFilterKind kind) const;
    // Selects a filter value by its label (false when it is not offered) or by index.
    bool setFilter(EFilterKind kind, const wxString& label);
    void setFilter(EFilterKind kind, int index);
    void onFilterChanged(EFilterKind kind, int selection);

    TwoListBrowser* browser() const { return m_browser.get(); }
    ObjectListCtrl* list(vl_db::EDbType type) const { return m_browser ? m_browser->list(type) : nullptr; }
    // Whether the right side still waits for the idle refresh of a new selection.
    bool selectionPending() const { return m_selectionChanged; }

    // ---- creating, editing and saving profiles (DlgProfilesEdit.cpp)
    // Like selectProfiles, with a new profile of the project library started when the dialog shows.
    static EButton createProfile(vl_db::DocumentLibraries* libs, QcSmartPtr<vantlib::Profile>& result,
                                 CustomProfileInfo* customInfo, ProfilesInfo* host);
    // True while the right side holds a profile that is not stored yet.
    bool isCreating() const { return m_creating; }
    // The value typed into a parameter field (see parameterValue); 0 for a field that is not there.
    double getParameterValue(const char* controlName) const;
    template <class T>
    void updateProfile(T* profile);
    // Builds the profile the right side describes, in the user-defined standard, and stores it
    // unless the library holds it already or the user declines; then selects it when `select`.
    // Null when nothing was stored.
    QcSmartPtr<vantlib::Profile> createPredefinedProfile(bool select);
    // The type label, standard, profile name and size a new profile starts with.
    void getNewProfileAttributes(wxString& type, wxString& standard, wxString& name, vl_db::EDbType dbType) const;
    // Writes the edited fields into the selected profile; true when it was changed.
    bool updateSavedProfile();
    // The geometry check before storing: false when the library holds an identical profile or
    // one of the same geometry that the user does not want to repeat.
    bool isToBeSaved(const QcSmartPtr<vantlib::Profile>& profile);
    bool showSaveDlg(const QcSmartPtr<vantlib::Profile>& existing, bool askToSave, bool inProject);
    // A user-defined profile of that full name and type in the library; null when there is none.
    QcSmartPtr<vantlib::Profile> isProfileExist(const QcSmartPtr<vantlib::Profile>& profile) const;
    QcSmartPtr<vantlib::Profile> isProfileExist(const wxString& fullName, vl_db::EDbType dbType,
                                                vantlib::ProfileType type) const;
    // Shows the custom profile the host built from picked geometry as a new profile.
    void displayPredefinedFromCustom(QcSmartPtr<vantlib::Profile>& profile);
    // The custom profile takes the picked outline and the identity typed on the right side.
    void initializeProfile(QcSmartPtr<vantlib::CustomProfile> profile, CustomProfileInfo* info);
    const std::shared_ptr<DlgSaveProfile>& getProfileSaveDlg() const { return m_saveDlg; }
    const std::shared_ptr<wxg::DlgUpdateProfile>& getProfileUpdateDlg() const { return m_updateDlg; }
    // ---- custom profiles (DlgProfilesCustom.cpp)
    // A picture of the outline entities with their holes, scaled to fit `width` × `height`
    // with `margin` pixels free and then by `zoom`; `fill` shades the section's area.
    static wxBitmap getCustomProfilePreview(const OdArray<OdSmartPtr<OdDbEntity>>& entities, unsigned long width,
                                            unsigned long height, int margin, int penWidth, double zoom, bool fill);
    // Shows the outline in the preview: the entities, or the profile's own loops without any.
    void updateCustomPreview(const OdArray<OdSmartPtr<OdDbEntity>>& entities,
                             const QcSmartPtr<vantlib::CustomProfile>& profile);
    // Turns (a quarter, to the left or right) or mirrors the custom profile through the host;
    // without a host or a drawing nothing changes.
    void turnCustomProfile(bool left);
    void mirrorCustomProfile(bool horizontal);
    // Shows the profile picked in the drawing (the caller's custom info) on the right side.
    void customModeRightPanels();
    // The custom profile the tools act on: the one picked in the drawing, else the selected one.
    QcSmartPtr<vantlib::CustomProfile> customProfile() const;
    const wxBitmap& preview() const { return m_preview; }

private:
    // ---- start-up, selection, modes (DlgProfiles.cpp)
    // The modal loop of selectProfiles and createProfile, with its pick rounds.
    static EButton runModal(DlgProfiles& dialog, QcSmartPtr<vantlib::Profile>& result);
    void onInitDialog(wxInitDialogEvent& event);
    void initBottomButtons();
    void onIdle(wxIdleEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);
    void onUnselect(wxCommandEvent& event);
    void onPickProfile(wxCommandEvent& event);
    void onClose(wxCloseEvent& event);
    void onCharHook(wxKeyEvent& event);
    void onProjectInfo(wxCommandEvent& event);
    void onDelete(wxCommandEvent& event);
    void onCopyToProject(wxCommandEvent& event);
    void onCopyToLibrary(wxCommandEvent& event);
    void copyTo(vl_db::EDbType destination);
    void selectInitialProfile();
    std::shared_ptr<vantlib::Library> getLib(vl_db::EDbType type) const;
    // The profile a row of a list shows; null for no row.
    QcSmartPtr<vantlib::Profile> listedProfile(vl_db::EDbType type, unsigned id) const;

    // ---- filters and the query (DlgProfilesFilters.cpp)
    void initFilters();
    // Refills both lists for the filters and the search; `reread` reads the libraries again,
    // otherwise the profiles already read are narrowed.
    void refillLists(bool keepSelection, bool reread);
    // The standards the host allows, as the libraries name them; empty: any. Throws
    // NoStandardsError.
    std::set<OdString> allowedStandards() const;
    void restoreFilters();
    void updateFilters(EFilterKind kind);
    void updateFilterList(EFilterKind kind, const std::set<wxString>& values);
    void onSelTypeChanged(wxCommandEvent& event);
    void onStandardChanged(wxCommandEvent& event);
    void onShapeChanged(wxCommandEvent& event);
    void onNameChanged(wxCommandEvent& event);
    void onProfilenameFilterTextChanged(wxCommandEvent& event);
    void fitColumns();

    // ---- the right side (DlgProfilesShape.cpp)
    void updateProfileDlg();
    void showShapePanel(vantlib::ObjectType type);
    // The rows of the profile's panel: its values (or empty fields without `withValues`), typed
    // into when `editable`.
    void fillParameters(const vantlib::Profile& profile, bool editable, bool withValues);
    void fillIdentity();
    void updateProfileProps();
    void createPropertyGrid();
    void onPaintPreview(wxPaintEvent& event);
    // The unit fields of the parameter rows say the library's length unit.
    void displayMeasureUnit();

    // ---- creating, editing and saving profiles (DlgProfilesEdit.cpp)
    void bindEditHandlers();
    // Enables the commands of this part; false for other controls.
    bool updateEditUI(wxUpdateUIEvent& event);
    void onNew(wxCommandEvent& event);
    void onNewInProj(wxCommandEvent& event);
    void onNewInLibr(wxCommandEvent& event);
    void onSave(wxCommandEvent& event);
    void onSavedShapeChanged(wxCommandEvent& event);
    void startNewProfile(vl_db::EDbType target);
    void initShapeChoices();
    void initializeRightTypeChoices();
    // Editable type and shape choices, name, size and parameter fields, and the save button.
    void showPropChoiceFields(bool editable);
    bool isEditableProfile(const QcSmartPtr<vantlib::Profile>& profile) const;
    // The right side of a profile being created or changed in shape: the panel of the chosen shape.
    void showChosenShape();
    // The profile of the chosen shape, identity and parameters as the right side shows them.
    QcSmartPtr<vantlib::Profile> profileFromFields(const std::shared_ptr<vantlib::Library>& library);
    // Stores `profile` under the user-defined standard, with the name and type it was given.
    QcSmartPtr<vantlib::Profile> storeInUserStandard(const std::shared_ptr<vantlib::Library>& library,
                                                     const QcSmartPtr<vantlib::Profile>& profile);
    void saveEdits();
    // Refills lists and filters and selects the profile, bringing the filters back to "All"
    // when they hide it.
    void selectSaved(const QcSmartPtr<vantlib::Profile>& profile, vl_db::EDbType type);
    wxString getLastUsedProfileType() const;
    void copyGridAttributes(vantlib::Profile& profile) const;
    // ---- custom profiles and the axis offset (DlgProfilesCustom.cpp)
    void initCustomProfileTools();
    void onOffset(wxCommandEvent& event);
    bool canSetOffset() const;
    // The custom tools and outline for the selected profile (hidden for other shapes).
    void updateCustomPanels();
    void onLeftTurn(wxCommandEvent& event);
    void onRightTurn(wxCommandEvent& event);
    void onHorizontalMirror(wxCommandEvent& event);
    void onVerticalMirror(wxCommandEvent& event);

    // ---- what the lists ask of the dialog
    std::vector<ObjectRow> queryRows(const std::shared_ptr<vantlib::Library>& library) override;
    wxBitmap drawThumbnail(const std::shared_ptr<vantlib::Library>&, const ObjectRow&, const wxSize&) override {
        return wxNullBitmap;
    }
    std::set<unsigned> removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                     const std::set<unsigned>& ids) override;
    wxString keptMessage(const std::vector<wxString>& names) const override;
    wxString rowsText(unsigned count) const override;
    unsigned currentObjectId() const override { return id(); }
    bool currentValid() const override { return true; }
    void saveCurrent() override {}
    void currentChanged() override;
    void rowActivated() override;
    void librariesChanged() override { updateFilters(kFilterAll); }

    vl_db::EMode m_mode;
    // The profile the dialog was opened on (0: none).
    unsigned m_profileId;
    QcSmartPtr<vantlib::Profile> m_selected;
    vl_db::DocumentLibraries* m_libs;
    std::unique_ptr<TwoListBrowser> m_browser;
    wxg::QcPropertyGrid* m_grid = nullptr;
    bool m_selectionChanged = false;
    // While non-zero OK is disabled.
    uint32_t m_blockOk = 0;
    CustomProfileInfo* m_customInfo;
    ProfilesInfo* m_host;
    wxString m_searchText;
    // The picture of the selected profile's shape.
    wxBitmap m_preview;
    // The query of the refill under way: both lists are filled with it.
    vantlib::ProfilesPanelQuery m_query;
    // Each library's profiles within the host's standards, sorted, as last read (project,
    // central); none before the first read.
    std::array<std::optional<std::vector<QcSmartPtr<vantlib::Profile>>>, 2> m_loaded;
    vantlib::ProfilesPanelQuery m_wholeQuery;
    // Set while a refill only narrows the profiles already read.
    bool m_refilling = false;
    // The profiles each list shows, in list order (project, central): the filters offer their values.
    std::array<std::vector<QcSmartPtr<vantlib::Profile>>, 2> m_listed;
    // The profiles that the last removal kept, for its message.
    std::vector<QcSmartPtr<vantlib::Profile>> m_kept;
    // Set while the dialog fills its own filter choices, so their events change nothing.
    bool m_updating = false;
    bool m_initialised = false;
    // The right side shows the profile picked in the drawing rather than the selection.
    bool m_showingPicked = false;

    // Creating and editing (DlgProfilesEdit.cpp).
    bool m_creating = false;
    bool m_startNew = false;
    // The library a new profile goes to.
    vl_db::EDbType m_target = vl_db::kDbProject;
    std::shared_ptr<DlgSaveProfile> m_saveDlg;
    std::shared_ptr<wxg::DlgUpdateProfile> m_updateDlg;

    wxDECLARE_EVENT_TABLE();
};

template <class T>
void DlgProfiles::updateProfile(T* profile) {
    vl_app::updateProfile(profile, [this](const char* control) { return getParameterValue(control); });
}

// A custom profile takes the outline picked in the drawing (and turned or mirrored since).
template <>
void DlgProfiles::updateProfile<vantlib::CustomProfile>(vantlib::CustomProfile* profile);

}  // namespace vl_app
