#pragma once
// The studio's About box: name, purpose and the modules that were loaded.
#include <wx/dialog.h>

namespace ca { class CaApp; }

class AboutDialog : public wxDialog {
public:
    AboutDialog(wxWindow* parent, const ca::CaApp& app);
};
