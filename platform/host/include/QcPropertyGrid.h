#pragma once
// The host's property grid: a wxPropertyGrid with the host's look (help as tool tips, themed
// read-only text colour, splitter that keeps its place when the grid is resized). Escape while a
// value is being edited cancels that edit and does not reach the dialog around the grid.
#include <wx/propgrid/propgrid.h>

namespace wxg {

class QcPropertyGrid : public wxPropertyGrid {
public:
    QcPropertyGrid() = default;
    QcPropertyGrid(wxWindow* parent, wxWindowID id = wxID_ANY, const wxPoint& pos = wxDefaultPosition,
                   const wxSize& size = wxDefaultSize, long style = wxPG_DEFAULT_STYLE);
    bool Create(wxWindow* parent, wxWindowID id = wxID_ANY, const wxPoint& pos = wxDefaultPosition,
                const wxSize& size = wxDefaultSize, long style = wxPG_DEFAULT_STYLE,
                const wxString& name = wxASCII_STR(wxPropertyGridNameStr));

    // Read-only properties show their text in the themed read-only colour.
    void setPropertyReadOnly(wxPGPropArg property, bool readOnly = true);

private:
    void applyTheme();
    void onCharHook(wxKeyEvent& event);
};

}  // namespace wxg
