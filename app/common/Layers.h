#pragma once
// Layer names offered by the library dialogs: the drawing's layers and those the libraries use.
#include <memory>

#include <wx/arrstr.h>

#include <vantlib/Library.h>

#include <vl_db/DocumentLibraries.h>

class OdDbDatabase;

namespace vl_app {

// Sorted names of the drawing's layers; empty for a null drawing.
wxArrayString getLayers(const OdDbDatabase* db);
// Purges the library's unused layers (a change to the library), adds the names of the layers it
// still has that `names` lacks (case-sensitive), and sorts `names`.
void addLayers(wxArrayString& names, const std::shared_ptr<vantlib::Library>& library);
// The same for the project library (not created when absent), then the central library.
void addLayers(wxArrayString& names, vl_db::DocumentLibraries* libs);

}  // namespace vl_app
