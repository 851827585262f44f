#pragma once
// Profiles of the demo: the European steel catalogue of the central library and the project's
// own sections, used by elements of the demo drawing.
#include <memory>

#include <OdDbDatabase.h>

#include <vantlib/Library.h>

namespace vlib::demo {

// The catalogue as a library exchange document (data/european-steel-sections.json, made once
// with `vlib import-profiles` from the open parts library's section tables and cut down to the
// European series). Section dimensions are facts of the standards; the file is compiled in, so
// `vlib demo` needs nothing beside the program.
const char* europeanSteelCatalogue();

// Imports the catalogue; returns the number of profiles.
size_t addCentralProfiles(const std::shared_ptr<vantlib::Library>& central);

// Stores the project's user-defined profiles (no standard); returns their number.
size_t addProjectProfiles(const std::shared_ptr<vantlib::Library>& project);

// Adds elements that use profiles of both libraries; returns their number.
size_t addProfileElements(OdDbDatabase& database, const vantlib::Library& project, const vantlib::Library& central);

// Draws section outlines (polylines and a circle) on their own layer, from which a user picks
// custom profiles.
void addSectionOutlines(OdDbDatabase& db);

}  // namespace vlib::demo
