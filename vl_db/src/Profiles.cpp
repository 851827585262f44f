// Construction profiles on the drawing side: list order, names, labels and the entities that
// use a profile.
#include <vl_db/Profiles.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <string>

#include <OdDbEntity.h>

#include <vantlib/Translations.h>

// The labels below are English texts that the module translates; the marker lets the
// catalogue extraction find them.
#ifndef wxTRANSLATE
#define wxTRANSLATE(text) L"" text
#endif

namespace vl_db {

namespace {

// Compares texts ignoring letter case, with runs of digits compared by their value.
int compareNatural(const OdString& a, const OdString& b) {
    const std::wstring& x = a.str();
    const std::wstring& y = b.str();
    size_t i = 0, j = 0;
    while (i < x.size() && j < y.size()) {
        if (std::iswdigit(x[i]) && std::iswdigit(y[j])) {
            size_t iEnd = i, jEnd = j;
            while (iEnd < x.size() && x[iEnd] == L'0')
                ++iEnd;
            while (jEnd < y.size() && y[jEnd] == L'0')
                ++jEnd;
            size_t iDigits = iEnd, jDigits = jEnd;
            while (iDigits < x.size() && std::iswdigit(x[iDigits]))
                ++iDigits;
            while (jDigits < y.size() && std::iswdigit(y[jDigits]))
                ++jDigits;
            // Without leading zeros, the longer run is the larger number.
            if (iDigits - iEnd != jDigits - jEnd)
                return iDigits - iEnd < jDigits - jEnd ? -1 : 1;
            const int digits = x.compare(iEnd, iDigits - iEnd, y, jEnd, jDigits - jEnd);
            if (digits != 0)
                return digits < 0 ? -1 : 1;
            i = iDigits;
            j = jDigits;
            continue;
        }
        const wint_t cx = std::towlower(x[i]), cy = std::towlower(y[j]);
        if (cx != cy)
            return cx < cy ? -1 : 1;
        ++i;
        ++j;
    }
    if (i < x.size())
        return 1;
    return j < y.size() ? -1 : 0;
}

// A text whose plain comparison orders as compareNatural does: letters lower-cased, and each run
// of digits, without its leading zeros, written as '0', its length and its digits. A digit run
// meets other characters as a digit would ('0' stands for any digit there), and two runs
// compare by length first, then digit by digit.
std::wstring naturalKey(const OdString& text) {
    const std::wstring& x = text.str();
    std::wstring key;
    key.reserve(x.size() + 4);
    size_t i = 0;
    while (i < x.size()) {
        if (!std::iswdigit(x[i])) {
            key += wchar_t(std::towlower(x[i]));
            ++i;
            continue;
        }
        size_t first = i;
        while (first < x.size() && x[first] == L'0')
            ++first;
        size_t end = first;
        while (end < x.size() && std::iswdigit(x[end]))
            ++end;
        key += L'0';
        key += wchar_t(end - first);
        key.append(x, first, end - first);
        i = end;
    }
    return key;
}

OdString standardOf(const vantlib::Profile& profile) {
    const auto& name = profile.name();
    return name && name->standard() ? name->standard()->name() : OdString();
}

OdString nameOf(const vantlib::Profile& profile) {
    return profile.name() ? profile.name()->Object::name() : OdString();
}

const vantlib::ObjectType kProfileReference = vantlib::kConstructionProfile;

}  // namespace

void sortProfiles(std::vector<ProfilePtr>& profiles) {
    // Lists hold tens of thousands of profiles under a few dozen names: the names are ranked
    // once, and each size becomes a key whose plain comparison is the natural one, so that the
    // sort itself compares no text twice.
    struct Keyed {
        size_t nameRank = 0;
        std::wstring size;
        ProfilePtr profile;
    };
    struct NameGroup {
        OdString standard;
        OdString name;
        const vantlib::ProfileName* key = nullptr;
    };
    std::vector<NameGroup> groups;
    std::map<const vantlib::ProfileName*, size_t> groupOf;
    std::vector<Keyed> keyed;
    keyed.reserve(profiles.size());
    for (ProfilePtr& profile : profiles) {
        Keyed entry;
        if (profile) {
            const vantlib::ProfileName* name = profile->name().get();
            auto found = groupOf.find(name);
            if (found == groupOf.end()) {
                found = groupOf.emplace(name, groups.size()).first;
                groups.push_back({standardOf(*profile), nameOf(*profile), name});
            }
            entry.nameRank = found->second;
            entry.size = naturalKey(profile->size());
        }
        entry.profile = std::move(profile);
        keyed.push_back(std::move(entry));
    }
    // Groups in order; profiles with no profile name (a null key) are a group of their own.
    std::vector<size_t> order(groups.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    const auto compareText = [](const OdString& a, const OdString& b) {
        return a.str() == b.str() ? 0 : compareNatural(a, b);
    };
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        if (int c = compareText(groups[a].standard, groups[b].standard))
            return c < 0;
        return compareText(groups[a].name, groups[b].name) < 0;
    });
    std::vector<size_t> rank(groups.size());
    for (size_t position = 0; position < order.size(); ++position) {
        // Names that compare equal share a rank, so their sizes decide between them.
        const bool same = position > 0 && compareText(groups[order[position]].standard, groups[order[position - 1]].standard) == 0 &&
                          compareText(groups[order[position]].name, groups[order[position - 1]].name) == 0;
        rank[order[position]] = same ? rank[order[position - 1]] : position;
    }
    for (Keyed& entry : keyed)
        if (entry.profile)
            entry.nameRank = rank[entry.nameRank];
    std::stable_sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
        if (!a.profile || !b.profile)
            return bool(a.profile) && !b.profile;
        if (a.nameRank != b.nameRank)
            return a.nameRank < b.nameRank;
        return a.size < b.size;
    });
    for (size_t i = 0; i < keyed.size(); ++i)
        profiles[i] = std::move(keyed[i].profile);
}

