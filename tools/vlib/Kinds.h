#pragma once
// The kinds of library objects that vlib names on its command line, and the per-kind
// operations the subcommands need without knowing the object classes.
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <OdString.h>

#include <vantlib/Library.h>

namespace vlib {

struct ListFilter {
    std::string className;  // class of a material, composition type of a composition
    std::vector<std::string> tags;  // objects carrying any of these
};

struct Kind {
    const char* word;    // as typed: "material"
    const char* plural;  // as reported: "materials"
    vantlib::ObjectType type;
    bool filterable;     // accepts --class / --tag

    unsigned (*count)(const vantlib::Library& library);
    std::vector<OdString> (*names)(const vantlib::Library& library, const ListFilter& filter);
    // Id of the object of that name; 0 when the library has none.
    uint32_t (*idOf)(const vantlib::Library& library, const OdString& name);
    OdString (*nameOf)(const vantlib::Library& library, uint32_t id);
};

// Every kind in the order reports list them.
const std::vector<Kind>& kinds();
// The kind for a word (singular or plural, case-insensitive); throws UsageError for others.
const Kind& kindFromWord(const std::string& word);
// The kind of a numeric object type; null for kinds vlib does not handle.
const Kind* findKind(vantlib::ObjectType type);

// Profiles are listed and shown by their full names, not as a kind of named objects.
bool isProfileWord(const std::string& word);

OdString toOd(const std::string& utf8);
std::string toUtf8(const OdString& text);

}  // namespace vlib
