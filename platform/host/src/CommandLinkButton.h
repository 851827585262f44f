#pragma once
// A large answer button: an arrow, a bold label and a description beneath. Clicking it, or
// Enter / Space while it has the focus, sends wxEVT_BUTTON with its id.
#include <wx/panel.h>

class wxStaticBitmap;
class wxStaticText;

namespace wxg {

class CommandLinkButton : public wxPanel {
public:
    CommandLinkButton(wxWindow* parent, wxWindowID id, const wxString& label, const wxString& description,
                      int wrapWidth);

    bool AcceptsFocus() const override { return true; }

private:
    void click();
    void setHighlighted(bool highlighted);
    wxColour fillColour() const;
    void onPaint(wxPaintEvent& event);

    bool m_highlighted = false;
};

}  // namespace wxg
