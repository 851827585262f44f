#pragma once
// Places the axis of a profiled element: one of nine points of the profile's extents plus an
// extra X and Y offset in the library's unit, and what a change keeps in place (the host
// setting ProfileOffsetBehavior). Apply stores the offset with the profile.
#include <vector>

#include <QcSmartPtr.h>
#include <QcThemedDialog.h>
#include <OdUnits.h>

#include <vantlib/Profile.h>

#include "app/profiles/AxisOffset.h"
#include "app/profiles/OutlinePreview.h"

class OdDbDatabase;
class ProfilesInfo;
class wxChoice;
class wxRadioButton;
class wxStaticBitmap;
class wxTextCtrl;

namespace vl_app {

class DlgAxisOffset : public wxg::QcThemedDialog {
public:
    // `host` and `db` are not owned and may be null: then the extents are unknown (every point
    // is the centre) and Apply asks nothing about the drawing's elements.
    DlgAxisOffset(wxWindow* parent, const QcSmartPtr<vantlib::Profile>& profile, OdDb::UnitsValue unit,
                  ProfilesInfo* host, OdDbDatabase* db);

    // The checked point (kNone when no button is checked).
    AxisPoint checkedPoint() const;
    // The offset the fields make now; false when a field holds no length.
    bool enteredOffset(vantlib::Vector2d& offset) const;
    double profileWidth() const { return m_width; }
    double profileHeight() const { return m_height; }

private:
    void onPointChosen(wxCommandEvent& event);
    void onExtraChanged(wxCommandEvent& event);
    void onBehaviorChanged(wxCommandEvent& event);
    void onCentroid(wxCommandEvent& event);
    void onApply(wxCommandEvent& event);
    void onCancel(wxCommandEvent& event);
    void onClose(wxCloseEvent& event);

    void initBehaviorChoice();
    // The length in a field: the exact value the dialog put there while its text is unchanged
    // (the text is rounded to the drawing's precision), otherwise the text read as a length.
    bool fieldLength(const wxTextCtrl* field, double& value) const;
    void showPlacement(const AxisPlacement& placement);
    void updatePreview();
    // Sets the offset and stores the profile; with "Keep Axis" the elements that use the
    // profile are brought along as the user answers. False when the user abandoned the change.
    bool applyOffset(const vantlib::Vector2d& offset);

    QcSmartPtr<vantlib::Profile> m_profile;
    OdDb::UnitsValue m_unit;
    ProfilesInfo* m_host;
    OdDbDatabase* m_db;
    double m_width = 0.0;
    double m_height = 0.0;
    std::vector<OutlinePath> m_outline;
    wxTextCtrl* m_xOffset = nullptr;
    wxTextCtrl* m_yOffset = nullptr;
    wxChoice* m_behavior = nullptr;
    wxStaticBitmap* m_preview = nullptr;
    // A hidden member of the nine buttons' group: checking it leaves none of them checked,
    // which some toolkits allow no other way.
    wxRadioButton* m_noPoint = nullptr;
    // The extra offset last shown in the fields, with the texts it was shown as.
    vantlib::Vector2d m_shownExtra;
    wxString m_shownX;
    wxString m_shownY;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app
