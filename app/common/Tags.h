#pragma once
// Tags of library objects as name lists, and the tag filter that all library dialogs share.
#include <memory>
#include <vector>

#include <wx/arrstr.h>
#include <wx/string.h>

#include <QcSmartPtr.h>

#include <vantlib/Composition.h>
#include <vantlib/Library.h>
#include <vantlib/Material.h>

#include <vl_db/DocumentLibraries.h>

class wxToolBar;

namespace vl_app {

// Purges the library's unused tags (a change to the library), then appends the name of each of
// its tags that `out` does not hold yet.
void getTags(wxArrayString& out, const std::shared_ptr<vantlib::Library>& library);
// Sorted names of the tags of the project and central libraries, each once.
wxArrayString allTags(vl_db::DocumentLibraries* libs);
// The tags' names in order.
wxArrayString arrStr(const std::vector<QcSmartPtr<vantlib::Tag>>& tags);
// Replaces the object's tags with tags of these names, in order.
void setTags(QcSmartPtr<vantlib::Material>& material, const wxArrayString& names);
void setTags(QcSmartPtr<vantlib::Composition>& composition, const wxArrayString& names);

// Whether the library dialogs filter their lists by the drawing's filter tags. One switch for
// the whole process, off at start.
bool tagFilter();
void tagFilter(bool on);
void tagFilterToggle();

// Tool tip of the filter button: "No tags" without libraries, "No filter" when the drawing
// names no filter tags, else "Filter [a,b] is ON" / "... is OFF".
wxString tagFilterToolTip(vl_db::DocumentLibraries* libs);
// Shows the switch on the filter tool `toolId` of `tools`: its toggled state and tool tip.
void showTagFilterTool(wxToolBar* tools, int toolId, vl_db::DocumentLibraries* libs);

}  // namespace vl_app