OdString fullProfileName(const vantlib::Profile& profile) {
    const OdString name = nameOf(profile);
    if (name.isEmpty())
        return profile.size();
    return profile.size().isEmpty() ? name : name + L" " + profile.size();
}

OdString fullProfileName(const QcSmartPtr<const vantlib::Profile>& profile) {
    return profile ? fullProfileName(*profile) : OdString();
}

OdString getProfileTypeLabel(vantlib::ProfileType type) {
    static const std::pair<vantlib::ProfileType, const wchar_t*> labels[] = {
        {vantlib::kProfileGeneric, wxTRANSLATE("Generic")},
        {vantlib::kProfileStructuralConcrete, wxTRANSLATE("Structural Concrete")},
        {vantlib::kProfileStructuralSteel, wxTRANSLATE("Structural Steel")},
        {vantlib::kProfileHvac, wxTRANSLATE("HVAC")},
        {vantlib::kProfilePiping, wxTRANSLATE("Piping")},
        {vantlib::kProfileElectrical, wxTRANSLATE("Electrical")},
    };
    OdString text;
    for (const auto& label : labels) {
        if ((type & label.first) == 0)
            continue;
        if (!text.isEmpty())
            text += L", ";
        text += label.second;
    }
    return text.isEmpty() ? OdString(labels[0].second) : text;
}

