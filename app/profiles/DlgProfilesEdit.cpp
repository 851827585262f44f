// Creating, editing and saving profiles in the profiles dialog: the editable type and shape
// choices, new profiles in the user-defined standard, the geometric and name checks before a
// profile is stored, and the drawing entities that use a changed profile.
#include <cstring>

#include <wx/choice.h>
#include <wx/propgrid/property.h>
#include <wx/srchctrl.h>
#include <wx/textctrl.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <DlgUpdateProfile.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <QcPropertyGrid.h>

#include <vantlib/Transaction.h>

#include <vl_db/Profiles.h>

#include "app/common/ErrorMessages.h"
#include "app/profiles/DlgProfiles.h"
#include "app/profiles/DlgSaveProfile.h"
#include "app/profiles/ProfileParameters.h"

namespace vl_app {

namespace {

wxTextCtrl* textField(const wxWindow& dialog, const char* name) {
    return dynamic_cast<wxTextCtrl*>(dialog.FindWindow(XRCID(name)));
}

wxString fieldText(const wxWindow& dialog, const char* name) {
    const wxTextCtrl* field = textField(dialog, name);
    return field ? wxString(field->GetValue()).Trim(true).Trim(false) : wxString();
}

const ShapeRow* rowOfControl(const char* controlName) {
    for (const ShapePanel& panel : shapePanels())
        for (const ShapeRow& row : panel.rows)
            if (std::strcmp(row.control, controlName) == 0)
                return &row;
    return nullptr;
}

OdArray<OdDbObjectId> entitiesUsing(ProfilesInfo& host, OdDbDatabase& db, unsigned profileId) {
    OdArray<OdDbObjectId> entities;
    host.findProfileId(db, profileId, entities);
    return entities;
}

}  // namespace

void DlgProfiles::bindEditHandlers() {
    Bind(wxEVT_MENU, &DlgProfiles::onNew, this, XRCID("TOOL_NEW"));
    Bind(wxEVT_BUTTON, &DlgProfiles::onNew, this, wxID_NEW);
    Bind(wxEVT_MENU, &DlgProfiles::onNewInProj, this, XRCID("TOOL_NEW_IN_PROJ"));
    Bind(wxEVT_MENU, &DlgProfiles::onNewInLibr, this, XRCID("TOOL_NEW_IN_LIBR"));
    Bind(wxEVT_MENU, &DlgProfiles::onSave, this, XRCID("TOOL_SAVE"));
    Bind(wxEVT_BUTTON, &DlgProfiles::onSave, this, wxID_SAVE);
    Bind(wxEVT_CHOICE, &DlgProfiles::onSavedShapeChanged, this, XRCID("ID_SET_SHAPE_CHOICE"));
}

bool DlgProfiles::updateEditUI(wxUpdateUIEvent& event) {
    const int id = event.GetId();
    if (id == wxID_NEW) {
        event.Enable(vl_db::writable(m_libs, vl_db::kDbProject) || vl_db::writable(m_libs, vl_db::kDbCentral));
        return true;
    }
    if (id == wxID_SAVE || id == XRCID("TOOL_SAVE")) {
        // Without the host's geometry check nothing is stored, so Save is not offered.
        const bool editing = m_creating || isEditableProfile(m_selected);
        event.Enable(editing && m_host && vl_db::writable(m_libs, m_creating ? m_target : currentDb()) && m_libs &&
                     m_libs->database());
        return true;
    }
    return m_browser && m_browser->enableListCommand(event, true);
}

// New profiles go to the project library; the central list's context menu puts one there.
void DlgProfiles::onNew(wxCommandEvent&) { startNewProfile(vl_db::kDbProject); }
void DlgProfiles::onNewInProj(wxCommandEvent&) { startNewProfile(vl_db::kDbProject); }
void DlgProfiles::onNewInLibr(wxCommandEvent&) { startNewProfile(vl_db::kDbCentral); }

void DlgProfiles::initShapeChoices() {
    wxChoice* choice = XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice);
    choice->Clear();
    for (const wxString& label : parametricShapeLabels())
        choice->Append(label);
    // The custom shape is offered only for the outline the user picked.
    if (m_customInfo && m_customInfo->profile)
        choice->Append(shapeLabel(vantlib::kCustomProfile, false));
}

