// Writing the model as a definition file, in the element order and default namespace of the
// official files.
#include <fstream>
#include <sstream>

#include <pugixml.hpp>

#include "PsdFormat.h"

namespace vl_db {

namespace {

const char* const kSchemaLocation = "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd";

class Writer {
public:
    explicit Writer(const PsdSet& set) : m_set(set) {}

    std::string write() {
        if (m_set.name.empty())
            fail("the set has no name");
        const bool quantities = m_set.kind == PsdSetKind::kQuantitySet;
        pugi::xml_document document;
        pugi::xml_node declaration = document.append_child(pugi::node_declaration);
        declaration.append_attribute("version") = "1.0";
        declaration.append_attribute("encoding") = "UTF-8";

        pugi::xml_node root = document.append_child(quantities ? "QtoSetDef" : "PropertySetDef");
        root.append_attribute("xmlns:xsd") = "http://www.w3.org/2001/XMLSchema";
        root.append_attribute("xmlns:xsi") = "http://www.w3.org/2001/XMLSchema-instance";
        if (!m_set.ifdGuid.empty())
            root.append_attribute("ifdguid") = m_set.ifdGuid.c_str();
        if (!quantities) {
            root.append_attribute("templatetype") = m_set.templateType.c_str();
            root.append_attribute("xsi:noNamespaceSchemaLocation") = kSchemaLocation;
        } else if (!m_set.templateType.empty()) {
            root.append_attribute("templatetype") = m_set.templateType.c_str();
        }
        root.append_attribute("xmlns") = kPsdNamespace;

        if (!m_set.ifcVersion.empty())
            root.append_child("IfcVersion").append_attribute("version") = m_set.ifcVersion.c_str();
        text(root, "Name", m_set.name);
        optionalText(root, "Definition", m_set.definition);
        text(root, "Applicability", m_set.applicability);
        pugi::xml_node classes = root.append_child("ApplicableClasses");
        for (const std::string& name : m_set.applicableClasses)
            text(classes, "ClassName", name);
        optionalText(root, "ApplicableTypeValue", m_set.applicableTypeValue);
        pugi::xml_node properties = root.append_child(quantities ? "QtoDefs" : "PropertyDefs");
        for (const PsdProperty& property : m_set.properties)
            writeProperty(properties.append_child(quantities ? "QtoDef" : "PropertyDef"), property, quantities);
        aliases(root, quantities ? "QtoDefinitionAliases" : "PsetDefinitionAliases",
                quantities ? "QtoDefinitionAlias" : "PsetDefinitionAlias", m_set.definitionAliases);

        std::ostringstream out;
        document.save(out, "  ", pugi::format_indent, pugi::encoding_utf8);
        return out.str();
    }

private:
    [[noreturn]] void fail(const std::string& reason) const { throw PsdError(m_set.name, 0, reason); }

    static void text(pugi::xml_node parent, const char* name, const std::string& value) {
        pugi::xml_node node = parent.append_child(name);
        if (!value.empty())
            node.append_child(pugi::node_pcdata).set_value(value.c_str());
    }
    static void optionalText(pugi::xml_node parent, const char* name, const std::string& value) {
        if (!value.empty())
            text(parent, name, value);
    }
    static void aliases(pugi::xml_node parent, const char* list, const char* element,
                        const std::vector<PsdAlias>& values) {
        pugi::xml_node node = parent.append_child(list);
        for (const PsdAlias& alias : values) {
            pugi::xml_node item = node.append_child(element);
            item.append_attribute("lang") = alias.lang.c_str();
            if (!alias.text.empty())
                item.append_child(pugi::node_pcdata).set_value(alias.text.c_str());
        }
    }

    void writeProperty(pugi::xml_node node, const PsdProperty& property, bool quantity) const {
        if (property.name.empty())
            fail("a property has no name");
        if (!property.ifdGuid.empty())
            node.append_attribute("ifdguid") = property.ifdGuid.c_str();
        text(node, "Name", property.name);
        optionalText(node, "Definition", property.definition);
        if (quantity) {
            text(node, "QtoType", quantityType(property));
        } else {
            writeType(node, property);
        }
        aliases(node, "NameAliases", "NameAlias", property.nameAliases);
        aliases(node, "DefinitionAliases", "DefinitionAlias", property.definitionAliases);
    }

