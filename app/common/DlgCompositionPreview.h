#pragma once
// A small modal window that shows the cross-section preview of the compositions of a drawing's
// libraries, one at a time, chosen from a drop-down.
#include <vector>

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <QcSmartPtr.h>

#include <vantlib/Composition.h>

#include <vl_db/DocumentLibraries.h>

namespace vl_app {

class DlgCompositionPreview : public wxDialog {
public:
    // Shows the compositions of the project library, then of the central library; the first
    // one with a variable ply in the project library is shown first, else the first central one.
    DlgCompositionPreview(wxWindow* parent, vl_db::DocumentLibraries* libs);

    // Index into compositions() of the composition shown; -1 when there is none.
    int current() const { return m_current; }
    const std::vector<QcSmartPtr<vantlib::Composition>>& compositions() const { return m_compositions; }
    void showComposition(int index);

    static wxSize previewSize();

private:
    void onChoice(wxCommandEvent& event);

    std::vector<QcSmartPtr<vantlib::Composition>> m_compositions;
    std::vector<vl_db::EDbType> m_places;
    wxChoice* m_choice = nullptr;
    wxStaticBitmap* m_picture = nullptr;
    wxStaticText* m_details = nullptr;
    int m_current = -1;
};

// Index of the composition a preview opens on: the first project composition with a variable
// ply, else the first central one, else the first; -1 for none.
int initialPreviewComposition(const std::vector<QcSmartPtr<vantlib::Composition>>& compositions,
                              const std::vector<vl_db::EDbType>& places);

}  // namespace vl_app