void DlgProfiles::initializeRightTypeChoices() {
    wxChoice* choice = XRCCTRL(*this, "ID_SET_TYPE", wxChoice);
    choice->Clear();
    for (const wxString& label : sortedTypeLabels())
        choice->Append(label);
}

bool DlgProfiles::isEditableProfile(const QcSmartPtr<vantlib::Profile>& profile) const {
    // A shape of a later version is shown, never edited: this version does not know its dimensions.
    return profile && &profile->isA() != &vantlib::UnknownShapeProfile::desc() && currentDb() == vl_db::kDbProject &&
           vl_db::writable(m_libs, vl_db::kDbProject);
}

void DlgProfiles::showPropChoiceFields(bool editable) {
    FindWindow(XRCID("ID_SET_PROPS"))->Show(editable);
    FindWindow(XRCID("ID_SET_TYPE"))->Show(editable);
    FindWindow(XRCID("ID_TYPE_TXTCTRL"))->Show(!editable);
    FindWindow(XRCID("ID_SET_SHAPE_CHOICE"))->Show(editable);
    FindWindow(XRCID("ID_SHAPE_TXTCTRL"))->Show(!editable);
    for (const char* name : {"ID_SET_NAME", "ID_SIZE_VALUE"})
        textField(*this, name)->SetEditable(editable);
    FindWindow(wxID_SAVE)->Show(editable);
    // The swapped fields sit in the right panel's own sizers, which lay out only when told.
    FindWindow(XRCID("ID_SET_TYPE"))->GetParent()->Layout();
    if (!editable)
        return;
    wxChoice* type = XRCCTRL(*this, "ID_SET_TYPE", wxChoice);
    wxChoice* shape = XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice);
    if (m_selected && !m_creating) {
        type->SetStringSelection(profileTypeLabel(m_selected->name() ? m_selected->name()->type()
                                                                     : vantlib::kProfileGeneric));
        // A stored custom profile keeps its shape even when no outline was picked in this dialog.
        const wxString current = shapeLabel(m_selected->type(), false);
        if (shape->FindString(current, true) == wxNOT_FOUND)
            shape->Append(current);
        shape->SetStringSelection(current);
    }
}

void DlgProfiles::getNewProfileAttributes(wxString& type, wxString& standard, wxString& name,
                                          vl_db::EDbType) const {
    type = getLastUsedProfileType();
    if (type.empty())
        type = profileTypeLabel(vantlib::kProfileGeneric);
    standard = toWx(vl_db::convertProfileStandardLabel(vl_db::getUserDefinedGlobalLabel(), vl_db::kDisplayedString));
    name = isAllFilterSelected(kFilterName) ? wxString() : getFilterLabel(kFilterName);
}

wxString DlgProfiles::getLastUsedProfileType() const {
    if (!isAllFilterSelected(kFilterType) && !getFilterLabel(kFilterType).empty())
        return getFilterLabel(kFilterType);
    const wxChoice* type = XRCCTRL(*this, "ID_SET_TYPE", wxChoice);
    if (type->IsShown() && type->GetSelection() != wxNOT_FOUND)
        return type->GetStringSelection();
    return fieldText(*this, "ID_TYPE_TXTCTRL");
}

void DlgProfiles::startNewProfile(vl_db::EDbType target) {
    if (target != vl_db::kDbProject && target != vl_db::kDbCentral)
        target = vl_db::kDbProject;
    if (!vl_db::writable(m_libs, target)) {
        showMessage(this, _("Destination library is read-only."));
        return;
    }
    wxWindowUpdateLocker freeze(this);
    wxString type, standard, name;
    getNewProfileAttributes(type, standard, name, target);
    m_browser->deselectAll(vl_db::kDbProject);
    m_browser->deselectAll(vl_db::kDbCentral);
    m_selected = QcSmartPtr<vantlib::Profile>();
    m_selectionChanged = false;
    m_creating = true;
    m_target = target;

    XRCCTRL(*this, "ID_SET_TYPE", wxChoice)->SetStringSelection(type);
    textField(*this, "ID_SET_STANDARD")->ChangeValue(standard);
    textField(*this, "ID_SET_STANDARD")->SetEditable(false);
    textField(*this, "ID_SET_NAME")->ChangeValue(name);
    textField(*this, "ID_SIZE_VALUE")->ChangeValue(wxString());
    wxChoice* shape = XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice);
    // The shape the shape filter names, else the I-shape, the most common section.
    const vantlib::ObjectType filtered =
        isAllFilterSelected(kFilterShape) ? vantlib::kUnknownObject : shapeTypeFromLabel(getFilterLabel(kFilterShape));
    const vantlib::ObjectType chosen =
        filtered != vantlib::kUnknownObject && filtered != vantlib::kCustomProfile ? filtered : vantlib::kIShapeProfile;
    shape->SetStringSelection(shapeLabel(chosen, false));
    showPropChoiceFields(true);
    showChosenShape();
    updateProfileProps();
    textField(*this, "ID_SET_NAME")->SetFocus();
}

