// Studio commands of the property sets editor: building elements and building services. The
// text after the command's name is the namespace to open first ("bim-properties Office").
#include <wx/intl.h>

#include <CaApp.h>
#include <MainWindow.h>
#include <OdStringWx.h>
#include <Prompt.h>
#include <WxgConfig.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/PropertySets.h>

#include "app/common/ErrorMessages.h"
#include "app/LibraryReactor.h"
#include "app/ModuleCommands.h"
#include "app/properties/DlgProperties.h"

namespace vl_app {

namespace {

// The office keeps its property-set definitions in the central library, which every drawing
// shares; a drawing without one edits its project library's.
std::shared_ptr<vantlib::Library> definitionsLibrary(vl_db::DocumentLibraries* libs) {
    if (auto central = libs->secondary())
        return central;
    return libs->primary(false);
}

void runPropertySets(PropertyDomain domain) {
    OdDbDatabase* db = ca::curDb();
    if (!db) {
        ca::prompt(_("No drawing is open."));
        return;
    }
    try {
        const auto library = definitionsLibrary(vl_db::docLibs(db));
        if (!library) {
            ca::prompt(_("The drawing has no library that holds property sets."));
            return;
        }
        auto* host = static_cast<PropertySetsHost*>(ca::CaApp::instance()->service(kPropertySetsHostService));
        std::unique_ptr<IDlgEnabler> enabler = IDlgEnabler::create<LibraryReactor::DlgEnabler, vantlib::ObjectType>();
        const DlgProperties::Categories categories = host ? host->categories(domain) : DlgProperties::Categories();
        const DlgProperties::IfcTypeGetter ifcType = host ? host->ifcTypeGetter(domain) : DlgProperties::IfcTypeGetter();
        // The namespace named after the command, else the one the user worked in last time.
        const wxString key = domain == PropertyDomain::Mechanical ? "/PropertySets/MechanicalNamespace"
                                                                  : "/PropertySets/Namespace";
        wxString initial = ca::CaApp::instance()->commandArgument();
        if (initial.empty())
            initial = wxg::WxgConfig::readString(key);
        DlgProperties dialog(wxg::mainWindow(), vl_db::propertySetLibrary(library), enabler, categories, ifcType,
                             toOd(initial), domain, host);
        const int answer = dialog.ShowModal();
        if (const auto& ns = dialog.currentNamespace())
            wxg::WxgConfig::writeString(key, toWx(ns->name()));
        if (answer == wxID_OK)
            ca::prompt(_("The property sets were saved."));
    } catch (const std::exception& error) {
        ca::prompt(wxString::Format(_("The property sets could not be shown: %s"), errorText(error)));
    }
}

const ModuleCommandRegistration g_bimProperties("bim-properties", wxTRANSLATE("BIM Properties"),
                                                [] { runPropertySets(PropertyDomain::Bim); });
const ModuleCommandRegistration g_mechProperties("mech-properties", wxTRANSLATE("Mechanical Properties"),
                                                 [] { runPropertySets(PropertyDomain::Mechanical); });

}  // namespace

}  // namespace vl_app
