// vlib list FILE KIND [--class C] [--tag T]
// vlib list FILE profile [--standard S] [--shape SH] [--type T] [--text X]
#include <cstdlib>
#include <ostream>

#include <vantlib/Library.h>
#include <vl_db/Profiles.h>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

namespace {

// A type by its label ("Structural Steel", letter case ignored) or by its bits ("4").
vantlib::ProfileType profileTypeFromWord(const std::string& word) {
    const OdString wanted = toOd(word);
    for (uint32_t bit = 1; bit <= vantlib::kProfileElectrical; bit <<= 1)
        if (vantlib::StringCriteria().equals(wanted).matches(vl_db::getProfileTypeLabel(vantlib::ProfileType(bit))))
            return vantlib::ProfileType(bit);
    char* end = nullptr;
    const unsigned long bits = std::strtoul(word.c_str(), &end, 10);
    if (!word.empty() && *end == '\0' && bits > 0 && bits <= 63)
        return vantlib::ProfileType(bits);
    throw UsageError("unknown profile type '" + word +
                     "' (Generic, Structural Concrete, Structural Steel, HVAC, Piping, Electrical or their bits)");
}

// The query the profiles dialog builds from its filters.
vantlib::ProfilesPanelQuery profileQuery(const Arguments& args) {
    vantlib::ProfilesPanelQuery query;
    if (args.has("standard"))
        query.standards.insert(
            vl_db::convertProfileStandardLabel(toOd(args.value("standard")), vl_db::kStoredString));
    if (args.has("shape")) {
        const vantlib::ProfileClass* shape = vantlib::ProfileClass::byName(toOd(args.value("shape")));
        if (!shape)
            throw UsageError("unknown shape '" + args.value("shape") + "' (a class such as IShape or CircleHollow)");
        query.className = shape->className();
    }
    if (args.has("type"))
        query.type = profileTypeFromWord(args.value("type"));
    if (args.has("text"))
        query.text.contains(toOd(args.value("text")));
    return query;
}

void listProfiles(const Arguments& args, std::ostream& out) {
    const auto library = openLibrary(args.positional()[0], true);
    std::vector<vl_db::ProfilePtr> profiles;
    library->get(profiles, profileQuery(args));
    vl_db::sortProfiles(profiles);
    for (const auto& profile : profiles)
        out << toUtf8(profile->displayName()) << '\n';
}

}  // namespace

int listCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"class", "tag", "standard", "shape", "type", "text"});
    args.requirePositional(2, "FILE KIND");
    const bool profileFilters = args.has("standard") || args.has("shape") || args.has("type") || args.has("text");
    if (isProfileWord(args.positional()[1])) {
        if (args.has("class") || args.has("tag"))
            throw UsageError("--class and --tag apply to materials and compositions, not to profiles");
        listProfiles(args, out);
        return 0;
    }
    const Kind& kind = kindFromWord(args.positional()[1]);
    if (profileFilters)
        throw UsageError(std::string("--standard, --shape, --type and --text apply to profiles, not to ") + kind.plural);
    ListFilter filter;
    filter.className = args.value("class");
    filter.tags = args.values("tag");
    if (!kind.filterable && (args.has("class") || args.has("tag")))
        throw UsageError(std::string("--class and --tag apply to materials and compositions, not to ") + kind.plural);
    const auto library = openLibrary(args.positional()[0], true);
    for (const OdString& name : kind.names(*library, filter))
        out << toUtf8(name) << '\n';
    return 0;
}

}  // namespace vlib