void DlgProfiles::showChosenShape() {
    const vantlib::ObjectType type =
        shapeTypeFromLabel(XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice)->GetStringSelection());
    const ShapePanel* panel = shapePanel(type);
    m_preview = panel && panel->picture ? wxXmlResource::Get()->LoadBitmap(panel->picture) : wxNullBitmap;
    wxWindow* preview = FindWindow(XRCID("PANEL_PREVIEW"));
    preview->Show(m_preview.IsOk());
    preview->GetParent()->Layout();
    preview->Refresh();
    showShapePanel(type);
    if (const vantlib::ProfileClass* shape = vantlib::ProfileClass::byType(type))
        fillParameters(*shape->createEmpty(), true, false);
    displayMeasureUnit();
    FindWindow(XRCID("PANEL_PROPS"))->Layout();
    Layout();
}

void DlgProfiles::onSavedShapeChanged(wxCommandEvent&) {
    wxWindowUpdateLocker freeze(this);
    showChosenShape();
}

double DlgProfiles::getParameterValue(const char* controlName) const {
    const ShapeRow* row = rowOfControl(controlName);
    const wxTextCtrl* field = textField(*this, controlName);
    if (!row || !field)
        return 0.0;
    const auto library = getLib(m_creating ? m_target : currentDb());
    return parameterValue(field->GetValue(), row->length, library ? library->unit() : OdDb::kUnitsMillimeters);
}

template <>
void DlgProfiles::updateProfile<vantlib::CustomProfile>(vantlib::CustomProfile* profile) {
    if (profile && m_customInfo && m_customInfo->profile && m_customInfo->profile.get() != profile)
        profile->set_geometry(m_customInfo->profile->geometry());
}

void DlgProfiles::copyGridAttributes(vantlib::Profile& profile) const {
    if (wxPGProperty* description = m_grid->GetPropertyByName("description"))
        profile.set_description(toOd(description->GetValueAsString()));
}

QcSmartPtr<vantlib::Profile> DlgProfiles::profileFromFields(const std::shared_ptr<vantlib::Library>& library) {
    const wxString shapeText = XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice)->GetStringSelection();
    const vantlib::ProfileClass* shape = vantlib::ProfileClass::byName(toOd(getShapeReverseTranslation(shapeText)));
    if (!shape)
        return QcSmartPtr<vantlib::Profile>();
    QcSmartPtr<vantlib::Profile> profile;
    if (shape->type() == vantlib::kCustomProfile) {
        if (!m_customInfo || !m_customInfo->profile)
            return profile;
        auto custom = vantlib::CustomProfile::create(QcSmartPtr<vantlib::ProfileName>(), OdString());
        initializeProfile(custom, m_customInfo);
        profile = custom;
    } else {
        profile = shape->createEmpty();
        updateProfileOfItsClass(*profile, [this](const char* control) { return getParameterValue(control); },
                                [](vantlib::CustomProfile&) {});
    }
    // A name object that is not stored yet: the checks before storing compare its text.
    const vantlib::ProfileType type =
        profileTypeFromLabel(XRCCTRL(*this, "ID_SET_TYPE", wxChoice)->GetStringSelection());
    auto standard = library ? library->get<vantlib::ProfileStandard>(vantlib::NameKey(vl_db::getUserDefinedGlobalLabel()))
                            : QcSmartPtr<vantlib::ProfileStandard>();
    if (!standard)
        standard = vantlib::ProfileStandard::create(vl_db::getUserDefinedGlobalLabel());
    profile->set_name(vantlib::ProfileName::create(standard, toOd(fieldText(*this, "ID_SET_NAME")), type));
    profile->set_size(toOd(fieldText(*this, "ID_SIZE_VALUE")));
    copyGridAttributes(*profile);
    return profile;
}

