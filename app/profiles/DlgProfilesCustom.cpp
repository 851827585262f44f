// Custom profiles in the profiles dialog: the outline picked in the drawing or stored with a
// custom profile, drawn into the preview, and the tools that turn and mirror it; and the
// button that opens the axis offset dialog for the selected profile.
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toolbar.h>
#include <wx/wupdlock.h>
#include <wx/xrc/xmlres.h>

#include <vl_db/DocumentLibraries.h>

#include "app/common/ErrorMessages.h"
#include "app/profiles/DlgAxisOffset.h"
#include "app/profiles/DlgProfiles.h"
#include "app/profiles/OutlinePreview.h"
#include "app/profiles/ProfileShapes.h"

namespace vl_app {

namespace {
constexpr int kPreviewMargin = 10;

QcSmartPtr<vantlib::CustomProfile> asCustom(const QcSmartPtr<vantlib::Profile>& profile) {
    if (!profile || profile->type() != vantlib::kCustomProfile)
        return QcSmartPtr<vantlib::CustomProfile>();
    return QcSmartPtr<vantlib::CustomProfile>(static_cast<vantlib::CustomProfile*>(profile.get()));
}
}  // namespace

wxBitmap DlgProfiles::getCustomProfilePreview(const OdArray<OdSmartPtr<OdDbEntity>>& entities, unsigned long width,
                                              unsigned long height, int margin, int penWidth, double zoom, bool fill) {
    PreviewStyle style;
    style.margin = margin;
    style.penWidth = penWidth;
    style.zoom = zoom;
    style.fill = fill;
    return drawOutlinePreview(outlinePaths(entities), wxSize(int(width), int(height)), style);
}

void DlgProfiles::initCustomProfileTools() {
    Bind(wxEVT_TOOL, &DlgProfiles::onLeftTurn, this, XRCID("TOOL_ROTATE_LEFT"));
    Bind(wxEVT_TOOL, &DlgProfiles::onRightTurn, this, XRCID("TOOL_ROTATE_RIGHT"));
    Bind(wxEVT_TOOL, &DlgProfiles::onHorizontalMirror, this, XRCID("TOOL_MIRROR_HORIZONTAL"));
    Bind(wxEVT_TOOL, &DlgProfiles::onVerticalMirror, this, XRCID("TOOL_MIRROR_VERTICAL"));
    Bind(wxEVT_BUTTON, &DlgProfiles::onOffset, this, XRCID("BTN_OFFSET"));
}

bool DlgProfiles::canSetOffset() const {
    // The offset is stored with the profile, so its library must take changes.
    return m_selected && m_selected->id() != 0 && !m_showingPicked && vl_db::writable(m_selected->library());
}

void DlgProfiles::onOffset(wxCommandEvent&) {
    if (!canSetOffset())
        return;
    const auto library = m_selected->library();
    try {
        DlgAxisOffset dialog(this, m_selected, library->unit(), m_host, m_libs ? m_libs->database() : nullptr);
        dialog.ShowModal();
    } catch (const std::exception& error) {
        showError(this, error);
    }
}

QcSmartPtr<vantlib::CustomProfile> DlgProfiles::customProfile() const {
    if (m_showingPicked && m_customInfo && m_customInfo->profile)
        return m_customInfo->profile;
    return asCustom(m_selected);
}

void DlgProfiles::updateCustomPreview(const OdArray<OdSmartPtr<OdDbEntity>>& entities,
                                      const QcSmartPtr<vantlib::CustomProfile>& profile) {
    wxWindow* panel = FindWindow(XRCID("PANEL_PREVIEW"));
    const wxSize size = panel->GetMinSize().x > 0 ? panel->GetMinSize() : panel->GetClientSize();
    if (!entities.isEmpty()) {
        m_preview = getCustomProfilePreview(entities, size.x, size.y, kPreviewMargin, FromDIP(1), 1.0, true);
    } else if (profile && !profile->geometry().empty()) {
        PreviewStyle style;
        style.margin = kPreviewMargin;
        style.penWidth = FromDIP(1);
        m_preview = drawOutlinePreview(outlinePaths(profile->geometry()), size, style);
    } else {
        m_preview = wxNullBitmap;
    }
    panel->Show(m_preview.IsOk());
    panel->Refresh();
}

void DlgProfiles::updateCustomPanels() {
    // A new selection replaces the picked profile on the right side.
    m_showingPicked = false;
    const QcSmartPtr<vantlib::CustomProfile> custom = asCustom(m_selected);
    FindWindow(XRCID("TBAR_CUSTOM_PROFILE"))->Show(bool(custom));
    if (custom)
        updateCustomPreview(OdArray<OdSmartPtr<OdDbEntity>>(), custom);
}

void DlgProfiles::customModeRightPanels() {
    if (!m_customInfo || !m_customInfo->profile)
        return;
    wxWindowUpdateLocker freeze(this);
    m_showingPicked = true;
    showShapePanel(vantlib::kCustomProfile);
    FindWindow(XRCID("TBAR_CUSTOM_PROFILE"))->Show();
    // The picked outline is no profile of a library yet: it has a shape but no name. While it is
    // being made a new profile, the fields hold the identity the user gives it.
    if (!m_creating)
        for (const char* field : {"ID_TYPE_TXTCTRL", "ID_SET_STANDARD", "ID_SET_NAME", "ID_SIZE_VALUE"})
            if (auto* text = dynamic_cast<wxTextCtrl*>(FindWindow(XRCID(field))))
                text->ChangeValue(wxString());
    if (auto* shape = dynamic_cast<wxTextCtrl*>(FindWindow(XRCID("ID_SHAPE_TXTCTRL"))))
        shape->ChangeValue(shapeLabel(vantlib::kCustomProfile, false));
    updateCustomPreview(OdArray<OdSmartPtr<OdDbEntity>>(), m_customInfo->profile);
    FindWindow(XRCID("PANEL_PROPS"))->Layout();
    Layout();
}

void DlgProfiles::turnCustomProfile(bool left) {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    const QcSmartPtr<vantlib::CustomProfile> profile = customProfile();
    if (!m_host || !db || !profile)
        return;
    try {
        const OdArray<OdSmartPtr<OdDbEntity>> turned = m_host->getRotatedProfileEntityArr(*db, *profile, left);
        updateCustomPreview(turned, profile);
        if (m_showingPicked)
            std::swap(m_customInfo->width, m_customInfo->height);
    } catch (const std::exception& error) {
        showError(this, error);
    }
}

void DlgProfiles::mirrorCustomProfile(bool horizontal) {
    OdDbDatabase* db = m_libs ? m_libs->database() : nullptr;
    const QcSmartPtr<vantlib::CustomProfile> profile = customProfile();
    if (!m_host || !db || !profile)
        return;
    try {
        updateCustomPreview(m_host->getMirroredProfileEntityArr(*db, *profile, horizontal), profile);
    } catch (const std::exception& error) {
        showError(this, error);
    }
}

void DlgProfiles::onLeftTurn(wxCommandEvent&) { turnCustomProfile(true); }
void DlgProfiles::onRightTurn(wxCommandEvent&) { turnCustomProfile(false); }
void DlgProfiles::onHorizontalMirror(wxCommandEvent&) { mirrorCustomProfile(true); }
void DlgProfiles::onVerticalMirror(wxCommandEvent&) { mirrorCustomProfile(false); }

}  // namespace vl_app
