#pragma once
// The balloon panel shown over the bottom right corner of the main window.
#include <wx/panel.h>

#include "Notifications.h"

namespace wxg {

class BubbleWindow : public wxPanel {
public:
    BubbleWindow(wxWindow* host, NotificationsHandler* handler, const qta::BubbleData& data);
    ~BubbleWindow() override;

    NotificationsHandler* handler() const { return m_handler; }
    // The handler is going away: the balloon stays but reports to nobody.
    void detachHandler() { m_handler = nullptr; }
    // Removes the balloon; `action` goes to the handler unless it is 0.
    void dismiss(int action);

    static BubbleWindow* current();

private:
    void place();
    void onHostSize(wxSizeEvent& event);
    void onPaint(wxPaintEvent& event);

    wxWindow* m_host;
    NotificationsHandler* m_handler;
    bool m_dismissed = false;
    wxColour m_accent;
};

}  // namespace wxg