void DlgProfiles::initializeProfile(QcSmartPtr<vantlib::CustomProfile> profile, CustomProfileInfo* info) {
    if (!profile || !info || !info->profile)
        return;
    profile->set_geometry(info->profile->geometry());
    if (info->profile->has_offset())
        profile->set_offset(info->profile->offset());
}

QcSmartPtr<vantlib::Profile> DlgProfiles::storeInUserStandard(const std::shared_ptr<vantlib::Library>& library,
                                                              const QcSmartPtr<vantlib::Profile>& profile) {
    // Standard, name and profile go in together: a profile the library refuses leaves no
    // name behind.
    vantlib::Transaction transaction(library);
    const OdString standardName = vl_db::getUserDefinedGlobalLabel();
    auto standard = library->get<vantlib::ProfileStandard>(vantlib::NameKey(standardName));
    if (!standard)
        standard = library->save(vantlib::ProfileStandard::create(standardName));
    const vantlib::ProfileNameKey nameKey(profile->name()->name(), standard->id(), profile->name()->type());
    auto name = library->get<vantlib::ProfileName>(nameKey);
    if (!name)
        name = library->save(vantlib::ProfileName::create(standard, nameKey.name, nameKey.type));
    profile->set_name(name);
    auto stored = library->save(profile);
    transaction.commit();
    return stored;
}

QcSmartPtr<vantlib::Profile> DlgProfiles::createPredefinedProfile(bool select) {
    const vl_db::EDbType target = m_creating ? m_target : vl_db::kDbProject;
    const auto library = getLib(target);
    if (!library)
        return QcSmartPtr<vantlib::Profile>();
    const QcSmartPtr<vantlib::Profile> profile = profileFromFields(library);
    if (!profile || !isToBeSaved(profile))
        return QcSmartPtr<vantlib::Profile>();
    if (auto existing = isProfileExist(toWx(vl_db::fullProfileName(*profile)), target, profile->name()->type());
        existing && !(m_selected && existing->id() == m_selected->id() && currentDb() == target)) {
        showMessage(this, wxString::Format(_("A user-defined profile \"%s\" of this type already exists. Choose "
                                             "another name or size."),
                                           toWx(vl_db::fullProfileName(*existing))));
        return QcSmartPtr<vantlib::Profile>();
    }
    const auto stored = storeInUserStandard(library, profile);
    if (select) {
        m_creating = false;
        selectSaved(stored, target);
    }
    return stored;
}

bool DlgProfiles::updateSavedProfile() {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    const auto library = getLib(currentDb());
    if (!m_selected || !db || !library)
        return false;
    const OdArray<OdDbObjectId> entities = m_host ? entitiesUsing(*m_host, *db, m_selected->id()) : OdArray<OdDbObjectId>();
    int answer = wxg::DlgQuestion::kFirstAnswer;
    if (!entities.isEmpty()) {
        m_updateDlg = std::make_shared<wxg::DlgUpdateProfile>(this, toWx(vl_db::fullProfileName(*m_selected)),
                                                              static_cast<unsigned>(entities.size()));
        answer = m_updateDlg->ShowModal();
        if (answer != wxg::DlgQuestion::kFirstAnswer && answer != wxg::DlgQuestion::kSecondAnswer)
            return false;
    }
    // The stored profile as it was, for the entities that keep it, and a copy to edit.
    const QcSmartPtr<vantlib::Profile> original = library->get<vantlib::Profile>(m_selected->id());
    const QcSmartPtr<vantlib::Profile> edited = library->get<vantlib::Profile>(m_selected->id());
    if (!original || !edited)
        return false;
    updateProfileOfItsClass(*edited, [this](const char* control) { return getParameterValue(control); },
                            [this](vantlib::CustomProfile& custom) { updateProfile(&custom); });
    copyGridAttributes(*edited);
    if (!isToBeSaved(edited))
        return false;

    vantlib::Transaction transaction(library);
    QcSmartPtr<vantlib::Profile> kept;
    if (answer == wxg::DlgQuestion::kSecondAnswer) {
        // "Keep entities": the entities keep the section they have.
        kept = keepStoredProfileForEntities(library, original);
    }
    m_selected = library->save(edited);
    transaction.commit();
    if (m_host && !entities.isEmpty()) {
        if (kept)
            m_host->setProfileId(kept->id(), entities);
        else
            m_host->applyProfile(m_selected, entities);
    }
    return true;
}

