#include "app/common/TwoListBrowser.h"

#include <algorithm>
#include <functional>

#include <wx/dcgraph.h>
#include <wx/dcmemory.h>
#include <wx/dialog.h>
#include <wx/dnd.h>
#include <wx/icon.h>
#include <wx/image.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/utils.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <IconStore.h>
#include <OdStringWx.h>

#include "app/common/DragDrop.h"
#include "app/common/ErrorMessages.h"
#include "app/common/LibraryCopy.h"

namespace vl_app {

namespace {
constexpr int kReloadDelayMs = 80;

// Maps the list commands of the toolbar and the context menus to their rules.
bool commandOfMenuItem(int id, ListCommand& command) {
    static const struct {
        const char* name;
        ListCommand command;
    } items[] = {
        {"TOOL_NEW", ListCommand::kNew},
        {"TOOL_NEW_IN_PROJ", ListCommand::kNewInProject}, {"TOOL_NEW_IN_LIBR", ListCommand::kNewInCentral},
        {"TOOL_DUPLICATE", ListCommand::kDuplicate},      {"TOOL_DEL", ListCommand::kDelete},
        {"TOOL_MAKE_COMP", ListCommand::kDerive},         {"TOOL_COPY_TO_PROJ", ListCommand::kCopyToProject},
        {"TOOL_COPY_TO_LIBR", ListCommand::kCopyToCentral},
    };
    for (const auto& item : items) {
        if (XRCID(item.name) == id) {
            command = item.command;
            return true;
        }
    }
    return false;
}

// Restores a flag when a scope ends, however it ends.
class FlagScope {
public:
    explicit FlagScope(bool& flag) : m_flag(flag), m_saved(flag) { m_flag = true; }
    ~FlagScope() { m_flag = m_saved; }

private:
    bool& m_flag;
    bool m_saved;
};
}  // namespace

vl_db::EDbType otherLibrary(vl_db::EDbType type) {
    return type == vl_db::kDbProject ? vl_db::kDbCentral : vl_db::kDbProject;
}

TwoListBrowser::TwoListBrowser(wxDialog* dialog, vl_db::DocumentLibraries* libs, TwoListClient& client,
                               const ListKind& kind)
    : m_dialog(dialog),
      m_libs(libs),
      m_client(client),
      m_kind(kind),
      m_models{ObjectListModel(vl_db::kDbProject), ObjectListModel(vl_db::kDbCentral)},
      m_thumbnails(std::max(kind.thumbnailEdge, 1),
                   kind.thumbnailEdge > 0 ? wxXmlResource::Get()->LoadBitmap(kind.placeholder) : wxNullBitmap),
      m_timer(this) {
    const char* names[2] = {"LIST_PROJECT", "LIST_LIBRARY"};
    const wxString headers[2] = {kind.projectHeader, kind.centralHeader};
    for (int type = 0; type < 2; ++type) {
        auto* target = dynamic_cast<ObjectListCtrl*>(dialog->FindWindow(XRCID(names[type])));
        if (!target || !target->IsVirtual())
            throw std::logic_error(std::string(names[type]) + " must be a virtual ObjectListCtrl");
        m_lists[type] = target;
        const bool pictures = kind.thumbnailEdge > 0;
        if (pictures)
            target->SetImageList(m_thumbnails.images(), wxIMAGE_LIST_SMALL);
        target->InsertColumn(0, headers[type]);
        target->SetDropTarget(new VantlibDropTarget(libs, vl_db::EDbType(type), kind.objectType));
        target->attach(&m_models[type], pictures ? this : nullptr);
        target->Bind(wxEVT_LIST_ITEM_SELECTED, &TwoListBrowser::onSelect, this);
        target->Bind(wxEVT_LIST_ITEM_DESELECTED, &TwoListBrowser::onDeselect, this);
        target->Bind(wxEVT_LIST_ITEM_ACTIVATED, &TwoListBrowser::onActivate, this);
        target->Bind(wxEVT_LIST_ITEM_RIGHT_CLICK, &TwoListBrowser::onContextMenu, this);
        target->Bind(wxEVT_LIST_BEGIN_DRAG, &TwoListBrowser::onBeginDrag, this);
        target->Bind(wxEVT_LEFT_DOWN, &TwoListBrowser::onMouseDown, this);
        target->Bind(wxEVT_SIZE, &TwoListBrowser::onSize, this);
        target->fitColumn();
    }
    Bind(wxEVT_TIMER, &TwoListBrowser::onTimer, this);
}

TwoListBrowser::~TwoListBrowser() {
    m_timer.Stop();
    for (ObjectListCtrl* target : m_lists) {
        // The lists may paint once more while the dialog goes; they must not reach back here.
        target->attach(nullptr, nullptr);
        target->SetImageList(nullptr, wxIMAGE_LIST_SMALL);
    }
}

ObjectListCtrl* TwoListBrowser::list(vl_db::EDbType type) const {
    return type == vl_db::kDbProject || type == vl_db::kDbCentral ? m_lists[type] : nullptr;
}

const ObjectListModel& TwoListBrowser::model(vl_db::EDbType type) const {
    return m_models[type == vl_db::kDbCentral ? 1 : 0];
}

vl_db::EDbType TwoListBrowser::typeOf(const wxObject* eventObject) const {
    if (eventObject == m_lists[0])
        return vl_db::kDbProject;
    if (eventObject == m_lists[1])
        return vl_db::kDbCentral;
    return vl_db::kDbNone;
}

std::shared_ptr<vantlib::Library> TwoListBrowser::library(vl_db::EDbType type) const {
    return vl_db::library(m_libs, type, false);
}

unsigned TwoListBrowser::selectedId() const {
    const ObjectListCtrl* target = list(m_current);
    if (!target)
        return 0;
    long row = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED);
    if (row == -1 || target->GetItemState(row, wxLIST_STATE_SELECTED) == 0)
        row = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
    return row == -1 ? 0 : target->idAt(row);
}

