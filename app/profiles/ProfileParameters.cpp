#include "app/profiles/ProfileParameters.h"

#include <algorithm>
#include <type_traits>

#include <OdStringWx.h>

#include <vl_db/Profiles.h>

#include "app/common/Distances.h"
#include "app/common/Helpers.h"

namespace vl_app {

namespace {

// Values this close below zero are rounding noise of a computed dimension, kept as they are.
constexpr double kNegativeTolerance = -1e-10;

template <class... Classes>
struct ClassList {};

// The order in which a profile's class is looked for: a class before the classes it extends.
using EditedClasses =
    ClassList<vantlib::CustomProfile, vantlib::AsymmetricIShapeProfile, vantlib::IShapeProfile, vantlib::LShapeProfile,
              vantlib::UShapeProfile, vantlib::CShapeProfile, vantlib::ZShapeProfile, vantlib::TShapeProfile,
              vantlib::CraneRailAShapeProfile, vantlib::CraneRailFShapeProfile, vantlib::CircleProfile,
              vantlib::CircleHollowProfile, vantlib::EllipseProfile, vantlib::RectangleProfile,
              vantlib::RectangleHollowProfile, vantlib::RoundedRectangleProfile, vantlib::TrapeziumProfile>;

template <class Visit, class First, class... Rest>
bool visitOwnClass(vantlib::Profile& profile, const Visit& visit, ClassList<First, Rest...>) {
    if (&profile.isA() == &First::desc()) {
        visit(static_cast<First&>(profile));
        return true;
    }
    if constexpr (sizeof...(Rest) > 0)
        return visitOwnClass(profile, visit, ClassList<Rest...>());
    else
        return false;
}

wxString materialName(const vantlib::Profile& profile) {
    return profile.material() ? toWx(profile.material()->name()) : wxString();
}

wxString profileNameText(const vantlib::Profile& profile) {
    return profile.name() ? toWx(profile.name()->name()) : wxString();
}

}  // namespace

double parameterValue(const wxString& text, bool length, OdDb::UnitsValue unit) {
    const wxString trimmed = wxString(text).Trim(true).Trim(false);
    double value = 0.0;
    if (trimmed.empty())
        return 0.0;
    const bool parsed = length ? parseDistance(value, trimmed, unit) : (trimmed.ToCDouble(&value) || trimmed.ToDouble(&value));
    if (!parsed)
        return 0.0;
    return value < kNegativeTolerance ? 0.0 : value;
}

void updateProfileParameters(vantlib::Profile& profile, const ShapePanel& panel, const ParameterSource& read) {
    const vantlib::ProfileClass& shape = profile.isA();
    for (const ShapeRow& row : panel.rows) {
        const vantlib::ShapeParameterInfo* info = shape.parameter(row.parameter);
        if (!info)
            continue;
        // The class keeps the dimension only optionally: present or not is the profile's own
        // fact, which editing the other dimensions does not change.
        if (info->optional && !profile.hasParameter(row.parameter))
            continue;
        profile.setParameter(row.parameter, read(row.control));
    }
}

bool updateProfileOfItsClass(vantlib::Profile& profile, const ParameterSource& read,
                             const std::function<void(vantlib::CustomProfile&)>& custom) {
    const auto visit = [&](auto& shaped) {
        using Class = std::decay_t<decltype(shaped)>;
        if constexpr (std::is_same_v<Class, vantlib::CustomProfile>)
            custom(shaped);
        else
            updateProfile<Class>(&shaped, read);
    };
    return visitOwnClass(profile, visit, EditedClasses());
}

std::vector<wxString> sortedTypeLabels() {
    std::vector<wxString> labels;
    for (const vantlib::ProfileType type :
         {vantlib::kProfileGeneric, vantlib::kProfileStructuralConcrete, vantlib::kProfileStructuralSteel,
          vantlib::kProfileHvac, vantlib::kProfilePiping, vantlib::kProfileElectrical})
        labels.push_back(profileTypeLabel(type));
    std::sort(labels.begin(), labels.end());
    return labels;
}

std::vector<wxString> parametricShapeLabels() {
    std::vector<wxString> labels;
    for (const ShapePanel& panel : shapePanels())
        if (panel.type != vantlib::kCustomProfile)
            labels.push_back(shapeLabel(panel.type, false));
    return labels;
}

vantlib::ObjectType shapeTypeFromLabel(const wxString& label) {
    if (label.empty())
        return vantlib::kUnknownObject;
    for (const ShapePanel& panel : shapePanels())
        if (shapeLabel(panel.type, false) == label || shapeLabel(panel.type, true) == label)
            return panel.type;
    return vantlib::kUnknownObject;
}

wxString getShapeReverseTranslation(const wxString& label) {
    const ShapePanel* panel = shapePanel(shapeTypeFromLabel(label));
    return panel ? wxString(panel->shortName) : wxString();
}

FullNameParts splitFullName(const wxString& fullName) {
    FullNameParts parts;
    const int first = fullName.Find(' ');
    if (first == wxNOT_FOUND) {
        parts.name = fullName;
        return parts;
    }
    parts.name = fullName.Left(static_cast<size_t>(first));
    parts.size = fullName.Mid(static_cast<size_t>(fullName.Find(' ', true)) + 1);
    return parts;
}

bool identicalProfiles(const vantlib::Profile& a, const vantlib::Profile& b) {
    return a.size() == b.size() && profileNameText(a) == profileNameText(b) && a.description() == b.description() &&
           materialName(a) == materialName(b) && shapeLabel(a.type(), false) == shapeLabel(b.type(), false);
}

wxString newProfileObjectName(const std::shared_ptr<const vantlib::Library>& library, const wxString& size,
                              vantlib::ProfileKey& key) {
    wxString candidate = size;
    if (!library)
        return candidate;
    const wxString base = stripNumeral(size);
    vantlib::ProfileKey lookup = key;
    int counter = 1;
    for (;;) {
        lookup.nameId = key.nameId;
        lookup.size = toOd(candidate);
        if (!library->get<vantlib::Profile>(lookup))
            return candidate;
        ++counter;
        candidate = wxString::Format("%s-%d", base, counter);
    }
}

QcSmartPtr<vantlib::Profile> keepStoredProfileForEntities(const std::shared_ptr<vantlib::Library>& library,
                                                          const QcSmartPtr<vantlib::Profile>& stored) {
    vantlib::ProfileKey key(stored->name() ? stored->name()->id() : 0, stored->size());
    QcSmartPtr<vantlib::Profile> copy = stored->cloneObject();
    copy->set_size(toOd(newProfileObjectName(library, toWx(stored->size()), key)));
    return library->save(copy);
}

}  // namespace vl_app
