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

}  // namespace wxg