std::set<unsigned> TwoListBrowser::selectedIds(vl_db::EDbType type) const {
    std::set<unsigned> ids;
    const ObjectListCtrl* target = list(type);
    if (!target)
        return ids;
    for (long row = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); row != -1;
         row = target->GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED))
        if (const unsigned id = target->idAt(row))
            ids.insert(id);
    return ids;
}

int TwoListBrowser::numSelected() const {
    const ObjectListCtrl* target = list(m_current);
    return target ? target->GetSelectedItemCount() : 0;
}

BrowserState TwoListBrowser::state() const {
    BrowserState state;
    state.current = m_current;
    state.projectWritable = vl_db::writable(m_libs, vl_db::kDbProject);
    state.centralWritable = vl_db::writable(m_libs, vl_db::kDbCentral);
    state.selected = numSelected();
    state.currentStored = m_client.currentObjectId() != 0;
    return state;
}

bool TwoListBrowser::enableListCommand(wxUpdateUIEvent& event, bool valid) const {
    ListCommand command;
    if (!commandOfMenuItem(event.GetId(), command))
        return false;
    event.Enable(valid && isEnabled(command));
    return true;
}

void TwoListBrowser::bindListCommands() {
    const auto bind = [this](const char* name, std::function<void()> action) {
        m_dialog->Bind(wxEVT_MENU, [action](wxCommandEvent&) { action(); }, XRCID(name));
        m_dialog->Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) { enableListCommand(event, m_client.currentValid()); },
                       XRCID(name));
    };
    bind("TOOL_NEW", [this] { m_client.createObject(creationTarget()); });
    bind("TOOL_NEW_IN_PROJ", [this] { m_client.createObject(vl_db::kDbProject); });
    bind("TOOL_NEW_IN_LIBR", [this] { m_client.createObject(vl_db::kDbCentral); });
    bind("TOOL_DUPLICATE", [this] { m_client.duplicateCurrent(creationTarget()); });
    bind("TOOL_DEL", [this] { removeSelected(); });
    bind("TOOL_COPY_TO_PROJ", [this] { copyTo(vl_db::kDbProject); });
    bind("TOOL_COPY_TO_LIBR", [this] { copyTo(vl_db::kDbCentral); });
}

