#pragma once
// Query criteria. A default-constructed criterion matches every object of the kind.
#include <set>
#include <string>
#include <vector>

#include <OdString.h>

#include <vantlib/Composition.h>
#include <vantlib/Profile.h>

namespace vantlib {

class Profile;
class ProfileClass;

// Condition on a text; comparisons ignore letter case as names do.
class StringCriteria {
public:
    enum Mode : uint32_t {
        kAny = 0,       // every text
        kEquals = 1,
        kContains = 2,
        // Sizes written differently that mean the same: blanks ignored and "*" or the
        // multiplication sign read as "x" ("100 x 10", "100X10" and "100*10" match).
        kSize = 4,
    };

    StringCriteria() = default;
    StringCriteria(const OdString& text, Mode mode) : m_text(text), m_mode(mode) {}

    StringCriteria& equals(const OdString& text) { m_text = text; m_mode = kEquals; return *this; }
    StringCriteria& contains(const OdString& text) { m_text = text; m_mode = kContains; return *this; }

    Mode mode() const { return m_mode; }
    const OdString& text() const { return m_text; }
    bool isAny() const { return m_mode == kAny; }
    bool matches(const OdString& candidate) const;

private:
    OdString m_text;
    Mode m_mode = kAny;
};

// Objects selected by name only (any kind).
struct NameCriteria {
    StringCriteria name;

    NameCriteria() = default;
    explicit NameCriteria(const StringCriteria& nameCriteria) : name(nameCriteria) {}
};

// How a list of required tags is applied.
enum TagMatch : uint32_t {
    kAnyTag = 0,   // the object has at least one of the tags
    kAllTags = 1,  // the object has every tag
};

struct MaterialCriteria {
    StringCriteria name;
    // Name of the material's class; kEquals with a class the library lacks matches nothing.
    StringCriteria materialClass;
    // Required tags by name; empty means no tag condition.
    std::vector<OdString> tags;
    TagMatch tagMatch = kAnyTag;
};

// Profiles of one profile name by their size.
struct ProfileCriteria {
    // Id of the profile name; 0 for profiles of any name.
    uint32_t nameId = 0;
    StringCriteria size;
};

// The profiles the profile editors list.
struct ProfilesPanelQuery {
    // Profiles whose profile name has any of these type bits; kAnyProfileType for every one
    // (also those without a profile name).
    ProfileType type = kAnyProfileType;
    // "vantlib::IShapeProfile" (or "vantlib::IShape"): profiles of that class only, not of the
    // classes that extend it. Empty for every class; an unknown class matches nothing.
    OdString className;
    // Standard names (letter case ignored); empty for every standard.
    std::set<OdString> standards;
    // On the profile name's name.
    StringCriteria name;
    // On the text a user searches: standard, profile name, size and description.
    StringCriteria text;

    // Whether the library's query would return the profile: editors that hold a whole list
    // narrow it without reading the library again. A Matcher does the same for many profiles,
    // having resolved the class and folded the texts once.
    bool matches(const Profile& profile) const;
    class Matcher;
};

class ProfilesPanelQuery::Matcher {
public:
    explicit Matcher(const ProfilesPanelQuery& query);
    bool operator()(const Profile& profile) const;

private:
    const ProfilesPanelQuery& m_query;
    bool m_anyClass;
    const ProfileClass* m_class;
    std::wstring m_text;
};

struct CompositionCriteria {
    StringCriteria name;
    // A single base type; Composition::kAll (64) sets no condition.
    Composition::Type baseType = Composition::kAll;
    // When set, only compositions whose composition type has this name (a transient object
    // serves; it is compared by name).
    QcSmartPtr<CompositionType> compositionType;
    std::vector<OdString> tags;
    TagMatch tagMatch = kAnyTag;
};

}  // namespace vantlib
