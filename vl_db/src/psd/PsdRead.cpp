// Reading a definition file into the model. pugixml knows nothing of XML namespaces, so elements
// are matched by their local names, and the root's namespace is checked once.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <system_error>

#include <pugixml.hpp>

#include "PsdFormat.h"

namespace vl_db {

namespace {

const char* localName(const char* qualified) {
    const char* colon = std::strrchr(qualified, ':');
    return colon ? colon + 1 : qualified;
}

bool isElement(const pugi::xml_node& node, const char* name) {
    return node.type() == pugi::node_element && std::strcmp(localName(node.name()), name) == 0;
}

pugi::xml_node child(const pugi::xml_node& parent, const char* name) {
    for (pugi::xml_node node = parent.first_child(); node; node = node.next_sibling()) {
        if (isElement(node, name))
            return node;
    }
    return {};
}

template <class F>
void forEachChild(const pugi::xml_node& parent, const char* name, F&& visit) {
    for (pugi::xml_node node = parent.first_child(); node; node = node.next_sibling()) {
        if (isElement(node, name))
            visit(node);
    }
}

// Line ends and white space as the parser leaves them in plain text: a carriage return written as
// a character reference gets through the parser, but would not survive writing and reading.
std::string normalText(std::string text) {
    size_t out = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            text[out++] = text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            text[out++] = '\n';
    }
    text.resize(out);
    return text;
}
std::string normalAttribute(std::string value) {
    std::replace_if(value.begin(), value.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
    return value;
}

std::string attributeOf(const pugi::xml_node& node, const char* name) {
    return normalAttribute(node.attribute(name).value());
}

// The text directly inside an element (its character data and CDATA sections, joined). Text of
// nothing but white space is no text, whether the file writes it plainly or as character
// references: the parser drops the plain form, so the written form could not keep it either.
std::string textOf(const pugi::xml_node& node) {
    std::string text;
    for (pugi::xml_node part = node.first_child(); part; part = part.next_sibling()) {
        if (part.type() == pugi::node_pcdata || part.type() == pugi::node_cdata)
            text += part.value();
    }
    return text.find_first_not_of(" \t\r\n") == std::string::npos ? std::string() : normalText(text);
}

std::string trimmed(const std::string& text) {
    const char* space = " \t\r\n";
    const size_t first = text.find_first_not_of(space);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

bool onlyChildren(const pugi::xml_node& node, std::initializer_list<const char*> names) {
    for (pugi::xml_node part = node.first_child(); part; part = part.next_sibling()) {
        if (part.type() != pugi::node_element)
            continue;
        const char* name = localName(part.name());
        if (std::none_of(names.begin(), names.end(), [name](const char* n) { return std::strcmp(n, name) == 0; }))
            return false;
    }
    return true;
}

bool isNamespaceDeclaration(const char* attribute) {
    return std::strcmp(attribute, "xmlns") == 0 || std::strncmp(attribute, "xmlns:", 6) == 0;
}

// Has the element no attributes but these? Namespace declarations are not the element's content.
bool onlyAttributes(const pugi::xml_node& node, std::initializer_list<const char*> names) {
    for (pugi::xml_attribute attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
        const char* name = attribute.name();
        if (!isNamespaceDeclaration(name) &&
            std::none_of(names.begin(), names.end(), [name](const char* n) { return std::strcmp(n, name) == 0; }))
            return false;
    }
    return true;
}

bool hasText(const pugi::xml_node& node) { return !trimmed(textOf(node)).empty(); }

// An element without attributes whose element children all have these names.
bool plain(const pugi::xml_node& node, std::initializer_list<const char*> children) {
    return onlyAttributes(node, {}) && onlyChildren(node, children);
}

// Does the enumeration hold anything the model does not keep? Then it is kept as XML.
bool plainEnumeration(const pugi::xml_node& node) {
    if (!plain(node, {"EnumList", "ConstantList"}) || hasText(node))
        return false;
    const pugi::xml_node list = child(node, "EnumList");
    if (list && (!onlyAttributes(list, {"name"}) || !onlyChildren(list, {"EnumItem"}) || hasText(list)))
        return false;
    const pugi::xml_node constants = child(node, "ConstantList");
    if (constants && (!plain(constants, {"ConstantDef"}) || hasText(constants)))
        return false;
    bool plainConstants = true;
    forEachChild(constants, "ConstantDef", [&](const pugi::xml_node& constant) {
        plainConstants = plainConstants && plain(constant, {"Name", "Definition", "NameAliases", "DefinitionAliases"}) &&
                         !hasText(constant);
    });
    int lists = 0, constantLists = 0;
    forEachChild(node, "EnumList", [&](const pugi::xml_node&) { ++lists; });
    forEachChild(node, "ConstantList", [&](const pugi::xml_node&) { ++constantLists; });
    return plainConstants && lists <= 1 && constantLists <= 1;
}

bool plainSingleValue(const pugi::xml_node& node) {
    if (!plain(node, {"DataType"}) || hasText(node))
        return false;
    int count = 0;
    bool plainType = true;
    forEachChild(node, "DataType", [&](const pugi::xml_node& dataType) {
        ++count;
        plainType = plainType && onlyAttributes(dataType, {"type"}) && !dataType.first_child();
    });
    return count <= 1 && plainType;
}

// The PropertyType element as XML: a copy without namespace prefixes and declarations, written
// without indentation, so that the same element always gives the same text.
std::string extendedXml(const pugi::xml_node& propertyType) {
    pugi::xml_document copy;
    copy.append_copy(propertyType);
    struct Unqualify : pugi::xml_tree_walker {
        std::vector<pugi::xml_node> blank;  // text that reads as none once its references are plain
        bool for_each(pugi::xml_node& node) override {
            if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
                const std::string text = normalText(node.value());
                node.set_value(text.c_str());
                if (node.type() == pugi::node_pcdata && text.find_first_not_of(" \t\n") == std::string::npos)
                    blank.push_back(node);
            }
            if (node.type() != pugi::node_element)
                return true;
            const std::string local = localName(node.name());  // a copy: the name is replaced in place
            node.set_name(local.c_str());
            for (pugi::xml_attribute a = node.first_attribute(); a;) {
                const pugi::xml_attribute next = a.next_attribute();
                if (isNamespaceDeclaration(a.name()))
                    node.remove_attribute(a);
                else
                    a.set_value(normalAttribute(a.value()).c_str());
                a = next;
            }
            return true;
        }
    } unqualify;
    copy.traverse(unqualify);
    for (pugi::xml_node& node : unqualify.blank)
        node.parent().remove_child(node);
    std::ostringstream out;
    copy.first_child().print(out, "", pugi::format_raw, pugi::encoding_utf8);
    return out.str();
}

class Reader {
public:
    Reader(const std::string& text, const std::string& file) : m_text(text), m_file(file) {}

    PsdSet read() {
        pugi::xml_document document;
        const pugi::xml_parse_result parsed =
            document.load_buffer(m_text.data(), m_text.size(), pugi::parse_default, pugi::encoding_utf8);
        if (parsed.status == pugi::status_no_document_element)
            throw PsdError(m_file, 0, "the file holds no XML element");
        if (!parsed)
            throw PsdError(m_file, lineAt(parsed.offset), std::string("not valid XML: ") + parsed.description());
        const pugi::xml_node root = document.document_element();
        PsdSet set;
        if (isElement(root, "PropertySetDef"))
            set.kind = PsdSetKind::kPropertySet;
        else if (isElement(root, "QtoSetDef"))
            set.kind = PsdSetKind::kQuantitySet;
        else
            fail(root, std::string("the root element is <") + root.name() +
                           ">, not <PropertySetDef> or <QtoSetDef>: this is no property-set definition");
        checkNamespace(root);
        const bool quantities = set.kind == PsdSetKind::kQuantitySet;

        set.name = requiredName(root, "the set");
        set.definition = textOf(child(root, "Definition"));
        set.ifdGuid = attributeOf(root, "ifdguid");
        set.templateType = attributeOf(root, "templatetype");
        set.ifcVersion = attributeOf(child(root, "IfcVersion"), "version");
        set.applicability = textOf(child(root, "Applicability"));
        forEachChild(child(root, "ApplicableClasses"), "ClassName", [&](const pugi::xml_node& node) {
            const std::string name = trimmed(textOf(node));
            if (name.empty())
                fail(node, "an empty <ClassName> among the applicable classes");
            // A set is assigned to a class once; the library keeps no repeats.
            for (const std::string& earlier : set.applicableClasses) {
                if (psd::sameName(earlier, name))
                    fail(node, "the class '" + name + "' is named twice among the applicable classes");
            }
            set.applicableClasses.push_back(name);
        });
        set.applicableTypeValue = textOf(child(root, "ApplicableTypeValue"));
        set.definitionAliases = aliases(child(root, quantities ? "QtoDefinitionAliases" : "PsetDefinitionAliases"),
                                        quantities ? "QtoDefinitionAlias" : "PsetDefinitionAlias");

        std::vector<pugi::xml_node> nodes;  // of the properties, for the line of a clash
        forEachChild(child(root, quantities ? "QtoDefs" : "PropertyDefs"), quantities ? "QtoDef" : "PropertyDef",
                     [&](const pugi::xml_node& node) {
                         PsdProperty property = readProperty(node, quantities);
                         for (size_t i = 0; i < set.properties.size(); ++i) {
                             if (psd::sameName(set.properties[i].name, property.name))
                                 fail(node, "a second property named '" + property.name + "' (the first is on line " +
                                                std::to_string(lineOf(nodes[i])) + ")");
                         }
                         set.properties.push_back(std::move(property));
                         nodes.push_back(node);
                     });
        return set;
    }

private:
    int lineAt(ptrdiff_t offset) const {
        if (offset < 0)
            return 0;
        const auto end = m_text.begin() + std::min<ptrdiff_t>(offset, ptrdiff_t(m_text.size()));
        return int(std::count(m_text.begin(), end, '\n')) + 1;
    }
    int lineOf(const pugi::xml_node& node) const { return lineAt(node.offset_debug()); }

    [[noreturn]] void fail(const pugi::xml_node& node, const std::string& reason) const {
        throw PsdError(m_file, lineOf(node), reason);
    }

    // Files of no namespace are read too; a root of another namespace is not ours.
    void checkNamespace(const pugi::xml_node& root) const {
        const std::string qualified = root.name();
        const size_t colon = qualified.find(':');
        const std::string declaration = colon == std::string::npos ? "xmlns" : "xmlns:" + qualified.substr(0, colon);
        const pugi::xml_attribute uri = root.attribute(declaration.c_str());
        if (!uri)
            return;
        const std::string value = uri.value();
        const std::string family = "http://buildingSMART-tech.org/xml/psd/";
        if (value.compare(0, family.size(), family) != 0)
            fail(root, "the root element is of the namespace '" + value +
                           "', not of property-set definitions (" + kPsdNamespace + ")");
    }

    std::string requiredName(const pugi::xml_node& node, const std::string& what) const {
        const pugi::xml_node nameNode = child(node, "Name");
        const std::string name = trimmed(textOf(nameNode));
        if (name.empty())
            fail(nameNode ? nameNode : node, what + (nameNode ? " has an empty <Name>" : " has no <Name>"));
        return name;
    }

    std::vector<PsdAlias> aliases(const pugi::xml_node& list, const char* element) const {
        std::vector<PsdAlias> result;
        forEachChild(list, element, [&](const pugi::xml_node& node) {
            result.push_back({attributeOf(node, "lang"), textOf(node)});
        });
        return result;
    }

    PsdProperty readProperty(const pugi::xml_node& node, bool quantity) const {
        PsdProperty property;
        property.name = requiredName(node, "a property");
        property.definition = textOf(child(node, "Definition"));
        property.ifdGuid = attributeOf(node, "ifdguid");
        property.nameAliases = aliases(child(node, "NameAliases"), "NameAlias");
        property.definitionAliases = aliases(child(node, "DefinitionAliases"), "DefinitionAlias");
        if (quantity)
            property.type = readQuantityType(node, property.name);
        else
            property.type = readPropertyType(node, property.name);
        return property;
    }

    PsdType readQuantityType(const pugi::xml_node& node, const std::string& property) const {
        const pugi::xml_node qtoType = child(node, "QtoType");
        if (!qtoType)
            fail(node, "the quantity '" + property + "' has no <QtoType>");
        PsdType type;
        type.kind = PsdTypeKind::kQuantity;
        type.dataType = trimmed(textOf(qtoType));
        if (!psd::quantityType(type.dataType, type.primitive, type.measure))
            fail(qtoType, "the quantity '" + property + "' has the unknown quantity type '" + type.dataType + "'");
        return type;
    }

    PsdType readPropertyType(const pugi::xml_node& node, const std::string& property) const {
        const pugi::xml_node propertyType = child(node, "PropertyType");
        if (!propertyType)
            fail(node, "the property '" + property + "' has no <PropertyType>");
        pugi::xml_node kind;
        int kinds = 0;
        for (pugi::xml_node part = propertyType.first_child(); part; part = part.next_sibling()) {
            if (part.type() == pugi::node_element && kinds++ == 0)
                kind = part;
        }
        if (!kind)
            fail(propertyType, "the property '" + property + "' has an empty <PropertyType>");
        const bool alone = kinds == 1 && onlyAttributes(propertyType, {}) && !hasText(propertyType);
        if (alone && isElement(kind, "TypePropertySingleValue") && plainSingleValue(kind))
            return singleValue(kind, property);
        if (alone && isElement(kind, "TypePropertyEnumeratedValue") && plainEnumeration(kind))
            return enumeration(kind, property);
        PsdType type;
        type.kind = PsdTypeKind::kExtended;
        type.extendedKind = localName(kind.name());
        type.xml = extendedXml(propertyType);
        return type;
    }

    PsdType singleValue(const pugi::xml_node& node, const std::string& property) const {
        PsdType type;
        type.kind = PsdTypeKind::kSingleValue;
        const pugi::xml_node dataType = child(node, "DataType");
        type.dataType = trimmed(attributeOf(dataType, "type"));
        // A property whose file declares no data type holds text.
        if (!type.dataType.empty() && !psdDataType(type.dataType, type.primitive, type.measure))
            fail(dataType, "the property '" + property + "' has the unknown data type '" + type.dataType + "'");
        return type;
    }

    PsdType enumeration(const pugi::xml_node& node, const std::string& property) const {
        PsdType type;
        type.kind = PsdTypeKind::kEnumeration;
        const pugi::xml_node list = child(node, "EnumList");
        type.enumListName = attributeOf(list, "name");
        forEachChild(list, "EnumItem", [&](const pugi::xml_node& item) {
            const std::string value = trimmed(textOf(item));
            if (value.empty())
                fail(item, "the enumeration of '" + property + "' has an empty <EnumItem>");
            if (std::find(type.enumItems.begin(), type.enumItems.end(), value) != type.enumItems.end())
                fail(item, "the enumeration of '" + property + "' lists '" + value + "' twice");
            type.enumItems.push_back(value);
        });
        forEachChild(child(node, "ConstantList"), "ConstantDef", [&](const pugi::xml_node& constantNode) {
            PsdConstant constant;
            constant.name = requiredName(constantNode, "a constant of the enumeration of '" + property + "'");
            constant.definition = textOf(child(constantNode, "Definition"));
            constant.nameAliases = aliases(child(constantNode, "NameAliases"), "NameAlias");
            constant.definitionAliases = aliases(child(constantNode, "DefinitionAliases"), "DefinitionAlias");
            type.constants.push_back(std::move(constant));
        });
        return type;
    }

    const std::string& m_text;
    const std::string& m_file;
};

// Lines of the bytes before `end`, counted from 1.
int lineBefore(const std::string& text, size_t end) {
    return int(std::count(text.begin(), text.begin() + std::min(end, text.size()), '\n')) + 1;
}

// Length of the UTF-8 sequence at `i`, or 0 when the bytes there are no valid UTF-8.
size_t utf8Length(const std::string& text, size_t i) {
    const auto byte = [&](size_t k) { return k < text.size() ? (unsigned char)text[k] : 0u; };
    const unsigned c = byte(i);
    if (c < 0x80)
        return 1;
    size_t length;
    unsigned code;
    if (c >= 0xC2 && c <= 0xDF) {
        length = 2;
        code = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
        length = 3;
        code = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
        length = 4;
        code = c & 0x07;
    } else {
        return 0;
    }
    for (size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80)
            return 0;
        code = (code << 6) | (byte(i + k) & 0x3F);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

std::string latin1ToUtf8(const std::string& text) {
    std::string utf8;
    utf8.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        const unsigned char u = (unsigned char)c;
        if (u < 0x80) {
            utf8 += c;
        } else {
            utf8 += char(0xC0 | (u >> 6));
            utf8 += char(0x80 | (u & 0x3F));
        }
    }
    return utf8;
}

// The encoding named by the XML declaration, lower case; empty when none is named.
std::string declaredEncoding(const std::string& text) {
    if (text.compare(0, 5, "<?xml") != 0)
        return {};
    const std::string declaration = text.substr(0, text.find("?>"));
    const size_t key = declaration.find("encoding");
    if (key == std::string::npos)
        return {};
    const size_t quote = declaration.find_first_of("\"'", key);
    if (quote == std::string::npos)
        return {};
    const size_t end = declaration.find(declaration[quote], quote + 1);
    std::string name = declaration.substr(quote + 1, end == std::string::npos ? std::string::npos : end - quote - 1);
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return name;
}

// The text as UTF-8 without byte order mark: UTF-8 files as they are (checked), ISO-8859-1 files
// converted; every other encoding is refused rather than misread.
std::string utf8Text(std::string text, const std::string& file) {
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        text.erase(0, 3);
    else if (text.compare(0, 2, "\xFE\xFF") == 0 || text.compare(0, 2, "\xFF\xFE") == 0 ||
             (text.size() >= 2 && (text[0] == '\0' || text[1] == '\0')))
        throw PsdError(file, 0, "the file is encoded in UTF-16 or UTF-32; only UTF-8 and ISO-8859-1 files are read");
    const std::string encoding = declaredEncoding(text);
    if (encoding == "iso-8859-1" || encoding == "latin1" || encoding == "latin-1" || encoding == "iso_8859-1")
        return latin1ToUtf8(text);
    if (!encoding.empty() && encoding != "utf-8" && encoding != "utf8" && encoding != "us-ascii" && encoding != "ascii")
        throw PsdError(file, 1, "the file is encoded in '" + encoding +
                                    "'; only UTF-8 and ISO-8859-1 files are read (save it as UTF-8)");
    for (size_t i = 0; i < text.size();) {
        const size_t length = utf8Length(text, i);
        if (length == 0) {
            char byte[8];
            std::snprintf(byte, sizeof byte, "0x%02X", unsigned((unsigned char)text[i]));
            throw PsdError(file, lineBefore(text, i),
                           std::string("the text is not UTF-8 (byte ") + byte +
                               "): the file is in another encoding that it does not declare (save it as UTF-8)");
        }
        i += length;
    }
    return text;
}

std::string sizeText(uintmax_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MB", double(bytes) / double(1u << 20));
    return text;
}

[[noreturn]] void refuseSize(const std::string& file, uintmax_t bytes) {
    throw PsdError(file, 0, "the file has " + sizeText(bytes) + "; definition files larger than " +
                                sizeText(kPsdMaxFileBytes) + " are not read");
}

}  // namespace

PsdSet readPsdText(const std::string& text, const std::string& fileName) {
    if (text.size() > kPsdMaxFileBytes)
        refuseSize(fileName, text.size());
    const std::string utf8 = utf8Text(text, fileName);
    return Reader(utf8, fileName).read();
}

PsdSet readPsd(const std::string& path) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(path, error);
    if (error)
        throw PsdError(path, 0, "the file cannot be read: " + error.message());
    if (size > kPsdMaxFileBytes)
        refuseSize(path, size);
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    if (!(in && bytes << in.rdbuf()) && size > 0)
        throw PsdError(path, 0, "the file cannot be read");
    return readPsdText(bytes.str(), path);
}

}  // namespace vl_db
