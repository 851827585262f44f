#include "BubbleWindow.h"

#include <algorithm>

#include <wx/arrstr.h>
#include <wx/artprov.h>
#include <wx/bmpbuttn.h>
#include <wx/dcclient.h>
#include <wx/hyperlink.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

namespace wxg {

namespace {
BubbleWindow* g_current = nullptr;

constexpr int kAccentWidth = 4;

wxColour accentFor(unsigned flags) {
    if (flags & qta::BubbleData::kError)
        return wxColour(196, 43, 28);
    if (flags & qta::BubbleData::kWarning)
        return wxColour(230, 145, 0);
    return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
}

// Wraps a label's text at `width` and fixes the label's size to the wrapped lines, measured in
// the label's own font. The toolkit applies a label's font only once the label has been shown:
// sized from the toolkit's earlier measure, a bold title got less width than its lines need, was
// wrapped a second time and lost its last line below the label. The allowance covers the toolkit
// measuring a line a pixel or two wider than wx does.
void wrapLabel(wxStaticText* label, int width) {
    label->Wrap(width);
    wxSize lines;
    for (const wxString& line : wxSplit(label->GetLabel(), '\n', '\0')) {
        int lineWidth = 0;
        int lineHeight = 0;
        label->GetTextExtent(line.empty() ? wxString("Ag") : line, &lineWidth, &lineHeight);
        if (!line.empty())
            lines.x = std::max(lines.x, lineWidth);
        lines.y += lineHeight;
    }
    lines.x += label->FromDIP(4);
    label->SetMinSize(wxSize(lines.x, std::max(lines.y, label->GetBestSize().y)));
}

wxArtID iconFor(unsigned flags) {
    if (flags & qta::BubbleData::kError)
        return wxART_ERROR;
    if (flags & qta::BubbleData::kWarning)
        return wxART_WARNING;
    return wxART_INFORMATION;
}
}  // namespace

BubbleWindow* BubbleWindow::current() { return g_current; }

BubbleWindow::BubbleWindow(wxWindow* host, NotificationsHandler* handler, const qta::BubbleData& data)
    : wxPanel(host, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxTAB_TRAVERSAL, "VL_BUBBLE"),
      m_host(host), m_handler(handler) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    // A card in the window colours: tooltip colours are dark in some themes and hide the link.
    const wxColour background = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
    SetBackgroundColour(background);
    SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    m_accent = accentFor(data.flags);
    const int gap = FromDIP(10);
    const int wrap = FromDIP(340);

    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddSpacer(FromDIP(kAccentWidth));
    row->Add(new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmap(iconFor(data.flags), wxART_MESSAGE_BOX)), 0,
             wxALIGN_TOP | wxALL, gap);

    auto* texts = new wxBoxSizer(wxVERTICAL);
    if (handler && !handler->sourceTitle().empty()) {
        auto* source = new wxStaticText(this, wxID_ANY, handler->sourceTitle());
        source->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
        source->SetFont(source->GetFont().Smaller());
        wrapLabel(source, wrap);
        texts->Add(source, 0, wxBOTTOM, FromDIP(2));
    }
    auto* title = new wxStaticText(this, wxID_ANY, data.title, wxDefaultPosition, wxDefaultSize, 0, "VL_BUBBLE_TITLE");
    title->SetFont(title->GetFont().Bold());
    wrapLabel(title, wrap);
    texts->Add(title, 0, wxBOTTOM, FromDIP(4));
    // Tabs in messages indent paths; a static text shows them as nothing. The indent is made of
    // no-break spaces, so that wrapping keeps it with the path instead of leaving it on a line
    // of its own.
    wxString message = data.message;
    message.Replace("\t", wxString(L'\u00A0', 4));
    auto* body = new wxStaticText(this, wxID_ANY, message, wxDefaultPosition, wxDefaultSize, 0, "VL_BUBBLE_MESSAGE");
    wrapLabel(body, wrap);
    texts->Add(body, 0, wxBOTTOM, FromDIP(6));
    if (!data.actionLabel.empty()) {
        auto* link = new wxGenericHyperlinkCtrl(this, wxID_ANY, data.actionLabel, wxString(), wxDefaultPosition,
                                                wxDefaultSize, wxHL_DEFAULT_STYLE, "VL_BUBBLE_LINK");
        link->SetBackgroundColour(background);
        link->Bind(wxEVT_HYPERLINK, [this](wxHyperlinkEvent&) { dismiss(NotificationsHandler::kActionLink); });
        texts->Add(link, 0);
    }
    row->Add(texts, 1, wxTOP | wxBOTTOM, gap);

    auto* close = new wxBitmapButton(this, wxID_CLOSE, wxArtProvider::GetBitmap(wxART_CLOSE, wxART_BUTTON),
                                     wxDefaultPosition, wxDefaultSize, wxBORDER_NONE, wxDefaultValidator,
                                     "VL_BUBBLE_CLOSE");
    close->SetToolTip(_("Close"));
    close->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { dismiss(NotificationsHandler::kActionClosed); });
    row->Add(close, 0, wxALIGN_TOP | wxALL, FromDIP(4));

    for (wxWindow* child : GetChildren())
        if (child != close)
            child->SetBackgroundColour(background);
    SetSizer(row);
    SetSize(GetBestSize());

    Bind(wxEVT_PAINT, &BubbleWindow::onPaint, this);
    m_host->Bind(wxEVT_SIZE, &BubbleWindow::onHostSize, this);
    if (g_current && g_current != this)
        g_current->dismiss(0);
    g_current = this;
    place();
    Raise();
    Show();
}

BubbleWindow::~BubbleWindow() {
    m_host->Unbind(wxEVT_SIZE, &BubbleWindow::onHostSize, this);
    if (g_current == this)
        g_current = nullptr;
}

void BubbleWindow::dismiss(int action) {
    if (m_dismissed)
        return;
    m_dismissed = true;
    if (g_current == this)
        g_current = nullptr;
    Hide();
    NotificationsHandler* handler = m_handler;
    m_handler = nullptr;
    // Destroyed from the event loop: this may run inside one of the balloon's own handlers.
    CallAfter([this] { Destroy(); });
    if (handler && action)
        handler->onAction(action);
}

void BubbleWindow::place() {
    const wxSize area = m_host->GetClientSize();
    const wxSize size = GetSize();
    const int margin = FromDIP(12);
    // Kept clear of the command entry and status bar along the bottom edge.
    const int bottomMargin = FromDIP(64);
    SetPosition(wxPoint(std::max(0, area.x - size.x - margin), std::max(0, area.y - size.y - bottomMargin)));
}

void BubbleWindow::onHostSize(wxSizeEvent& event) {
    event.Skip();
    place();
}

void BubbleWindow::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    const wxRect area = GetClientRect();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(m_accent));
    dc.DrawRectangle(0, 0, FromDIP(kAccentWidth), area.height);
    dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW)));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(area);
}

}  // namespace wxg