    std::string quantityType(const PsdProperty& property) const {
        const PsdType& type = property.type;
        if (type.kind != PsdTypeKind::kQuantity && type.kind != PsdTypeKind::kSingleValue)
            fail("the quantity '" + property.name + "' is neither a number nor a measure");
        PsdPrimitive primitive;
        std::string measure;
        if (type.kind == PsdTypeKind::kQuantity && psd::quantityType(type.dataType, primitive, measure) &&
            primitive == type.primitive && measure == type.measure)
            return type.dataType;
        const std::string derived = psd::quantityTypeOf(type.primitive, type.measure);
        if (derived.empty())
            fail("the quantity '" + property.name + "' has a type that no quantity type has");
        return derived;
    }

    // The data type written for a single value: the one the file had when it still says what the
    // definition says, else the usual one of the definition's primitive and measure. A definition
    // that never had one and holds text is written without one, as it was read.
    static std::string dataTypeOf(const PsdType& type) {
        PsdPrimitive primitive;
        std::string measure;
        if (!type.dataType.empty() && psdDataType(type.dataType, primitive, measure) && primitive == type.primitive &&
            measure == type.measure)
            return type.dataType;
        if (type.dataType.empty() && type.primitive == PsdPrimitive::kString && type.measure.empty())
            return {};
        return defaultPsdDataType(type.primitive, type.measure);
    }

    void writeType(pugi::xml_node node, const PsdProperty& property) const {
        const PsdType& type = property.type;
        switch (type.kind) {
        case PsdTypeKind::kSingleValue:
        case PsdTypeKind::kQuantity: {
            // A quantity in a property set is written as the single value it amounts to.
            pugi::xml_node dataType =
                node.append_child("PropertyType").append_child("TypePropertySingleValue").append_child("DataType");
            PsdType single = type;
            if (type.kind == PsdTypeKind::kQuantity)
                single.dataType.clear();
            const std::string name = dataTypeOf(single);
            if (!name.empty())
                dataType.append_attribute("type") = name.c_str();
            return;
        }
        case PsdTypeKind::kEnumeration: {
            pugi::xml_node enumerated = node.append_child("PropertyType").append_child("TypePropertyEnumeratedValue");
            pugi::xml_node list = enumerated.append_child("EnumList");
            if (!type.enumListName.empty())
                list.append_attribute("name") = type.enumListName.c_str();
            for (const std::string& item : type.enumItems)
                text(list, "EnumItem", item);
            pugi::xml_node constants = enumerated.append_child("ConstantList");
            for (const PsdConstant& constant : type.constants) {
                pugi::xml_node def = constants.append_child("ConstantDef");
                text(def, "Name", constant.name);
                optionalText(def, "Definition", constant.definition);
                aliases(def, "NameAliases", "NameAlias", constant.nameAliases);
                aliases(def, "DefinitionAliases", "DefinitionAlias", constant.definitionAliases);
            }
            return;
        }
        case PsdTypeKind::kExtended: {
            pugi::xml_document fragment;
            const pugi::xml_parse_result parsed =
                fragment.load_buffer(type.xml.data(), type.xml.size(), pugi::parse_default, pugi::encoding_utf8);
            const pugi::xml_node element = fragment.document_element();
            if (!parsed || std::string(element.name()) != "PropertyType" || fragment.last_child() != element)
                fail("the type of the property '" + property.name + "' is no <PropertyType> element");
            node.append_copy(element);
            return;
        }
        }
    }

    const PsdSet& m_set;
};

}  // namespace

std::string writePsdText(const PsdSet& set) { return Writer(set).write(); }

void writePsd(const PsdSet& set, const std::string& path) {
    const std::string text = writePsdText(set);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out || !out.write(text.data(), std::streamsize(text.size())) || !out.flush())
        throw PsdError(path, 0, "the file cannot be written");
}

}  // namespace vl_db
