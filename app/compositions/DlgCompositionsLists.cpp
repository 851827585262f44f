// The two composition lists of the compositions dialog (on the shared two-list browser): what
// they list and draw, the type and tag filters, and the commands that create compositions.
#include <wx/choice.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <OdStringWx.h>

#include <vantlib/CompositionType.h>
#include <vantlib/Criteria.h>

#include "app/common/Helpers.h"
#include "app/common/Previews.h"
#include "app/common/Tags.h"
#include "app/compositions/DlgCompositions.h"
#include "app/materials/MaterialEditRules.h"

namespace vl_app {

void DlgCompositions::initLists() {
    ListKind kind;
    kind.objectType = vantlib::kComposition;
    kind.projectMenu = "MENU_BIM_CMP_PROJ";
    kind.centralMenu = "MENU_BIM_CMP_LIBR";
    kind.projectHeader = _("Project");
    kind.centralHeader = _("Central Database");
    kind.placeholder = "BmpEmptyCmp_32";
    kind.thumbnailEdge = 32;
    TwoListClient& client = *this;
    m_browser = std::make_unique<TwoListBrowser>(this, m_libs, client, kind);
    m_browser->bindListCommands();
    m_browser->setCurrent(m_dbType);
}

void DlgCompositions::updateLists(bool keepSelection) { m_browser->updateLists(keepSelection); }

std::vector<ObjectRow> DlgCompositions::queryRows(const std::shared_ptr<vantlib::Library>& library) {
    vantlib::CompositionCriteria criteria;
    if (!m_filterType.empty()) {
        if (baseCompositionClasses().Index(m_filterType) != wxNOT_FOUND)
            criteria.baseType = compositionBaseType(m_filterType);
        else
            criteria.compositionType = vantlib::CompositionType::create(toOd(m_filterType));
    }
    if (tagFilter() && m_libs) {
        if (const auto manager = m_libs->vantlibManager()) {
            const OdArray<OdString> tags = manager->filterTags();
            criteria.tags.assign(tags.begin(), tags.end());
        }
    }
    std::vector<ObjectRow> rows;
    library->list<vantlib::Composition>(rows, criteria);
    return rows;
}

wxBitmap DlgCompositions::drawThumbnail(const std::shared_ptr<vantlib::Library>& library, const ObjectRow& row,
                                        const wxSize& size) {
    const auto composition = library->get<vantlib::Composition>(row.id);
    return composition ? preview(composition, size, true) : wxNullBitmap;
}

std::set<unsigned> DlgCompositions::removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                                  const std::set<unsigned>& ids) {
    return library->remove<vantlib::Composition>(ids);
}

wxString DlgCompositions::keptMessage(const std::vector<wxString>& names) const {
    if (names.empty())
        return wxString();
    if (names.size() == 1)
        return wxString::Format(_("Couldn't remove composition '%s'.\nIt is referenced in one or more entities."),
                                names.front());
    wxString message = _("Some compositions couldn't be removed.\nThese are referenced in one or more entities:");
    for (const wxString& name : names)
        message += "\n    " + name;
    return message;
}

wxString DlgCompositions::rowsText(unsigned count) const {
    return wxString::Format(wxPLURAL("%u composition", "%u compositions", count), count);
}

unsigned DlgCompositions::currentObjectId() const { return m_composition ? m_composition->id() : 0; }

void DlgCompositions::currentChanged() {
    m_dbType = m_browser->current();
    updateComposition();
}

void DlgCompositions::rowActivated() {
    if (m_mode == vl_db::kModePicker && m_composition && m_status == kValid)
        EndDialog(wxID_OK);
}

void DlgCompositions::updateCurrentRow() {
    if (!m_browser || !m_composition)
        return;
    // The row shows what is stored, as a refill would.
    try {
        m_browser->reloadRow<vantlib::Composition>(m_dbType, m_composition->id());
    } catch (const std::exception& error) {
        reportError(error);
    }
}

