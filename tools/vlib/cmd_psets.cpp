// vlib psets LIBRARY list [--namespace N]
// vlib psets LIBRARY import FILE|FOLDER... [--namespace N]
// vlib psets LIBRARY export FOLDER|FILE.xml [--namespace N] [--set S]...
#include <ostream>

#include <vantlib/Criteria.h>
#include <vantlib/Library.h>
#include <vl_db/PropertySets.h>
#include <vl_db/PsdLibrary.h>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"
#include "Progress.h"

namespace vlib {

namespace {

std::string codeName(int code) {
    switch (code) {
    case vl_db::kBooleanCode: return "Boolean";
    case vl_db::kIntegerCode: return "Integer";
    case vl_db::kRealCode: return "Real";
    case vl_db::kStringCode: return "String";
    default: return "code " + std::to_string(code);
    }
}

template <class T>
std::string enumText(const vl_db::EnumTypeSpecifier<T>& specifier, std::string (*format)(const T&)) {
    std::string text;
    for (const auto& value : specifier.values()) {
        text += text.empty() ? "" : ", ";
        text += format(value.value);
        if (!value.description.isEmpty())
            text += " : " + toUtf8(value.description);
    }
    return text + (specifier.allowCustomValue() ? "; other values allowed" : "");
}

std::string integerText(const long long& value) { return std::to_string(value); }
std::string realText(const double& value) { return vl_db::JsonValue(value).dump(); }
std::string stringText(const OdString& value) { return toUtf8(value); }

// "Real", "String enumeration (NEW : new, EXISTING)", "Real formula Width * Height", ...
std::string typeText(const vl_db::AbstractTypeSpecifier& specifier) {
    const std::string code = codeName(specifier.primitiveCode());
    using Kind = vantlib::TypeSpecification;
    switch (specifier.kind()) {
    case Kind::kPrimitive:
        return code;
    case Kind::kEnumeration:
        if (auto* integers = dynamic_cast<const vl_db::EnumTypeSpecifier<long long>*>(&specifier))
            return code + " enumeration (" + enumText(*integers, integerText) + ")";
        if (auto* reals = dynamic_cast<const vl_db::EnumTypeSpecifier<double>*>(&specifier))
            return code + " enumeration (" + enumText(*reals, realText) + ")";
        return code + " enumeration (" +
               enumText(dynamic_cast<const vl_db::EnumTypeSpecifier<OdString>&>(specifier), stringText) + ")";
    case Kind::kFormula:
        return code + " formula " + toUtf8(static_cast<const vl_db::FormulaTypeSpecifier<OdString>&>(specifier).formula());
    case Kind::kParentReference:
        return code + " from the parent's " +
               toUtf8(static_cast<const vl_db::ParentRefTypeSpecifier<OdString>&>(specifier).reference());
    case Kind::kValueDefinitionReference:
        return code + " from the value " +
               toUtf8(static_cast<const vl_db::ValueDefinitionTypeSpecifier<OdString>&>(specifier).valueDefinition());
    case Kind::kExtended:
        return "Extended type (" + code + ", value category " + std::to_string(specifier.valueCategory()) + ")";
    }
    return code;
}

// The label in quotes when it says more than the name.
std::string labelled(const OdString& name, const OdString& label) {
    std::string text = toUtf8(name);
    if (!label.isEmpty() && label != name)
        text += " \"" + toUtf8(label) + "\"";
    return text;
}

void listNamespace(const vl_db::INamespace& ns, std::ostream& out) {
    out << "namespace " << labelled(ns.name(), ns.displayLabel()) << (ns.isEditable() ? "" : " (read-only)") << '\n';
    for (const auto& set : ns.propertySets()) {
        out << "  set " << labelled(set->name(), set->label());
        std::string classes;
        for (const OdString& ifcType : set->ifcTypes())
            classes += (classes.empty() ? "" : ", ") + toUtf8(ifcType);
        if (!classes.empty())
            out << " for " << classes;
        out << '\n';
        for (const auto& definition : set->propertyDefinitions())
            out << "    property " << labelled(definition->name(), definition->label()) << ": "
                << typeText(*definition->typeSpecifier()) << '\n';
        for (const auto& definition : set->valueDefinitions()) {
            out << "    value " << labelled(definition->name(), definition->label()) << ": "
                << typeText(*definition->typeSpecifier());
            if (!definition->measure().isEmpty())
                out << ", measure " << toUtf8(definition->measure());
            out << '\n';
        }
    }
}

bool namespaceChosen(const Arguments& args, const OdString& name) {
    return !args.has("namespace") || vantlib::StringCriteria().equals(toOd(args.value("namespace"))).matches(name);
}

void requireNamespaceFound(const Arguments& args, bool found) {
    if (args.has("namespace") && !found)
        throw std::runtime_error(args.positional()[0] + ": no namespace named '" + args.value("namespace") + "'");
}

int listPropertySets(const Arguments& args, std::ostream& out) {
    args.requirePositional(2, "LIBRARY list");
    const auto library = vl_db::propertySetLibrary(openLibrary(args.positional()[0], true));
    bool found = false;
    for (const auto& ns : library->namespaces()) {
        if (!namespaceChosen(args, ns->name()))
            continue;
        listNamespace(*ns, out);
        found = true;
    }
    requireNamespaceFound(args, found);
    return 0;
}

int importPropertySets(const Arguments& args, std::ostream& out) {
    args.requirePositional(3, "LIBRARY import FILE...", true);
    const std::vector<std::string> paths(args.positional().begin() + 2, args.positional().end());
    vl_db::PsdImportTarget target;
    target.namespaceName = args.has("namespace") ? toOd(args.value("namespace")) : vl_db::psdNamespaceNameOf(paths.front());
    vantlib::PropertySetStore store(openLibrary(args.positional()[0], false));
    const size_t setsBefore = [&] {
        const auto ns = store.findNamespace(target.namespaceName);
        return ns ? store.propertySets(ns->id).size() : size_t(0);
    }();
    uint32_t namespaceId = 0;
    try {
        TerminalProgress progress("Reading");
        namespaceId = vl_db::importPsdFiles(store, paths, target, [&](size_t done, size_t total) { progress(done, total); });
    } catch (const vantlib::Exception& e) {
        throw std::runtime_error(std::string(e.what()) + "; nothing was imported");
    }
    const auto ns = store.findNamespace(namespaceId);
    out << "Imported " << store.propertySets(namespaceId).size() - setsBefore << " property sets into the namespace '"
        << toUtf8(ns->name) << "' of " << args.positional()[0] << '\n';
    return 0;
}

// The chosen sets: those named by --set (each must be found once), else every set, of the
// chosen namespace or of all.
std::vector<uint32_t> chosenSets(const Arguments& args, const vantlib::PropertySetStore& store) {
    std::vector<uint32_t> ids;
    const std::vector<std::string> names = args.values("set");
    std::vector<int> found(names.size(), 0);
    bool namespaceFound = false;
    for (const auto& ns : store.namespaces()) {
        if (!namespaceChosen(args, ns.name))
            continue;
        namespaceFound = true;
        for (const auto& set : store.propertySets(ns.id)) {
            bool chosen = names.empty();
            for (size_t i = 0; i < names.size(); ++i) {
                if (vantlib::StringCriteria().equals(toOd(names[i])).matches(set.name)) {
                    chosen = true;
                    ++found[i];
                }
            }
            if (chosen)
                ids.push_back(set.id);
        }
    }
    requireNamespaceFound(args, namespaceFound);
    for (size_t i = 0; i < names.size(); ++i) {
        if (found[i] == 0)
            throw std::runtime_error(args.positional()[0] + ": no property set named '" + names[i] + "'");
        if (found[i] > 1)
            throw std::runtime_error(args.positional()[0] + ": several namespaces have a set named '" + names[i] +
                                     "'; name the namespace with --namespace");
    }
    return ids;
}

int exportPropertySets(const Arguments& args, std::ostream& out) {
    args.requirePositional(3, "LIBRARY export FOLDER|FILE.xml");
    const vantlib::PropertySetStore store(openLibrary(args.positional()[0], true));
    const std::vector<std::string> written = vl_db::exportPsdFiles(store, chosenSets(args, store), args.positional()[2]);
    out << "Exported " << written.size() << " property sets to " << args.positional()[2] << '\n';
    return 0;
}

}  // namespace

int psetsCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"namespace", "set"});
    args.requirePositional(2, "LIBRARY list|import|export ...", true);
    const std::string& action = args.positional()[1];
    if (action == "list")
        return listPropertySets(args, out);
    if (action == "import")
        return importPropertySets(args, out);
    if (action == "export")
        return exportPropertySets(args, out);
    throw UsageError("unknown psets action '" + action + "' (list, import, export)");
}

}  // namespace vlib
