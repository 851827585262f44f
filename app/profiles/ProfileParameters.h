#pragma once
// What editing and saving a profile needs without widgets: reading the typed dimensions,
// writing them into a profile through the shape table, choosing the profile class of a
// profile, the texts of the type and shape choices, comparing profiles field by field and
// numbering the size of a copy.
#include <functional>
#include <memory>
#include <vector>

#include <wx/string.h>

#include <OdUnits.h>

#include <vantlib/Library.h>
#include <vantlib/Profile.h>

#include "app/profiles/ProfileShapes.h"

namespace vl_app {

// The value of a typed dimension: empty text is 0; text that is no number is 0; a value below
// -1e-10 becomes 0, so no negative dimension reaches the library. Lengths are read in the
// drawing's notation into `unit`; slopes are plain numbers in radians.
double parameterValue(const wxString& text, bool length, OdDb::UnitsValue unit);

// The value the dialog shows for a parameter field, by the field's control name.
using ParameterSource = std::function<double(const char* control)>;

// Writes the panel's fields into the profile in panel order. A dimension that the class keeps
// only optionally is written only when the profile already carries it: editing never adds a
// fillet radius to a profile that has none.
void updateProfileParameters(vantlib::Profile& profile, const ShapePanel& panel, const ParameterSource& read);

// The fields of the panel of T written into `profile`; nothing for a null pointer. Shapes that
// extend another (hollow circle, hollow and rounded rectangles, asymmetric I) set the base
// dimensions through the same rows, which name the base class's parameters.
template <class T>
void updateProfile(T* profile, const ParameterSource& read) {
    if (!profile)
        return;
    if (const ShapePanel* panel = shapePanel(T::kType))
        updateProfileParameters(*profile, *panel, read);
}

// A custom profile has no typed dimensions: its outline comes from the drawing.
template <>
inline void updateProfile<vantlib::CustomProfile>(vantlib::CustomProfile*, const ParameterSource&) {}

// updateProfile of the profile's own class, found by its class descriptor (custom first, then
// the asymmetric I before the I-shape it extends, then the other shapes); a custom profile is
// handed to `custom` instead. False for a class the dialog does not know.
bool updateProfileOfItsClass(vantlib::Profile& profile, const ParameterSource& read,
                             const std::function<void(vantlib::CustomProfile&)>& custom);

// The six translated type labels in alphabetical order.
std::vector<wxString> sortedTypeLabels();
// The translated long labels of the sixteen parametric shapes, in the order of the shape table.
std::vector<wxString> parametricShapeLabels();
// The class short name of a translated shape label, long ("I-shape profile") or short
// ("I-shape"); empty for a label of no shape.
wxString getShapeReverseTranslation(const wxString& label);
// The object type of a translated shape label; kUnknownObject for none.
vantlib::ObjectType shapeTypeFromLabel(const wxString& label);

// A full profile name taken apart: the text before the first blank is the profile name, the
// text after the last blank is the size (empty without a blank).
struct FullNameParts {
    wxString name;
    wxString size;
};
FullNameParts splitFullName(const wxString& fullName);

// True when the two profiles agree exactly in size, profile name, description, material name
// and shape: saving one of them again would store the other twice.
bool identicalProfiles(const vantlib::Profile& a, const vantlib::Profile& b);

// A size under which the library keeps no profile of the key's profile name: `size` itself
// when it is free, otherwise its base (a trailing "-<digits>" taken off) followed by "-2",
// "-3", ... Each candidate is looked up as the size of the key's profile name, so the key's
// own size text does not decide; the key's name id is read afresh on every pass. Without a
// library `size` is returned unchanged.
wxString newProfileObjectName(const std::shared_ptr<const vantlib::Library>& library, const wxString& size,
                              vantlib::ProfileKey& key);

// "Keep entities", the second answer to the update question: the profile as stored is saved
// again under the next free numbered size ("300-2") for the entities to keep; returns the copy.
// Call it, in the same transaction, before the changed profile is saved; then make the entities
// use the copy (ProfilesInfo::setProfileId).
QcSmartPtr<vantlib::Profile> keepStoredProfileForEntities(const std::shared_ptr<vantlib::Library>& library,
                                                          const QcSmartPtr<vantlib::Profile>& stored);

}  // namespace vl_app