int TwoListBrowser::imageOf(const ObjectListModel& model, long row) {
    const ObjectRow& shown = model.row(row);
    return m_thumbnails.index(shown.depiction, [&]() {
        const auto source = library(model.dbType());
        return source ? m_client.drawThumbnail(source, shown, wxSize(m_thumbnails.edge(), m_thumbnails.edge()))
                      : wxNullBitmap;
    });
}

void TwoListBrowser::updateLists(bool keepSelection) {
    updateList(vl_db::kDbProject, keepSelection);
    updateList(vl_db::kDbCentral, keepSelection);
}

void TwoListBrowser::updateList(vl_db::EDbType type, bool keepSelection) {
    ObjectListCtrl* target = list(type);
    if (!target)
        return;
    ObjectListModel& rows = m_models[type];
    const FlagScope silent(m_silent);
    wxWindowUpdateLocker freeze(target);
    deselectAll(type);
    rows.clear();
    const auto source = library(type);
    if (source) {
        target->SetTextColour(vl_db::writable(source) ? m_dialog->GetForegroundColour() : wxg::readOnlyTextColour());
        try {
            wxBusyCursor busy;
            rows.assign(m_client.queryRows(source));
        } catch (const std::exception& error) {
            target->reload();
            showError(m_dialog, error);
            return;
        }
    }
    target->reload();
    const unsigned keep = m_client.currentObjectId();
    if (keepSelection && keep != 0 && m_current == type)
        selectRow(type, keep);
}

void TwoListBrowser::showObject(vl_db::EDbType type, unsigned id) {
    m_current = type;
    deselectAll(otherLibrary(type));
    updateList(type, false);
    selectRow(type, id);
    m_client.currentChanged();
}

void TwoListBrowser::setRowState(ObjectListCtrl* target, long row, bool selected) {
    const FlagScope silent(m_silent);
    const long mask = wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED;
    target->SetItemState(row, selected ? mask : 0, selected ? mask : wxLIST_STATE_SELECTED);
}

void TwoListBrowser::selectRow(vl_db::EDbType type, unsigned id) {
    ObjectListCtrl* target = list(type);
    if (!target)
        return;
    deselectAll(type);
    const long row = m_models[type].find(id);
    if (row == -1)
        return;
    setRowState(target, row, true);
    target->EnsureVisible(row);
}

void TwoListBrowser::deselectAll(vl_db::EDbType type) {
    ObjectListCtrl* target = list(type);
    if (!target)
        return;
    const FlagScope silent(m_silent);
    for (long row = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED); row != -1;
         row = target->GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED))
        target->SetItemState(row, 0, wxLIST_STATE_SELECTED);
}

void TwoListBrowser::updateRow(vl_db::EDbType type, const ObjectRow& row) {
    ObjectListCtrl* target = list(type);
    if (!target || !m_models[type].update(row))
        return;
    target->RefreshItem(m_models[type].find(row.id));
}

