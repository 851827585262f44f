#pragma once
// Notification balloons: a panel at the bottom right of the main window with a title, a
// message, an action link and a close button.
#include <wx/string.h>

namespace qta {

struct BubbleData {
    enum Flags : unsigned { kDefault = 0, kWarning = 1, kError = 2 };

    BubbleData() = default;
    BubbleData(const wxString& title, const wxString& message, const wxString& actionLabel,
               const wxString& extra1 = wxString(), const wxString& extra2 = wxString(),
               unsigned flags = kDefault)
        : title(title), message(message), actionLabel(actionLabel), extra1(extra1), extra2(extra2),
          flags(flags) {}

    wxString title;
    wxString message;
    wxString actionLabel;  // text of the link; no link when empty
    wxString extra1;
    wxString extra2;
    unsigned flags = kDefault;
};

}  // namespace qta

namespace wxg {

// A source of notifications; a module derives from it to react to the balloon's link.
class NotificationsHandler {
public:
    enum EAction { kActionClosed = 1, kActionLink = 5 };

    explicit NotificationsHandler(const wxString& sourceTitle);
    virtual ~NotificationsHandler();
    NotificationsHandler(const NotificationsHandler&) = delete;
    NotificationsHandler& operator=(const NotificationsHandler&) = delete;

    const wxString& sourceTitle() const { return m_sourceTitle; }
    // Classic status bar: the balloon plus a line in the main window's status bar.
    bool showNotification(const qta::BubbleData& data);
    // Whether a balloon of this handler is on screen.
    bool isBubbleVisible() const;
    void closeBubble();

    // kActionLink when the link was clicked, kActionClosed when the balloon was closed.
    virtual void onAction(int action);

private:
    wxString m_sourceTitle;
};

// Shows the balloon, replacing any balloon on screen. Without a main window the title and the
// message go to the command line instead and the result is false.
bool showBubbleWindow(NotificationsHandler* handler, const qta::BubbleData& data);

// Whether the host uses its new status bar (a setting, true by default).
bool useNewStatusBar();
void setUseNewStatusBar(bool useNew);

}  // namespace wxg
