#pragma once
// Balloons about the drawing's library files. A notification raised while no drawing is active
// waits (only the latest one) until a drawing becomes active.
#include <CaApp.h>
#include <Notifications.h>

namespace vl_app {

class BalloonNotifications : public ca::CAppReactor, public wxg::NotificationsHandler {
public:
    // Made on first use; lives until the module is unloaded.
    static BalloonNotifications& instance();

    // Listens to document activation of the host application (oa::OaApp::s_app) until detach.
    void attach();
    void detach();
    bool isAttached() const;

    // Replaces any pending notification with this one and shows it when a drawing is active.
    void show(const qta::BubbleData& data);
    bool hasPending() const { return m_pending; }
    const qta::BubbleData& pendingData() const { return m_data; }

    void onActivate(OdDbDatabase* db) override;
    // The link opens the project information of the active drawing.
    void onAction(int action) override;

private:
    BalloonNotifications();
    void tryShow();

    qta::BubbleData m_data;
    bool m_pending = false;
};

}  // namespace vl_app