void TwoListBrowser::removeSelected() {
    ObjectListCtrl* target = list(m_current);
    const auto source = library(m_current);
    if (!target || !vl_db::writable(source))
        return;
    const std::set<unsigned> ids = selectedIds(m_current);
    if (ids.empty())
        return;
    const long previous = target->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
    m_client.saveCurrent();
    std::set<unsigned> kept;
    try {
        kept = m_client.removeObjects(source, ids);
    } catch (const std::exception& error) {
        showError(m_dialog, error);
        return;
    }
    ObjectListModel& rows = m_models[m_current];
    std::vector<wxString> keptNames;
    std::set<unsigned> removed;
    for (long row = 0; row < rows.size(); ++row) {
        const unsigned id = rows.row(row).id;
        if (kept.count(id))
            keptNames.push_back(toWx(rows.row(row).name));
        else if (ids.count(id))
            removed.insert(id);
    }
    {
        const FlagScope silent(m_silent);
        wxWindowUpdateLocker freeze(target);
        deselectAll(m_current);
        rows.erase(removed);
        target->reload();
        if (rows.size() > 0)
            setRowState(target, std::min(previous, rows.size() - 1), true);
    }
    const wxString message = m_client.keptMessage(keptNames);
    if (!message.empty())
        showMessage(m_dialog, message, wxICON_WARNING);
    m_client.currentChanged();
}

void TwoListBrowser::copyTo(vl_db::EDbType destination) {
    const vl_db::EDbType sourceType = otherLibrary(destination);
    const std::set<unsigned> ids = selectedIds(sourceType);
    if (ids.empty())
        return;
    const auto target = copyDestination(destination);
    if (!target)
        return;
    m_client.saveCurrent();
    std::set<vantlib::ObjectKey> keys;
    for (const unsigned id : ids)
        keys.emplace(m_kind.objectType, id);
    copyObjects(m_dialog, library(sourceType), target, keys, m_kind.objectType);
    updateList(destination, true);
    m_client.librariesChanged();
}

std::shared_ptr<vantlib::Library> TwoListBrowser::copyDestination(vl_db::EDbType destination) const {
    const auto target = library(destination);
    if (!target) {
        showMessage(m_dialog, _("No destination library."));
        return nullptr;
    }
    if (!vl_db::writable(target)) {
        showMessage(m_dialog, _("Destination library is read-only."));
        return nullptr;
    }
    return target;
}

std::unique_ptr<wxMenu> TwoListBrowser::contextMenu(vl_db::EDbType type) const {
    std::unique_ptr<wxMenu> menu(
        wxXmlResource::Get()->LoadMenu(type == vl_db::kDbProject ? m_kind.projectMenu : m_kind.centralMenu));
    if (!menu)
        return menu;
    const BrowserState now = state();
    for (wxMenuItem* item : menu->GetMenuItems()) {
        ListCommand command;
        if (!item->IsSeparator() && commandOfMenuItem(item->GetId(), command))
            item->Enable(m_client.currentValid() && vl_app::isEnabled(command, now));
    }
    return menu;
}

wxBitmap TwoListBrowser::dragPicture(vl_db::EDbType type) {
    const ObjectListCtrl* source = list(type);
    const std::set<unsigned> ids = selectedIds(type);
    if (!source || ids.empty())
        return wxNullBitmap;
    const int edge = m_thumbnails.edge();
    wxBitmap thumbnail;
    wxString text;
    if (ids.size() == 1) {
        const long row = m_models[type].find(*ids.begin());
        const ObjectRow& shown = m_models[type].row(row);
        if (m_kind.thumbnailEdge > 0)
            thumbnail = m_thumbnails.images()->GetBitmap(imageOf(m_models[type], row));
        text = toWx(shown.name);
    } else {
        text = m_client.rowsText(unsigned(ids.size()));
    }
    wxFont font = source->GetFont();
    wxBitmap measure(1, 1);
    wxMemoryDC measuring(measure);
    measuring.SetFont(font);
    const wxSize extent = measuring.GetTextExtent(text);
    measuring.SelectObject(wxNullBitmap);

    const int gap = 6;
    const int width = std::min(400, (thumbnail.IsOk() ? edge + gap : 0) + extent.x + 2 * gap);
    const int height = std::max(edge, extent.y) + 2 * 3;
    wxBitmap picture(width, height, 32);
    wxMemoryDC dc(picture);
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.Clear();
    int x = gap;
    if (thumbnail.IsOk()) {
        dc.DrawBitmap(thumbnail, x, (height - edge) / 2, true);
        x += edge + gap;
    }
    dc.SetFont(font);
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    dc.DrawText(text, x, (height - extent.y) / 2);
    dc.SelectObject(wxNullBitmap);
    return picture;
}