bool DlgProfiles::isToBeSaved(const QcSmartPtr<vantlib::Profile>& profile) {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    if (!m_host || !db || !profile)
        return false;
    std::vector<QcSmartPtr<vantlib::Profile>> found;
    const auto library = getLib(m_creating ? m_target : currentDb());
    const OdDb::UnitsValue unit = library ? library->unit() : OdDb::kUnitsMillimeters;
    if (!m_host->findInDB(*db, *profile, unit, found))
        return true;
    // The stored version of the profile being changed is no duplicate of it.
    std::vector<QcSmartPtr<vantlib::Profile>> matches;
    const auto project = getLib(vl_db::kDbProject);
    for (const auto& match : found) {
        const auto owner = match->library();
        const bool itself = profile->id() != 0 && match->id() == profile->id() && owner && library &&
                            owner->guid() == library->guid();
        if (!itself)
            matches.push_back(match);
    }
    // A search that reports matches without naming one decides nothing in the user's favour.
    if (found.empty())
        return false;
    if (matches.empty())
        return true;
    QcSmartPtr<vantlib::Profile> taken;
    for (const auto& match : matches)
        if (identicalProfiles(*match, *profile)) {
            taken = match;
            break;
        }
    const bool askToSave = !taken;
    if (!taken)
        taken = matches.front();
    const auto owner = taken->library();
    const bool inProject = owner && project && owner->guid() == project->guid();
    return showSaveDlg(taken, askToSave, inProject);
}

bool DlgProfiles::showSaveDlg(const QcSmartPtr<vantlib::Profile>& existing, bool askToSave, bool inProject) {
    m_saveDlg = std::make_shared<DlgSaveProfile>(this, toWx(vl_db::fullProfileName(*existing)), askToSave);
    const int answer = m_saveDlg->ShowModal();
    if (askToSave && answer == wxID_SAVE)
        return true;
    m_creating = false;
    selectSaved(existing, inProject ? vl_db::kDbProject : vl_db::kDbCentral);
    return false;
}

QcSmartPtr<vantlib::Profile> DlgProfiles::isProfileExist(const QcSmartPtr<vantlib::Profile>& profile) const {
    if (!profile)
        return QcSmartPtr<vantlib::Profile>();
    const vantlib::ProfileType type =
        profile->name() ? profile->name()->type() : profileTypeFromLabel(getLastUsedProfileType());
    return isProfileExist(toWx(vl_db::fullProfileName(*profile)), vl_db::kDbProject, type);
}

QcSmartPtr<vantlib::Profile> DlgProfiles::isProfileExist(const wxString& fullName, vl_db::EDbType dbType,
                                                         vantlib::ProfileType type) const {
    const auto library = getLib(dbType);
    if (!library)
        return QcSmartPtr<vantlib::Profile>();
    const auto standard =
        library->get<vantlib::ProfileStandard>(vantlib::NameKey(vl_db::getUserDefinedGlobalLabel()));
    if (!standard)
        return QcSmartPtr<vantlib::Profile>();
    const FullNameParts parts = splitFullName(fullName);
    const auto name =
        library->get<vantlib::ProfileName>(vantlib::ProfileNameKey(toOd(parts.name), standard->id(), type));
    if (!name)
        return QcSmartPtr<vantlib::Profile>();
    vantlib::ProfileCriteria criteria;
    criteria.nameId = name->id();
    criteria.size = vantlib::StringCriteria(toOd(parts.size), vantlib::StringCriteria::kSize);
    std::vector<QcSmartPtr<vantlib::Profile>> candidates;
    library->get(candidates, criteria);
    for (const auto& candidate : candidates)
        if (toWx(vl_db::fullProfileName(*candidate)) == fullName)
            return candidate;
    return QcSmartPtr<vantlib::Profile>();
}

