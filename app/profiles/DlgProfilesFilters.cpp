// The left side of the profiles dialog: the four filters, the search field, the query both
// lists are filled with, and what the lists ask of the dialog.
#include <map>

#include <wx/choice.h>
#include <wx/srchctrl.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vl_db/Profiles.h>

#include "app/common/ErrorMessages.h"
#include "app/profiles/DlgProfiles.h"
#include "app/profiles/ProfileShapes.h"

namespace vl_app {

namespace {
const char* const kFilterIds[4] = {"ID_SEL_TYPE_CHOICES", "ID_STANDARD_CHOICES", "ID_SHAPE_CHOICES",
                                   "ID_SEL_NAME_CHOICES"};

bool sameProfileName(const vantlib::ProfileName& a, const vantlib::ProfileName& b) {
    if (&a == &b)
        return true;
    const vantlib::ProfileStandard* standardA = a.standard().get();
    const vantlib::ProfileStandard* standardB = b.standard().get();
    const bool sameStandard =
        standardA == standardB || (standardA && standardB && standardA->name() == standardB->name());
    return sameStandard && a.type() == b.type() && a.name() == b.name();
}

// The label last chosen in each filter; a dialog opened later in the process starts with them.
std::array<wxString, 4>& rememberedLabels() {
    static std::array<wxString, 4> labels;
    return labels;
}
}  // namespace

wxChoice* DlgProfiles::getFilter(EFilterKind kind) const {
    return kind < kFilterAll ? XRCCTRL(*this, kFilterIds[kind], wxChoice) : nullptr;
}

wxString DlgProfiles::getFilterLabel(EFilterKind kind) const {
    const wxChoice* choice = getFilter(kind);
    return choice ? choice->GetStringSelection() : wxString();
}

bool DlgProfiles::isAllFilterSelected(EFilterKind kind) const { return getFilterLabel(kind) == _("All"); }

bool DlgProfiles::setFilter(EFilterKind kind, const wxString& label) {
    wxChoice* choice = getFilter(kind);
    const int index = choice ? choice->FindString(label, true) : wxNOT_FOUND;
    if (index == wxNOT_FOUND)
        return false;
    choice->SetSelection(index);
    return true;
}

void DlgProfiles::setFilter(EFilterKind kind, int index) {
    if (wxChoice* choice = getFilter(kind))
        choice->SetSelection(index);
}

void DlgProfiles::initFilters() {
    for (const EFilterKind kind : {kFilterType, kFilterStandard, kFilterShape, kFilterName}) {
        if (wxChoice* choice = getFilter(kind)) {
            choice->Clear();
            choice->Append(_("All"));
            choice->SetSelection(0);
        }
    }
}

void DlgProfiles::restoreFilters() {
    for (const EFilterKind kind : {kFilterType, kFilterStandard, kFilterShape, kFilterName}) {
        const wxChoice* choice = getFilter(kind);
        const wxString remembered = rememberedLabels()[kind];
        const int index = choice && !remembered.empty() ? choice->FindString(remembered, true) : wxNOT_FOUND;
        if (index >= 1)
            onFilterChanged(kind, index);
    }
}

void DlgProfiles::onFilterChanged(EFilterKind kind, int selection) {
    if (kind >= kFilterAll)
        return;
    wxWindowUpdateLocker freeze(this);
    setFilter(kind, selection);
    refillLists(true, false);
    rememberedLabels()[kind] = getFilterLabel(kind);
    updateFilters(isAllFilterSelected(kind) ? kFilterAll : kind);
    fitColumns();
}

void DlgProfiles::onSelTypeChanged(wxCommandEvent& event) { onFilterChanged(kFilterType, event.GetSelection()); }
void DlgProfiles::onStandardChanged(wxCommandEvent& event) { onFilterChanged(kFilterStandard, event.GetSelection()); }
void DlgProfiles::onShapeChanged(wxCommandEvent& event) { onFilterChanged(kFilterShape, event.GetSelection()); }
void DlgProfiles::onNameChanged(wxCommandEvent& event) { onFilterChanged(kFilterName, event.GetSelection()); }

void DlgProfiles::onProfilenameFilterTextChanged(wxCommandEvent&) {
    m_searchText = XRCCTRL(*this, "ID_PROFILEFILTER", wxSearchCtrl)->GetValue();
    wxWindowUpdateLocker freeze(this);
    refillLists(true, false);
}

void DlgProfiles::updateFilters(EFilterKind kind) {
    std::set<wxString> types, standards, shapes, names;
    // Labels repeat across thousands of rows; each distinct one is translated once.
    std::map<vantlib::ProfileType, wxString> typeLabels;
    std::map<vantlib::ObjectType, wxString> shapeLabels;
    for (const vl_db::EDbType type : {vl_db::kDbCentral, vl_db::kDbProject}) {
        // The lists are sorted by standard and name: the profiles of one name follow each other.
        const vantlib::ProfileName* previous = nullptr;
        for (const auto& profile : m_listed[type]) {
            const auto& name = profile->name();
            if (!name)
                continue;
            auto shape = shapeLabels.find(profile->type());
            if (shape == shapeLabels.end())
                shape = shapeLabels.emplace(profile->type(), shapeLabel(profile->type(), true)).first;
            if (!shape->second.empty())
                shapes.insert(shape->second);
            if (previous && sameProfileName(*previous, *name))
                continue;
            previous = name.get();
            auto typeLabel = typeLabels.find(name->type());
            if (typeLabel == typeLabels.end())
                typeLabel = typeLabels.emplace(name->type(), profileTypeLabel(name->type())).first;
            types.insert(typeLabel->second);
            names.insert(toWx(name->name()));
            if (name->standard())
                standards.insert(toWx(vl_db::convertProfileStandardLabel(name->standard()->name(), vl_db::kDisplayedString)));
        }
    }
    const bool wasUpdating = m_updating;
    m_updating = true;
    if (kind != kFilterType)
        updateFilterList(kFilterType, types);
    if (kind != kFilterShape)
        updateFilterList(kFilterShape, shapes);
    if (kind != kFilterStandard)
        updateFilterList(kFilterStandard, standards);
    if (kind != kFilterName)
        updateFilterList(kFilterName, names);
    m_updating = wasUpdating;
}

void DlgProfiles::updateFilterList(EFilterKind kind, const std::set<wxString>& values) {
    wxChoice* choice = getFilter(kind);
    if (!choice)
        return;
    const wxString label = choice->GetStringSelection();
    wxArrayString items;
    items.reserve(values.size() + 1);
    items.Add(_("All"));
    for (const wxString& value : values)
        items.Add(value);
    choice->Set(items);
    choice->SetSelection(choice->FindString(label, true));
}

vantlib::ProfilesPanelQuery DlgProfiles::composeProfilesQuery() const {
    const auto chosen = [this](EFilterKind kind) {
        return isAllFilterSelected(kind) ? wxString() : getFilterLabel(kind);
    };
    const wxString name = chosen(kFilterName);
    const wxString shape = chosen(kFilterShape);
    wxString standard = chosen(kFilterStandard);
    if (standard == wxGetTranslation(toWx(vl_db::getUserDefinedGlobalLabel())))
        standard = toWx(vl_db::getUserDefinedGlobalLabel());
    standard = toWx(vl_db::convertProfileStandardLabel(toOd(standard), vl_db::kStoredString));

    vantlib::ProfilesPanelQuery query;
    if (!standard.empty())
        query.standards.insert(toOd(standard));
    else
        query.standards = allowedStandards();
    if (!isAllFilterSelected(kFilterType))
        query.type = profileTypeFromLabel(getFilterLabel(kFilterType));
    const wxString shortName = shapeShortName(shape);
    if (!shortName.empty())
        query.className = toOd("vantlib::" + shortName);
    if (!name.empty())
        query.name.equals(toOd(name));
    if (!m_searchText.empty())
        query.text.contains(toOd(m_searchText));
    return query;
}

std::set<OdString> DlgProfiles::allowedStandards() const {
    std::set<OdString> allowed;
    if (!m_host)
        return allowed;
    m_host->getAllowedProfileStandards(allowed);
    if (!allowed.empty() && !m_host->expandProfileStandards(m_libs ? m_libs->database() : nullptr, allowed))
        throw NoStandardsError();
    return allowed;
}

void DlgProfiles::updateLists(bool keepSelection) { refillLists(keepSelection, true); }

void DlgProfiles::refillLists(bool keepSelection, bool reread) {
    vantlib::ProfilesPanelQuery whole;
    try {
        // One query for both lists: a host restriction that matches nothing is reported once.
        m_query = composeProfilesQuery();
        whole.standards = allowedStandards();
        // A chosen standard overrides the host's list: what is held must include it.
        if (!whole.standards.empty())
            whole.standards.insert(m_query.standards.begin(), m_query.standards.end());
    } catch (const NoStandardsError& error) {
        showMessage(this, toWx(error.description()));
        return;
    }
    if (whole.standards != m_wholeQuery.standards) {
        m_wholeQuery = whole;
        reread = true;
    }
    m_refilling = !reread;
    // A list whose library is missing stays empty.
    for (auto& listed : m_listed)
        listed.clear();
    m_browser->updateList(vl_db::kDbCentral, keepSelection);
    m_browser->updateList(vl_db::kDbProject, keepSelection);
    if (keepSelection) {
        const vl_db::EDbType type = m_browser->current();
        if (type == vl_db::kDbProject || type == vl_db::kDbCentral) {
            const unsigned keep = id();
            if (keep != 0 && m_browser->model(type).find(keep) != -1)
                m_browser->selectRow(type, keep);
            setSelectedProfile(type);
        }
    }
    m_refilling = false;
    if (!m_selected)
        m_selectionChanged = true;
}

std::vector<ObjectRow> DlgProfiles::queryRows(const std::shared_ptr<vantlib::Library>& library) {
    const vl_db::EDbType type = library == getLib(vl_db::kDbProject) ? vl_db::kDbProject : vl_db::kDbCentral;
    // The library is read whole once (within the host's standards) and sorted; filters and the
    // search narrow what is held. Any other refill (a change to the library) reads it again.
    auto& loaded = m_loaded[type];
    if (!loaded || !m_refilling) {
        loaded.emplace();
        library->get(*loaded, m_wholeQuery);
        vl_db::sortProfiles(*loaded);
    }
    auto& profiles = m_listed[type];
    profiles.clear();
    const vantlib::ProfilesPanelQuery::Matcher matches(m_query);
    for (const auto& profile : *loaded)
        if (matches(*profile))
            profiles.push_back(profile);
    std::vector<ObjectRow> rows(profiles.size());
    for (size_t i = 0; i < profiles.size(); ++i) {
        rows[i].id = profiles[i]->id();
        rows[i].name = vl_db::fullProfileName(*profiles[i]);
    }
    return rows;
}

void DlgProfiles::fitColumns() {
    for (const vl_db::EDbType type : {vl_db::kDbProject, vl_db::kDbCentral})
        if (ObjectListCtrl* target = list(type))
            target->fitColumn();
}

}  // namespace vl_app
