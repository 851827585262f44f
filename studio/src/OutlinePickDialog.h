#pragma once
// The drawing's planar outlines in a view where the user picks one for a custom profile: a
// click on a closed outline (or inside it) picks it together with the outlines inside it as
// holes; Escape or closing the view picks nothing.
#include <vector>

#include <wx/dialog.h>

#include "DrawingOutlines.h"

class OdDbDatabase;
class OutlineCanvas;
class wxStaticText;

class OutlinePickDialog : public wxDialog {
public:
    OutlinePickDialog(wxWindow* parent, OdDbDatabase& db);

    // The picked outline first, then its holes; empty until the user picked one.
    const std::vector<OdDbObjectId>& picked() const { return m_picked; }

private:
    friend class OutlineCanvas;
    // A click at a drawing point; `tolerance` in drawing units.
    void pickAt(const OdGePoint2d& point, double tolerance);
    void onCharHook(wxKeyEvent& event);

    std::vector<outlines::DrawnOutline> m_outlines;
    std::vector<OdDbObjectId> m_picked;
    OutlineCanvas* m_canvas = nullptr;
    wxStaticText* m_status = nullptr;
};

// Shows the view on the drawing; the picked outline and its holes, or nothing.
std::vector<OdDbObjectId> pickOutline(wxWindow* parent, OdDbDatabase& db);
