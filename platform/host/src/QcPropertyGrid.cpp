#include "QcPropertyGrid.h"

#include "IconStore.h"

namespace wxg {

QcPropertyGrid::QcPropertyGrid(wxWindow* parent, wxWindowID id, const wxPoint& pos, const wxSize& size, long style) {
    Create(parent, id, pos, size, style);
}

bool QcPropertyGrid::Create(wxWindow* parent, wxWindowID id, const wxPoint& pos, const wxSize& size, long style,
                            const wxString& name) {
    if (!wxPropertyGrid::Create(parent, id, pos, size, style | wxPG_SPLITTER_AUTO_CENTER, name))
        return false;
    applyTheme();
    Bind(wxEVT_CHAR_HOOK, &QcPropertyGrid::onCharHook, this);
    return true;
}

void QcPropertyGrid::setPropertyReadOnly(wxPGPropArg id, bool readOnly) {
    wxPG_PROP_ARG_CALL_PROLOG()
    SetPropertyReadOnly(p, readOnly);
    SetPropertyTextColour(p, readOnly ? readOnlyTextColour() : GetCellTextColour(), wxPG_DONT_RECURSE);
}

void QcPropertyGrid::applyTheme() {
    SetExtraStyle(GetExtraStyle() | wxPG_EX_HELP_AS_TOOLTIPS);
    SetVerticalSpacing(3);
}

void QcPropertyGrid::onCharHook(wxKeyEvent& event) {
    // A dialog takes Escape from the char hook as its cancel (or, without one, its OK) button, so
    // the key would never reach the editor. While an editor has the focus, the grid handles the
    // key as it handles the editor's own keys: Escape restores the value and leaves the editor.
    if (event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers() && GetSelection() && IsEditorFocused()) {
        wxKeyEvent key(wxEVT_KEY_DOWN, event);
        HandleKeyEvent(key, true);
        return;
    }
    event.Skip();
}

}  // namespace wxg
