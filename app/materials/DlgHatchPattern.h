#pragma once
// One hatch pattern of a material (its section or its elevation hatch): kind, pattern, scale or
// spacing, angle and cross. OK writes the edits back into the pattern it was given.
#include <wx/imaglist.h>
#include <wx/listctrl.h>
#include <wx/string.h>

#include <QcThemedDialog.h>

#include <vantlib/Pattern.h>

#include <vl_db/HatchPattern.h>

#include "app/materials/HatchPatternEdit.h"

namespace vl_app {

class DlgHatchPattern : public wxg::QcThemedDialog {
public:
    // The kinds of the type choice (kPatternNone ... kPatternCustom).
    using EPatternType = vl_app::EPatternType;

    // `pattern` is not owned and must outlive the dialog; it changes only on OK.
    DlgHatchPattern(wxWindow* parent, vantlib::Pattern& pattern, vl_db::EHatchViewType view);

    static EPatternType getType(const vantlib::Pattern& pattern);
    static void setType(vantlib::Pattern& pattern, int type);

    vl_db::EHatchViewType view() const { return m_view; }
    // The values as the user has them in the dialog.
    const HatchPatternEdit& edit() const { return m_edit; }

private:
    void onInitDialog(wxInitDialogEvent& event);
    void onType(wxCommandEvent& event);
    void onSelect(wxListEvent& event);
    void onDeselect(wxListEvent& event);
    void onActivate(wxListEvent& event);
    void onText(wxCommandEvent& event);
    void onCross(wxCommandEvent& event);
    void onOK(wxCommandEvent& event);
    void onUpdateUI(wxUpdateUIEvent& event);

    // Shows the fields of the current kind and fills the list with its patterns.
    void updateType();
    // Fills the pattern list with the patterns of a catalogue kind and their previews.
    void fillPatterns(EPatternType type);
    // Shows or hides the error line for the current values.
    void updateStatus();
    // Writes the edits into the pattern; false (and nothing written) while they are invalid.
    bool store();

    vantlib::Pattern& m_pattern;
    vl_db::EHatchViewType m_view;
    HatchPatternEdit m_edit;
    wxListCtrl* m_list = nullptr;

    wxDECLARE_EVENT_TABLE();
};

}  // namespace vl_app