void TwoListBrowser::onSelect(wxListEvent& event) {
    if (m_silent)
        return;
    const vl_db::EDbType type = typeOf(event.GetEventObject());
    wxWindowUpdateLocker freeze(m_dialog);
    m_timer.Stop();
    if (type != m_current)
        m_client.saveCurrent();
    m_current = type;
    deselectAll(otherLibrary(type));
    m_client.currentChanged();
}

void TwoListBrowser::onDeselect(wxListEvent&) {
    if (m_silent)
        return;
    m_client.saveCurrent();
    m_timer.StartOnce(kReloadDelayMs);
}

void TwoListBrowser::onTimer(wxTimerEvent&) {
    if (m_lists[0]->GetSelectedItemCount() > 0)
        m_current = vl_db::kDbProject;
    else if (m_lists[1]->GetSelectedItemCount() > 0)
        m_current = vl_db::kDbCentral;
    m_client.currentChanged();
}

void TwoListBrowser::onMouseDown(wxMouseEvent& event) {
    event.Skip();
    const vl_db::EDbType type = typeOf(event.GetEventObject());
    if (type == m_current || !m_client.currentValid())
        return;
    m_client.saveCurrent();
    deselectAll(m_current);
    m_current = type;
    m_client.currentChanged();
}

void TwoListBrowser::onActivate(wxListEvent& event) {
    const vl_db::EDbType type = typeOf(event.GetEventObject());
    m_timer.Stop();
    if (type != m_current)
        m_client.saveCurrent();
    deselectAll(otherLibrary(type));
    m_current = type;
    m_client.currentChanged();
    m_client.rowActivated();
}

void TwoListBrowser::onContextMenu(wxListEvent& event) {
    const vl_db::EDbType type = typeOf(event.GetEventObject());
    ObjectListCtrl* clicked = list(type);
    const long row = event.GetIndex();
    // A right click on a row that is not selected acts on that row, as a left click would.
    if (row >= 0 && clicked->GetItemState(row, wxLIST_STATE_SELECTED) == 0 && m_client.currentValid()) {
        deselectAll(type);
        clicked->SetItemState(row, wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED,
                              wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED);
    }
    if (type != m_current && m_client.currentValid()) {
        m_client.saveCurrent();
        deselectAll(m_current);
        m_current = type;
        m_client.currentChanged();
    }
    if (std::unique_ptr<wxMenu> menu = contextMenu(type))
        m_dialog->PopupMenu(menu.get());
}

void TwoListBrowser::onBeginDrag(wxListEvent& event) {
    const vl_db::EDbType type = typeOf(event.GetEventObject());
    VantlibDragData data;
    data.dbType = type;
    data.objectType = m_kind.objectType;
    for (const unsigned id : selectedIds(type))
        data.keys.emplace_back(m_kind.objectType, id);
    if (data.keys.empty())
        return;
    m_client.saveCurrent();
    VantlibDataObject payload(data);
    wxIcon icon;
    icon.CopyFromBitmap(dragPicture(type));
    wxDropSource source(payload, list(type), icon, icon, icon);
    if (source.DoDragDrop(wxDrag_CopyOnly) == wxDragCopy) {
        wxWindowUpdateLocker freeze(m_dialog);
        updateLists(true);
        m_client.librariesChanged();
    }
}

void TwoListBrowser::onSize(wxSizeEvent& event) {
    event.Skip();
    if (auto* target = dynamic_cast<ObjectListCtrl*>(event.GetEventObject()))
        target->fitColumn();
}

}  // namespace vl_app
