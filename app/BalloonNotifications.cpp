#include "app/BalloonNotifications.h"

#include <wx/intl.h>

#include <OaApp.h>

namespace vl_app {

BalloonNotifications::BalloonNotifications()
    : wxg::NotificationsHandler(_("Notifications about project and central databases")) {}

BalloonNotifications& BalloonNotifications::instance() {
    static BalloonNotifications handler;
    return handler;
}

void BalloonNotifications::attach() {
    if (oa::OaApp::s_app)
        oa::OaApp::s_app->addAppReactor(this, ca::kDocumentEvents);
}

void BalloonNotifications::detach() {
    if (oa::OaApp::s_app)
        oa::OaApp::s_app->removeAppReactor(this);
}

bool BalloonNotifications::isAttached() const {
    return oa::OaApp::s_app && oa::OaApp::s_app->hasAppReactor(this);
}

void BalloonNotifications::show(const qta::BubbleData& data) {
    m_data = data;
    m_pending = true;
    tryShow();
}

void BalloonNotifications::onActivate(OdDbDatabase*) { tryShow(); }

void BalloonNotifications::onAction(int action) {
    if (action != kActionLink || !oa::OaApp::s_app)
        return;
    if (oa::Document* document = oa::OaApp::s_app->activeDocument())
        document->sendStringToExecute("_BIMPROJECTINFO\n");
}

void BalloonNotifications::tryShow() {
    if (!m_pending || !oa::OaApp::s_app)
        return;
    oa::Document* document = oa::OaApp::s_app->activeDocument();
    if (!document || !document->database())
        return;
    const qta::BubbleData data = m_data;
    m_pending = false;
    m_data = qta::BubbleData();
    if (wxg::useNewStatusBar())
        wxg::showBubbleWindow(this, data);
    else if (!isBubbleVisible())
        showNotification(data);
}

}  // namespace vl_app
