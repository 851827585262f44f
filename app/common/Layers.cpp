#include "app/common/Layers.h"

#include <OdDbDatabase.h>
#include <OdError.h>
#include <OdStringWx.h>

#include <vantlib/Layer.h>

namespace vl_app {

wxArrayString getLayers(const OdDbDatabase* db) {
    wxArrayString names;
    if (!db)
        return names;
    // Converting to a symbol table throws the SDK's not-that-kind-of-class error for anything else.
    const OdDbSymbolTablePtr table = db->getLayerTableId().safeOpenObject(OdDb::kForRead);
    for (auto it = table->newIterator(); !it->done(); it->step())
        names.Add(toWx(it->getRecord()->getName()));
    names.Sort();
    return names;
}

void addLayers(wxArrayString& names, const std::shared_ptr<vantlib::Library>& library) {
    if (!library)
        return;
    // Layers that no object uses any more are dropped so that the list only offers live ones.
    library->purge<vantlib::Layer>();
    std::vector<QcSmartPtr<vantlib::Layer>> layers;
    library->get<vantlib::Layer>(layers);
    for (const auto& layer : layers) {
        const wxString name = toWx(layer->name());
        if (names.Index(name, true) == wxNOT_FOUND)
            names.Add(name);
    }
    names.Sort();
}

void addLayers(wxArrayString& names, vl_db::DocumentLibraries* libs) {
    if (!libs)
        return;
    addLayers(names, libs->primary(false));
    addLayers(names, libs->secondary());
}

}  // namespace vl_app
