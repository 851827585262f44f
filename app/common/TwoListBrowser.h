#pragma once
// The two object lists of the materials, compositions and profiles dialogs: the project
// library's objects above, the central library's below. The browser fills both from one query
// each, keeps the selection in one list at a time (reloading the dialog's object 80 ms after a
// deselection, so that a deselection followed by a selection elsewhere costs one load), and
// carries out the list commands: delete, copy both ways, drag, context menus. The dialog tells
// it what to list and how to draw, remove and describe its kind of object.
#include <memory>
#include <set>
#include <vector>

#include <wx/event.h>
#include <wx/menu.h>
#include <wx/timer.h>

#include <vantlib/Library.h>
#include <vantlib/Types.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

#include "app/common/BrowserRules.h"
#include "app/common/ListThumbnails.h"
#include "app/common/ObjectListCtrl.h"
#include "app/common/ObjectListModel.h"

class wxDialog;
class wxListEvent;

namespace vl_app {

// What a dialog adds to the browser for its kind of object.
class TwoListClient {
public:
    virtual ~TwoListClient() = default;

    // The rows of `library` that the dialog's filters select, in the order they are shown.
    virtual std::vector<ObjectRow> queryRows(const std::shared_ptr<vantlib::Library>& library) = 0;
    // The thumbnail of a row of `library`; a null bitmap shows the placeholder.
    virtual wxBitmap drawThumbnail(const std::shared_ptr<vantlib::Library>& library, const ObjectRow& row,
                                   const wxSize& size) = 0;
    // Removes what it can of these objects; returns the ids that stay (still referenced).
    virtual std::set<unsigned> removeObjects(const std::shared_ptr<vantlib::Library>& library,
                                             const std::set<unsigned>& ids) = 0;
    // The message for objects that could not be removed (their names in list order).
    virtual wxString keptMessage(const std::vector<wxString>& names) const = 0;
    // The text of a drag of several rows, such as "3 materials".
    virtual wxString rowsText(unsigned count) const = 0;

    // Id of the object the dialog shows (0 when none): its row is selected again after a refill.
    virtual unsigned currentObjectId() const = 0;
    // Whether the dialog's edits of its object are valid, so the user may leave it.
    virtual bool currentValid() const = 0;
    // Writes the dialog's pending edits before the selection or a library changes.
    virtual void saveCurrent() = 0;
    // The selection changed: load the object of `TwoListBrowser::selectedId()`.
    virtual void currentChanged() = 0;
    // A row was activated (double click, Enter); the selection is already loaded.
    virtual void rowActivated() {}
    // Objects were copied into a library (by a command or a drop).
    virtual void librariesChanged() {}
    // New and Duplicate (see TwoListBrowser::bindListCommands): make an object in the library
    // of `type` and show it.
    virtual void createObject(vl_db::EDbType /*type*/) {}
    virtual void duplicateCurrent(vl_db::EDbType /*type*/) {}
};

struct ListKind {
    vantlib::ObjectType objectType = vantlib::kUnknownObject;
    wxString projectMenu;    // layout names of the context menus
    wxString centralMenu;
    wxString projectHeader;  // column headers
    wxString centralHeader;
    wxString placeholder;    // picture name of rows without a thumbnail
    int thumbnailEdge = 32;  // 0: the rows show text only
};

class TwoListBrowser : public wxEvtHandler, private RowPictures {
public:
    // Takes the lists LIST_PROJECT and LIST_LIBRARY of `dialog` (ObjectListCtrl subclasses).
    TwoListBrowser(wxDialog* dialog, vl_db::DocumentLibraries* libs, TwoListClient& client, const ListKind& kind);
    ~TwoListBrowser() override;

    ObjectListCtrl* list(vl_db::EDbType type) const;
    const ObjectListModel& model(vl_db::EDbType type) const;
    // Which library an event's list shows (kDbNone for other windows).
    vl_db::EDbType typeOf(const wxObject* eventObject) const;
    std::shared_ptr<vantlib::Library> library(vl_db::EDbType type) const;

