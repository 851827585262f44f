#include "app/common/Tags.h"

#include <wx/intl.h>
#include <wx/toolbar.h>

#include <OdStringWx.h>

#include <vl_db/DbVantLibManager.h>

namespace vl_app {

void getTags(wxArrayString& out, const std::shared_ptr<vantlib::Library>& library) {
    if (!library)
        return;
    // Unused tags would offer names that no object carries any more.
    library->purge<vantlib::Tag>();
    std::vector<QcSmartPtr<vantlib::Tag>> tags;
    library->get<vantlib::Tag>(tags);
    for (const auto& tag : tags) {
        const wxString name = toWx(tag->name());
        if (out.Index(name) == wxNOT_FOUND)
            out.Add(name);
    }
}

wxArrayString allTags(vl_db::DocumentLibraries* libs) {
    wxArrayString names;
    if (!libs)
        return names;
    getTags(names, libs->primary(false));
    getTags(names, libs->secondary());
    names.Sort();
    return names;
}

wxArrayString arrStr(const std::vector<QcSmartPtr<vantlib::Tag>>& tags) {
    wxArrayString names;
    for (const auto& tag : tags)
        if (tag)
            names.Add(toWx(tag->name()));
    return names;
}

namespace {
template <class T>
void replaceTags(QcSmartPtr<T>& object, const wxArrayString& names) {
    if (!object)
        return;
    object->set_tags(vantlib::Tags());
    for (const auto& name : names)
        object->add_tag(toOd(name));
}

bool& filterSwitch() {
    static bool on = false;
    return on;
}
}  // namespace

void setTags(QcSmartPtr<vantlib::Material>& material, const wxArrayString& names) { replaceTags(material, names); }

void setTags(QcSmartPtr<vantlib::Composition>& composition, const wxArrayString& names) {
    replaceTags(composition, names);
}

bool tagFilter() { return filterSwitch(); }
void tagFilter(bool on) { filterSwitch() = on; }
void tagFilterToggle() { filterSwitch() = !filterSwitch(); }

wxString tagFilterToolTip(vl_db::DocumentLibraries* libs) {
    if (!libs || (!libs->primary() && !libs->secondary()))
        return _("No tags");
    const vl_db::DbVantLibManagerPtr manager = libs->vantlibManager();
    if (!manager)
        return _("No filter");
    const OdArray<OdString> tags = manager->filterTags();
    if (tags.empty())
        return _("No filter");
    wxString joined;
    for (const auto& tag : tags) {
        if (!joined.empty())
            joined += ",";
        joined += toWx(tag);
    }
    return tagFilter() ? wxString::Format(_("Filter [%s] is ON"), joined) : wxString::Format(_("Filter [%s] is OFF"), joined);
}

void showTagFilterTool(wxToolBar* tools, int toolId, vl_db::DocumentLibraries* libs) {
    tools->ToggleTool(toolId, tagFilter());
    tools->SetToolShortHelp(toolId, tagFilterToolTip(libs));
}

}  // namespace vl_app
