// vlib psets FILE list [--namespace N]
#include <ostream>

#include <vantlib/Criteria.h>
#include <vl_db/PropertySets.h>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

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
        return code + " extended type (value category " + std::to_string(specifier.valueCategory()) + ")";
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

int listPropertySets(const Arguments& args, std::ostream& out) {
    const auto library = vl_db::propertySetLibrary(openLibrary(args.positional()[0], true));
    bool found = false;
    for (const auto& ns : library->namespaces()) {
        if (args.has("namespace") && !vantlib::StringCriteria().equals(toOd(args.value("namespace"))).matches(ns->name()))
            continue;
        listNamespace(*ns, out);
        found = true;
    }
    if (args.has("namespace") && !found)
        throw std::runtime_error(args.positional()[0] + ": no namespace named '" + args.value("namespace") + "'");
    return 0;
}

}  // namespace

int psetsCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"namespace"});
    args.requirePositional(2, "FILE list");
    const std::string& action = args.positional()[1];
    if (action == "list")
        return listPropertySets(args, out);
    throw UsageError("unknown psets action '" + action + "' (list)");
}

}  // namespace vlib
