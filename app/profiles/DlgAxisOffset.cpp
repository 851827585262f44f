#include "app/profiles/DlgAxisOffset.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/radiobut.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <DlgUpdateProfile.h>
#include <OdEdSettingsManager.h>
#include <OdStringWx.h>

#include <vantlib/Transaction.h>
#include <vl_db/DocumentLibraries.h>
#include <vl_db/Profiles.h>

#include "app/common/Distances.h"
#include "app/common/ErrorMessages.h"
#include "app/common/Helpers.h"
#include "app/profiles/ProfileParameters.h"
#include "app/profiles/ProfilesInfo.h"

namespace vl_app {

namespace {
const wxString kLayout = "DLG_PROFILE_EXTRA_OFFSET";

// An empty field is no extra offset.
bool readLength(const wxTextCtrl* field, OdDb::UnitsValue unit, double& value) {
    const wxString text = field->GetValue().Strip(wxString::both);
    if (text.empty()) {
        value = 0.0;
        return true;
    }
    return parseDistance(value, text, unit);
}
}  // namespace

// clang-format off
wxBEGIN_EVENT_TABLE(DlgAxisOffset, wxg::QcThemedDialog)
    EVT_RADIOBUTTON(wxID_ANY, DlgAxisOffset::onPointChosen)
    EVT_TEXT(XRCID("TEXTCTRL_X_OFFSET"), DlgAxisOffset::onExtraChanged)
    EVT_TEXT(XRCID("TEXTCTRL_Y_OFFSET"), DlgAxisOffset::onExtraChanged)
    EVT_CHOICE(XRCID("BTN_INVARIANT"), DlgAxisOffset::onBehaviorChanged)
    EVT_BUTTON(XRCID("BTN_CENTROID"), DlgAxisOffset::onCentroid)
    EVT_BUTTON(XRCID("BTN_APPLY"), DlgAxisOffset::onApply)
    EVT_BUTTON(XRCID("BTN_CANCEL"), DlgAxisOffset::onCancel)
    EVT_CLOSE(DlgAxisOffset::onClose)
wxEND_EVENT_TABLE()
// clang-format on

DlgAxisOffset::DlgAxisOffset(wxWindow* parent, const QcSmartPtr<vantlib::Profile>& profile, OdDb::UnitsValue unit,
                             ProfilesInfo* host, OdDbDatabase* db)
    : m_profile(profile), m_unit(unit), m_host(host), m_db(db) {
    if (!loadLayout(parent, kLayout))
        throw OdError(eKeyNotFound, OdString(L"The dialog layout \"DLG_PROFILE_EXTRA_OFFSET\" is not loaded."));
    if (!m_profile)
        throw OdError(eInvalidInput, OdString(L"The axis offset dialog needs a profile."));
    m_xOffset = XRCCTRL(*this, "TEXTCTRL_X_OFFSET", wxTextCtrl);
    m_yOffset = XRCCTRL(*this, "TEXTCTRL_Y_OFFSET", wxTextCtrl);
    m_behavior = XRCCTRL(*this, "BTN_INVARIANT", wxChoice);
    m_preview = XRCCTRL(*this, "PROFILE_PREVIEW", wxStaticBitmap);
    wxWindow* points = FindWindow(XRCID("ECCENTRICITY_PANEL"));
    m_noPoint = new wxRadioButton(points, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                                  wxDefaultValidator, "RADIOBTN_NONE");
    m_noPoint->Hide();
    const wxString unitText = abbr(unit);
    XRCCTRL(*this, "X_UNIT", wxStaticText)->SetLabel(unitText);
    XRCCTRL(*this, "Y_UNIT", wxStaticText)->SetLabel(unitText);

    if (m_host) {
        std::tie(m_width, m_height) = m_host->getProfileDims(*m_profile);
        if (m_db)
            m_outline = outlinePaths(m_host->getProfileEntityArr(*m_db, *m_profile));
    }
    // A custom profile carries its outline itself.
    if (m_outline.empty() && m_profile->type() == vantlib::kCustomProfile)
        m_outline = outlinePaths(static_cast<const vantlib::CustomProfile&>(*m_profile).geometry());

    initBehaviorChoice();
    if (m_profile->has_offset()) {
        showPlacement(splitOffset(m_profile->offset(), m_width, m_height));
    } else {
        m_noPoint->SetValue(true);
        m_xOffset->ChangeValue(wxString());
        m_yOffset->ChangeValue(wxString());
    }
    XRCCTRL(*this, "BTN_CENTROID", wxButton)->Enable(m_host != nullptr);
    updatePreview();
    Fit();
    CentreOnParent();
}

void DlgAxisOffset::initBehaviorChoice() {
    m_behavior->Clear();
    m_behavior->Append(_("Keep Axis"));
    m_behavior->Append(_("Keep Solid"));
    // A setting that is missing, no number or out of range leaves the first entry.
    const int index = OdEdSettingsManager::instance().getShort(kOffsetBehaviorSetting, kKeepAxis);
    m_behavior->SetSelection(index == kKeepSolid ? kKeepSolid : kKeepAxis);
}

void DlgAxisOffset::showPlacement(const AxisPlacement& placement) {
    if (placement.point == AxisPoint::kNone)
        m_noPoint->SetValue(true);
    for (const AxisPointInfo& info : axisPoints())
        if (info.point == placement.point)
            XRCCTRL(*this, info.radioButton, wxRadioButton)->SetValue(true);
    m_shownExtra = placement.extra;
    m_shownX = formatDistance(placement.extra.x, m_unit, false);
    m_shownY = formatDistance(placement.extra.y, m_unit, false);
    m_xOffset->ChangeValue(m_shownX);
    m_yOffset->ChangeValue(m_shownY);
}

bool DlgAxisOffset::fieldLength(const wxTextCtrl* field, double& value) const {
    const bool isX = field == m_xOffset;
    if (field->GetValue() == (isX ? m_shownX : m_shownY) && !field->GetValue().empty()) {
        value = isX ? m_shownExtra.x : m_shownExtra.y;
        return true;
    }
    return readLength(field, m_unit, value);
}

AxisPoint DlgAxisOffset::checkedPoint() const {
    for (const AxisPointInfo& info : axisPoints())
        if (XRCCTRL(*this, info.radioButton, wxRadioButton)->GetValue())
            return info.point;
    return AxisPoint::kNone;
}

bool DlgAxisOffset::enteredOffset(vantlib::Vector2d& offset) const {
    AxisPlacement placement;
    placement.point = checkedPoint();
    if (!fieldLength(m_xOffset, placement.extra.x) || !fieldLength(m_yOffset, placement.extra.y))
        return false;
    offset = composeOffset(placement, m_width, m_height);
    return true;
}

void DlgAxisOffset::updatePreview() {
    PreviewStyle style;
    style.margin = FromDIP(14);
    style.penWidth = FromDIP(1);
    vantlib::Vector2d offset;
    const bool known = enteredOffset(offset);
    // The mark is placed relative to the centre of the drawn outline's extents, which is the
    // centre of the profile's section.
    const OdGePoint2d mark(offset.x, offset.y);
    const wxSize size = m_preview->GetMinSize().x > 0 ? m_preview->GetMinSize() : FromDIP(wxSize(120, 120));
    m_preview->SetBitmap(drawOutlinePreview(m_outline, size, style, known ? &mark : nullptr));
}

void DlgAxisOffset::onPointChosen(wxCommandEvent&) { updatePreview(); }
void DlgAxisOffset::onExtraChanged(wxCommandEvent&) { updatePreview(); }

void DlgAxisOffset::onBehaviorChanged(wxCommandEvent&) {
    // The behaviour is a host setting of its own: it changes at once, whether or not the
    // offset is applied.
    OdEdSettingsManager::instance().setShort(kOffsetBehaviorSetting, static_cast<int16_t>(m_behavior->GetSelection()));
}

void DlgAxisOffset::onCentroid(wxCommandEvent&) {
    if (!m_host)
        return;
    const vantlib::Vector2d centroid = m_host->toCentroid(*m_profile);
    // The centroid as a shift from the centre of the extents.
    showPlacement(AxisPlacement{AxisPoint::kCenter, centroid});
    updatePreview();
}

void DlgAxisOffset::onApply(wxCommandEvent&) {
    vantlib::Vector2d offset;
    if (!enteredOffset(offset)) {
        showMessage(this, _("The extra offset is not a length."), wxICON_WARNING);
        return;
    }
    try {
        if (applyOffset(offset))
            EndModal(wxID_OK);
    } catch (const std::exception& error) {
        showError(this, error);
    }
}

bool DlgAxisOffset::applyOffset(const vantlib::Vector2d& offset) {
    OdArray<OdDbObjectId> entities;
    int answer = wxg::DlgQuestion::kFirstAnswer;
    // The host finds the elements that use a profile of the project library by its id; a
    // profile of the central library has no elements that way to ask about.
    const bool inProject = m_db && m_profile->library() && m_profile->library() == vl_db::docLibs(m_db)->primary(false);
    if (m_behavior->GetSelection() == kKeepAxis && m_host && inProject && m_profile->id() != 0) {
        m_host->findProfileId(*m_db, m_profile->id(), entities);
        if (!entities.isEmpty()) {
            wxg::DlgUpdateProfile question(this, toWx(vl_db::fullProfileName(*m_profile)), entities.size());
            answer = question.ShowModal();
            if (answer != wxg::DlgQuestion::kFirstAnswer && answer != wxg::DlgQuestion::kSecondAnswer)
                return false;
        }
    }
    // The first answer brings the elements up to date with the new offset; the second keeps
    // them as they are, on a copy of the profile as stored.
    QcSmartPtr<vantlib::Profile> kept;
    const auto library = m_profile->library();
    if (library) {
        vantlib::Transaction transaction(library);
        if (!entities.isEmpty() && answer == wxg::DlgQuestion::kSecondAnswer)
            kept = keepStoredProfileForEntities(library, library->get<vantlib::Profile>(m_profile->id()));
        m_profile->set_offset(offset);
        m_profile->save();
        transaction.commit();
    } else {
        m_profile->set_offset(offset);
    }
    if (kept)
        m_host->setProfileId(kept->id(), entities);
    else if (!entities.isEmpty())
        m_host->applyProfile(m_profile, entities);
    return true;
}

void DlgAxisOffset::onCancel(wxCommandEvent&) { EndModal(wxID_CANCEL); }
void DlgAxisOffset::onClose(wxCloseEvent&) { EndModal(wxID_CANCEL); }

}  // namespace vl_app