void DlgCompositions::updateFilter() {
    showTagFilterTool(XRCCTRL(*this, "TBAR_EDIT", wxToolBar), XRCID("TOOL_FILTER"), m_libs);
}

void DlgCompositions::updateFilterTypes() {
    // The base types first, then the composition types of both libraries, each name once.
    wxArrayString types;
    try {
        types = compositionClasses(m_libs);
    } catch (const std::exception& error) {
        reportError(error);
    }
    types.Sort([](const wxString& a, const wxString& b) { return a.CmpNoCase(b); });
    m_filterTypes = baseCompositionClasses();
    for (const wxString& name : types)
        if (m_filterTypes.Index(name, false) == wxNOT_FOUND)
            m_filterTypes.Add(name);

    auto* filter = XRCCTRL(*this, "FILTER_TYPE", wxChoice);
    filter->Clear();
    filter->Append(_("All"));
    filter->Append(m_filterTypes);
    const int index = m_filterType.empty() ? 0 : filter->FindString(m_filterType, true);
    filter->SetSelection(index == wxNOT_FOUND ? 0 : index);
    if (index == wxNOT_FOUND)
        m_filterType.clear();
    if (m_composition)
        updateTypeChoice();
}

void DlgCompositions::onFilterType(wxCommandEvent& event) {
    m_filterType = event.GetSelection() <= 0 ? wxString() : event.GetString();
    wxWindowUpdateLocker freeze(this);
    saveComposition();
    updateLists(true);
    updateComposition();
}

void DlgCompositions::onToggleFilter(wxCommandEvent&) {
    tagFilterToggle();
    wxWindowUpdateLocker freeze(this);
    saveComposition();
    updateFilter();
    updateLists(true);
    updateComposition();
}

void DlgCompositions::createObject(vl_db::EDbType type) {
    const auto library = vl_db::library(m_libs, type, false);
    if (!vl_db::writable(library) || m_status != kValid)
        return;
    saveComposition();
    try {
        const wxString name = uniqueName(_("New"), [&](const wxString& candidate) {
            return bool(library->get<vantlib::Composition>(vantlib::NameKey(toOd(candidate))));
        });
        // A new composition is of the type the list shows, so that it stays listed.
        vantlib::Composition::Type baseType = vantlib::Composition::kWall;
        QcSmartPtr<vantlib::CompositionType> compositionType;
        if (!m_filterType.empty()) {
            if (baseCompositionClasses().Index(m_filterType) != wxNOT_FOUND)
                baseType = compositionBaseType(m_filterType);
            else
                compositionType = library->get<vantlib::CompositionType>(vantlib::NameKey(toOd(m_filterType)));
        }
        auto composition = vantlib::Composition::create(toOd(name), baseType);
        if (compositionType)
            composition->set_type(compositionType);
        m_composition = library->save(composition);
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    wxWindowUpdateLocker freeze(this);
    showStoredComposition(type);
    auto* name = XRCCTRL(*this, "TEXT_NAME", wxTextCtrl);
    name->SetFocus();
    name->SelectAll();
}

void DlgCompositions::duplicateCurrent(vl_db::EDbType type) {
    const auto library = vl_db::library(m_libs, type, false);
    if (!vl_db::writable(library) || !m_composition || m_composition->id() == 0 || m_status != kValid)
        return;
    saveComposition();
    try {
        auto copy = m_composition->cloneObject();
        const wxString name = uniqueName(toWx(m_composition->name()), [&](const wxString& candidate) {
            return bool(library->get<vantlib::Composition>(vantlib::NameKey(toOd(candidate))));
        });
        copy->set_name(toOd(name));
        m_composition = library->save(copy);
    } catch (const std::exception& error) {
        reportError(error);
        return;
    }
    wxWindowUpdateLocker freeze(this);
    showStoredComposition(type);
}

void DlgCompositions::showStoredComposition(vl_db::EDbType type) {
    m_dbType = type;
    m_browser->showObject(type, m_composition ? m_composition->id() : 0);
}


}  // namespace vl_app
