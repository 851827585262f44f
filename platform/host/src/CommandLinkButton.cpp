#include "CommandLinkButton.h"

#include <wx/artprov.h>
#include <wx/dcclient.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

namespace wxg {

CommandLinkButton::CommandLinkButton(wxWindow* parent, wxWindowID id, const wxString& label,
                                     const wxString& description, int wrapWidth)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxWANTS_CHARS, "answer") {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* arrow = new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmap(wxART_GO_FORWARD, wxART_BUTTON));
    row->Add(arrow, 0, wxALIGN_TOP | wxALL, FromDIP(8));

    auto* texts = new wxBoxSizer(wxVERTICAL);
    auto* title = new wxStaticText(this, wxID_ANY, label);
    wxFont bold = title->GetFont().Bold();
    bold.SetPointSize(bold.GetPointSize() + 1);
    title->SetFont(bold);
    texts->Add(title, 0, wxBOTTOM, FromDIP(2));
    if (!description.empty()) {
        auto* note = new wxStaticText(this, wxID_ANY, description);
        note->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
        note->Wrap(wrapWidth);
        texts->Add(note, 0);
    }
    row->Add(texts, 1, wxTOP | wxBOTTOM | wxRIGHT, FromDIP(8));
    SetSizer(row);

    // The children must not swallow clicks and hover changes meant for the whole button.
    auto bindMouse = [this](wxWindow* w) {
        w->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { click(); });
        w->Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent&) { setHighlighted(true); });
        w->Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
            setHighlighted(GetScreenRect().Contains(wxGetMousePosition()));
        });
        w->SetCursor(wxCursor(wxCURSOR_HAND));
    };
    bindMouse(this);
    for (wxWindow* child : GetChildren())
        bindMouse(child);

    Bind(wxEVT_PAINT, &CommandLinkButton::onPaint, this);
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent&) { Refresh(); });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent&) { Refresh(); });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (HasFocus() && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_SPACE))
            click();
        else
            event.Skip();
    });
}

void CommandLinkButton::click() {
    wxCommandEvent event(wxEVT_BUTTON, GetId());
    event.SetEventObject(this);
    ProcessWindowEvent(event);
}

wxColour CommandLinkButton::fillColour() const {
    const wxColour base = GetParent()->GetBackgroundColour();
    if (!m_highlighted)
        return base;
    // A light tint of the selection colour, as a command link shows when hovered.
    const wxColour accent = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    return wxColour(static_cast<unsigned char>((accent.Red() + 5 * base.Red()) / 6),
                    static_cast<unsigned char>((accent.Green() + 5 * base.Green()) / 6),
                    static_cast<unsigned char>((accent.Blue() + 5 * base.Blue()) / 6));
}

void CommandLinkButton::setHighlighted(bool highlighted) {
    if (highlighted == m_highlighted)
        return;
    m_highlighted = highlighted;
    for (wxWindow* child : GetChildren())
        child->SetBackgroundColour(fillColour());
    Refresh();
}

void CommandLinkButton::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    if (m_highlighted || HasFocus()) {
        dc.SetBrush(wxBrush(fillColour()));
        dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
        dc.DrawRoundedRectangle(GetClientRect().Deflate(1), FromDIP(4));
    }
}

}  // namespace wxg