    // The list that holds the selection (kDbNone before the first one).
    vl_db::EDbType current() const { return m_current; }
    void setCurrent(vl_db::EDbType type) { m_current = type; }
    // The selected object of the current list (its focused row when several): 0 when none.
    unsigned selectedId() const;
    std::set<unsigned> selectedIds(vl_db::EDbType type) const;
    // The selected object of list `type` as its library stores it; null when that list holds
    // no selection. Throws what the library throws.
    template <class T>
    QcSmartPtr<T> loadSelected(vl_db::EDbType type) const {
        const unsigned id = m_current == type ? selectedId() : 0;
        const auto source = library(type);
        return source && id != 0 ? source->template get<T>(id) : QcSmartPtr<T>();
    }
    int numSelected() const;

    BrowserState state() const;
    bool isEnabled(ListCommand command) const { return vl_app::isEnabled(command, state()); }
    vl_db::EDbType creationTarget() const { return vl_app::creationTarget(state()); }
    // Enables the event's control when it is one of the list commands (TOOL_NEW, TOOL_DEL, ...):
    // by the rules, and only while the dialog's edits are `valid`. False for other controls.
    bool enableListCommand(wxUpdateUIEvent& event, bool valid) const;
    // Handles the list commands of the dialog's toolbar and context menus (New, New in either
    // library, Duplicate, Delete, Copy either way) and their enabling: creation goes to the
    // client, the rest is done here.
    void bindListCommands();

    // Refills the lists from their libraries; with `keepSelection` the dialog's object stays
    // selected when it is still listed.
    void updateLists(bool keepSelection);
    void updateList(vl_db::EDbType type, bool keepSelection);
    // Makes the object `id` of library `type` the selected one: the other list is deselected,
    // the list refilled, the row selected and shown, and the dialog told.
    void showObject(vl_db::EDbType type, unsigned id);
    // Selects the row of `id` alone and scrolls it into view, without telling the dialog.
    void selectRow(vl_db::EDbType type, unsigned id);
    void deselectAll(vl_db::EDbType type);
    // The row of the object shows new text or a new thumbnail.
    void updateRow(vl_db::EDbType type, const ObjectRow& row);
    // The row of object `id` of kind T shows it as its library now stores it. Throws what the
    // library throws.
    template <class T>
    void reloadRow(vl_db::EDbType type, unsigned id) {
        const auto source = library(type);
        if (!source || id == 0)
            return;
        const ObjectRow stored = source->template listRow<T>(id);
        if (stored.id != 0)
            updateRow(type, stored);
    }

    // Removes the selected objects of the current list, telling the user which stay.
    void removeSelected();
    // Copies the selection of the other list into library `destination`.
    void copyTo(vl_db::EDbType destination);
    // The library `destination` when objects may be copied into it; otherwise null, after
    // telling the user that it is missing or read-only.
    std::shared_ptr<vantlib::Library> copyDestination(vl_db::EDbType destination) const;
    // The context menu of a list with every item enabled or disabled as the toolbar is.
    std::unique_ptr<wxMenu> contextMenu(vl_db::EDbType type) const;
    // The picture dragged with the selection of a list: one row's thumbnail and name, or the
    // number of rows.
    wxBitmap dragPicture(vl_db::EDbType type);

    const ListThumbnails& thumbnails() const { return m_thumbnails; }

private:
    int imageOf(const ObjectListModel& model, long row) override;

    void onSelect(wxListEvent& event);
    void onDeselect(wxListEvent& event);
    void onActivate(wxListEvent& event);
    void onContextMenu(wxListEvent& event);
    void onBeginDrag(wxListEvent& event);
    void onMouseDown(wxMouseEvent& event);
    void onSize(wxSizeEvent& event);
    void onTimer(wxTimerEvent& event);
    // Silent selection changes: the lists send events the browser must not act on.
    void setRowState(ObjectListCtrl* target, long row, bool selected);

    wxDialog* m_dialog;
    vl_db::DocumentLibraries* m_libs;
    TwoListClient& m_client;
    ListKind m_kind;
    ObjectListModel m_models[2];
    ObjectListCtrl* m_lists[2] = {nullptr, nullptr};
    ListThumbnails m_thumbnails;
    wxTimer m_timer;
    vl_db::EDbType m_current = vl_db::kDbNone;
    bool m_silent = false;
};

vl_db::EDbType otherLibrary(vl_db::EDbType type);

}  // namespace vl_app
