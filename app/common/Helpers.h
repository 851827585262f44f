#pragma once
// Library values as user texts and back: unit symbols, composition base types, material
// functions and classes, the names of copies, and the libraries of a drawing by type. Every
// text is translated when it is produced.
#include <memory>
#include <vector>

#include <wx/arrstr.h>
#include <wx/string.h>

#include <OdUnits.h>
#include <QcSmartPtr.h>

#include <vantlib/Composition.h>
#include <vantlib/Library.h>
#include <vantlib/Material.h>

#include <vl_db/DocumentLibraries.h>
#include <vl_db/Types.h>

namespace vl_app {

// Short symbol of a drawing unit ("mm", "ft", ...); "?" for undefined, empty for values
// outside the unit table.
wxString abbr(OdDb::UnitsValue unit);
// The host's full name of a drawing unit.
wxString full(OdDb::UnitsValue unit);

// Label of a composition base type; any value that is not a single known kind reads "All".
wxString compositionBaseType(vantlib::Composition::Type type);
// The base type whose label is `label`; "All" and unknown labels give Composition::kAll.
vantlib::Composition::Type compositionBaseType(const wxString& label);
// The labels a composition's base type can take, in the order of the type choices.
wxArrayString baseCompositionClasses();

// Label of a material's function; "?" for values outside the enumeration.
wxString materialFunction(vantlib::MaterialFunction function);
// Labels of the functions 0 to 6 in order.
wxArrayString functions();

// Sorted names of the material classes of a library (empty for a null library).
wxArrayString materialClasses(const std::shared_ptr<const vantlib::Library>& library);
// Those of the project library followed by those of the central library.
wxArrayString materialClasses(vl_db::DocumentLibraries* libs);
wxArrayString compositionClasses(const std::shared_ptr<const vantlib::Library>& library);
wxArrayString compositionClasses(vl_db::DocumentLibraries* libs);

// Removes one trailing "-<digits>": "Brick-12" -> "Brick"; "Brick-12a", "Brick-" and
// "Brick_2" stay as they are.
wxString stripNumeral(const wxString& text);

// An unsaved copy of `material` under the first name of "<base>-2", "<base>-3", ... that
// `library` does not use (its own name when the library is null or does not hold it). The
// copy loses its unique code.
QcSmartPtr<vantlib::Material> duplicateMaterial(const QcSmartPtr<vantlib::Material>& material,
                                                const std::shared_ptr<vantlib::Library>& library);

// Replaces `out` with every composition (composition type) of the project library for
// kDbProject, of the central library for kDbCentral, of both in that order for kDbNone.
void loadCompositions(vl_db::DocumentLibraries* libs, vl_db::EDbType type,
                      std::vector<QcSmartPtr<vantlib::Composition>>& out);
void loadCompositionTypes(vl_db::DocumentLibraries* libs, vl_db::EDbType type,
                          std::vector<QcSmartPtr<vantlib::CompositionType>>& out);

// Where a library is, for status texts: "In project" or "In central database".
wxString whatLib(vl_db::EDbType type);
// The project or central library of a drawing; null for other types or a null `libs`.
std::shared_ptr<vantlib::Library> getLib(vl_db::DocumentLibraries* libs, vl_db::EDbType type);

}  // namespace vl_app
