#include "Notifications.h"

#include <wx/frame.h>
#include <wx/statusbr.h>

#include "BubbleWindow.h"
#include "MainWindow.h"
#include "Prompt.h"
#include "WxgConfig.h"

namespace wxg {

namespace {
const char* const kNewStatusBarKey = "/Preferences/UseNewStatusBar";
}

NotificationsHandler::NotificationsHandler(const wxString& sourceTitle) : m_sourceTitle(sourceTitle) {}

NotificationsHandler::~NotificationsHandler() {
    if (BubbleWindow* bubble = BubbleWindow::current())
        if (bubble->handler() == this)
            bubble->detachHandler();
}

bool NotificationsHandler::showNotification(const qta::BubbleData& data) {
    if (!showBubbleWindow(this, data))
        return false;
    if (auto* frame = wxDynamicCast(mainWindow(), wxFrame))
        if (wxStatusBar* status = frame->GetStatusBar())
            status->SetStatusText(data.title);
    return true;
}

bool NotificationsHandler::isBubbleVisible() const {
    BubbleWindow* bubble = BubbleWindow::current();
    return bubble && bubble->handler() == this && bubble->IsShown();
}

void NotificationsHandler::closeBubble() {
    BubbleWindow* bubble = BubbleWindow::current();
    if (bubble && bubble->handler() == this)
        bubble->dismiss(0);
}

void NotificationsHandler::onAction(int) {}

bool showBubbleWindow(NotificationsHandler* handler, const qta::BubbleData& data) {
    wxWindow* host = mainWindow();
    if (!host || host->IsBeingDeleted()) {
        ca::prompt(data.title);
        ca::prompt(data.message);
        return false;
    }
    new BubbleWindow(host, handler, data);
    return true;
}

bool useNewStatusBar() { return WxgConfig::readLong(kNewStatusBarKey, 1) != 0; }
void setUseNewStatusBar(bool useNew) { WxgConfig::writeLong(kNewStatusBarKey, useNew ? 1 : 0); }

}  // namespace wxg