void DlgProfiles::displayPredefinedFromCustom(QcSmartPtr<vantlib::Profile>& profile) {
    if (!m_customInfo || !m_customInfo->profile)
        return;
    initShapeChoices();
    startNewProfile(vl_db::kDbProject);
    if (!m_creating)
        return;
    XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice)->SetStringSelection(shapeLabel(vantlib::kCustomProfile, false));
    showChosenShape();
    profile = m_customInfo->profile;
}

void DlgProfiles::selectSaved(const QcSmartPtr<vantlib::Profile>& profile, vl_db::EDbType type) {
    wxWindowUpdateLocker freeze(this);
    m_browser->setCurrent(type);
    updateLists(false);
    if (m_browser->model(type).find(profile->id()) == -1) {
        // The filters hide it: they go back to showing everything, also for the next dialog.
        m_searchText.clear();
        XRCCTRL(*this, "ID_PROFILEFILTER", wxSearchCtrl)->ChangeValue(wxString());
        for (const EFilterKind kind : {kFilterType, kFilterStandard, kFilterShape, kFilterName})
            if (!isAllFilterSelected(kind))
                onFilterChanged(kind, 0);
        updateLists(false);
    }
    updateFilters(kFilterAll);
    m_browser->selectRow(type, profile->id());
    setSelectedProfile(type);
    fitColumns();
}

void DlgProfiles::onSave(wxCommandEvent&) {
    try {
        saveEdits();
    } catch (const std::exception& error) {
        showError(this, error);
    }
}

void DlgProfiles::saveEdits() {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    if (!db || !getLib(vl_db::kDbProject))
        return;
    if (m_creating || !m_selected) {
        if (fieldText(*this, "ID_SET_NAME").empty() || fieldText(*this, "ID_SIZE_VALUE").empty()) {
            showMessage(this, _("Enter the name and the size of the profile."));
            return;
        }
        createPredefinedProfile(true);
        return;
    }
    const auto& name = m_selected->name();
    const bool shapeChanged = FindWindow(XRCID("ID_SET_SHAPE_CHOICE"))->IsShown() &&
                              XRCCTRL(*this, "ID_SET_SHAPE_CHOICE", wxChoice)->GetStringSelection() !=
                                  shapeLabel(m_selected->type(), false);
    const bool nameChanged = fieldText(*this, "ID_SIZE_VALUE") != toWx(m_selected->size()) ||
                             (name && fieldText(*this, "ID_SET_NAME") != toWx(name->name()));
    const bool typeChanged =
        name && name->standard() &&
        profileTypeFromLabel(XRCCTRL(*this, "ID_SET_TYPE", wxChoice)->GetStringSelection()) != name->type();
    if (!shapeChanged && !nameChanged && !typeChanged) {
        const vl_db::EDbType type = currentDb();
        if (updateSavedProfile())
            selectSaved(m_selected, type);
        return;
    }
    // Another name, type or shape is another profile: it is created in the user-defined
    // standard, the entities that used the old one move to it, and the old one goes. The old
    // one goes first, inside the same transaction, as the new one may take its key (only the
    // shape changed); when nothing is created, the old one and its entities stay as they were.
    const unsigned oldId = m_selected->id();
    const auto project = getLib(vl_db::kDbProject);
    OdArray<OdDbObjectId> entities;
    if (m_host)
        m_host->removeProfileId(*db, oldId, entities);
    QcSmartPtr<vantlib::Profile> created;
    try {
        vantlib::Transaction transaction(project);
        project->remove<vantlib::Profile>(oldId);
        created = createPredefinedProfile(false);
        if (created)
            transaction.commit();
    } catch (...) {
        if (m_host && !entities.isEmpty())
            m_host->setProfileId(oldId, entities);
        throw;
    }
    if (m_host && !entities.isEmpty())
        m_host->setProfileId(created ? created->id() : oldId, entities);
    if (created)
        selectSaved(created, vl_db::kDbProject);
}

DlgProfiles::EButton DlgProfiles::createProfile(vl_db::DocumentLibraries* libs, QcSmartPtr<vantlib::Profile>& result,
                                                CustomProfileInfo* customInfo, ProfilesInfo* host) {
    DlgProfiles dialog(wxg::mainWindow(), libs, vl_db::kModeManager, vl_db::kDbNone, 0, customInfo, host);
    dialog.m_startNew = true;
    return runModal(dialog, result);
}

}  // namespace vl_app