OdString getProfileShapeLabel(vantlib::ObjectType type, bool shortForm) {
    struct Label {
        vantlib::ObjectType type;
        const wchar_t* longForm;
        const wchar_t* shortForm;
    };
    static const Label labels[] = {
        {vantlib::kAsymmetricIShapeProfile, wxTRANSLATE("Asymmetric I-shape profile"), wxTRANSLATE("Asymmetric I-shape")},
        {vantlib::kIShapeProfile, wxTRANSLATE("I-shape profile"), wxTRANSLATE("I-shape")},
        {vantlib::kLShapeProfile, wxTRANSLATE("L-shape profile"), wxTRANSLATE("L-shape")},
        {vantlib::kUShapeProfile, wxTRANSLATE("U-shape profile"), wxTRANSLATE("U-shape")},
        {vantlib::kCShapeProfile, wxTRANSLATE("C-shape profile"), wxTRANSLATE("C-shape")},
        {vantlib::kZShapeProfile, wxTRANSLATE("Z-shape profile"), wxTRANSLATE("Z-shape")},
        {vantlib::kTShapeProfile, wxTRANSLATE("T-shape profile"), wxTRANSLATE("T-shape")},
        {vantlib::kCraneRailAShapeProfile, wxTRANSLATE("Crane rail A-shape profile"), wxTRANSLATE("Crane rail A-shape")},
        {vantlib::kCraneRailFShapeProfile, wxTRANSLATE("Crane rail F-shape profile"), wxTRANSLATE("Crane rail F-shape")},
        {vantlib::kCircleProfile, wxTRANSLATE("Circle profile"), wxTRANSLATE("Circle")},
        {vantlib::kCircleHollowProfile, wxTRANSLATE("Hollow circle profile"), wxTRANSLATE("Hollow circle")},
        {vantlib::kEllipseProfile, wxTRANSLATE("Ellipse profile"), wxTRANSLATE("Ellipse")},
        {vantlib::kRectangleProfile, wxTRANSLATE("Rectangle profile"), wxTRANSLATE("Rectangle")},
        {vantlib::kRectangleHollowProfile, wxTRANSLATE("Hollow rectangle profile"), wxTRANSLATE("Hollow rectangle")},
        {vantlib::kRoundedRectangleProfile, wxTRANSLATE("Rounded rectangle profile"), wxTRANSLATE("Rounded rectangle")},
        {vantlib::kTrapeziumProfile, wxTRANSLATE("Trapezium profile"), wxTRANSLATE("Trapezium")},
        {vantlib::kCustomProfile, wxTRANSLATE("Custom profile"), wxTRANSLATE("Custom")},
    };
    for (const Label& label : labels)
        if (label.type == type)
            return shortForm ? label.shortForm : label.longForm;
    return OdString();
}

OdString getUserDefinedGlobalLabel() { return wxTRANSLATE("user defined"); }

OdString convertProfileStandardLabel(const OdString& standard, EStringVersion wanted) {
    const OdString stored = getUserDefinedGlobalLabel();
    const OdString displayed = vantlib::translate(stored);
    if (wanted == kDisplayedString)
        return standard.iCompare(stored) == 0 ? displayed : standard;
    return standard == displayed ? stored : standard;
}

std::vector<OdDbObjectId> findProfileId(const OdDbDatabase& database, EDbType library, uint32_t profileId) {
    return database.entitiesReferencing(kProfileReference, int32_t(library), profileId);
}

void setProfileId(const std::vector<OdDbObjectId>& entities, EDbType library, uint32_t profileId,
                  const OdString& fullName) {
    for (const OdDbObjectId& id : entities) {
        OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.safeOpenObject(OdDb::kForWrite).get());
        if (!entity)
            continue;
        std::vector<OdDbLibraryReference> references;
        for (const OdDbLibraryReference& reference : entity->libraryReferences())
            if (reference.objectType != kProfileReference)
                references.push_back(reference);
        OdDbLibraryReference profile;
        profile.objectType = kProfileReference;
        profile.libraryKind = int32_t(library);
        profile.objectName = fullName;
        profile.objectId = profileId;
        references.push_back(profile);
        entity->setLibraryReferences(references);
    }
}

std::vector<OdDbObjectId> removeProfileId(OdDbDatabase& database, EDbType library, uint32_t profileId) {
    std::vector<OdDbObjectId> entities = findProfileId(database, library, profileId);
    for (const OdDbObjectId& id : entities) {
        OdSmartPtr<OdDbEntity> entity = OdDbEntity::cast(id.safeOpenObject(OdDb::kForWrite).get());
        entity->removeLibraryReferences(kProfileReference, int32_t(library), profileId);
    }
    return entities;
}

}  // namespace vl_db
