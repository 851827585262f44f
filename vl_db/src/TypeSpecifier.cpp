#include <vl_db/TypeSpecifier.h>

#include <limits>

namespace vl_db {

namespace {

std::string utf8(const OdString& text) { return text.toUtf8(); }

// Messages quote JSON, which may hold any text: dumped with non-ASCII escaped, so the message
// stays valid whatever the input's bytes.
OdString message(const std::string& text) { return OdString::fromUtf8(text); }

const JsonValue& member(const JsonValue& json, const char* key) {
    if (!json.is_object())
        throw ValueError(OdString(L"A type specifier is not a JSON object"));
    auto it = json.find(key);
    if (it == json.end())
        throw ValueError(message(std::string("A type specifier lacks the key '") + key + "'"));
    return *it;
}

// The "type" key must name the kind being read.
void expectType(const JsonValue& json, const char* type) {
    const JsonValue& value = member(json, "type");
    if (!value.is_string() || value.get_ref<const std::string&>() != type)
        throw ValueError(message(std::string("A type specifier of type '") + type + "' was expected, not " + value.dump(-1, ' ', true, nlohmann::detail::error_handler_t::replace)));
}

const std::string& text(const JsonValue& json, const char* key) {
    const JsonValue& value = member(json, key);
    if (!value.is_string())
        throw ValueError(message(std::string("The key '") + key + "' of a type specifier is not a text"));
    return value.get_ref<const std::string&>();
}

// An enumeration's value of type T from its JSON form.
template <class T>
T enumValue(const JsonValue& json);

template <>
long long enumValue<long long>(const JsonValue& json) {
    if (json.is_number_integer() && !(json.is_number_unsigned() &&
                                      json.get<unsigned long long>() > (unsigned long long)std::numeric_limits<long long>::max()))
        return json.get<long long>();
    throw ValueError(message("The enumerated value " + json.dump(-1, ' ', true, nlohmann::detail::error_handler_t::replace) + " is not an integer"));
}

template <>
double enumValue<double>(const JsonValue& json) {
    if (json.is_number())
        return json.get<double>();
    throw ValueError(message("The enumerated value " + json.dump(-1, ' ', true, nlohmann::detail::error_handler_t::replace) + " is not a number"));
}

template <>
OdString enumValue<OdString>(const JsonValue& json) {
    if (json.is_string())
        return OdString::fromUtf8(json.get_ref<const std::string&>());
    throw ValueError(message("The enumerated value " + json.dump(-1, ' ', true, nlohmann::detail::error_handler_t::replace) + " is not a text"));
}

JsonValue jsonOf(long long value) { return JsonValue(value); }
JsonValue jsonOf(double value) { return JsonValue(value); }
JsonValue jsonOf(const OdString& value) { return JsonValue(utf8(value)); }

// {"type": type, "values": text}, the form of the kinds whose data is one text.
JsonValue textSpecifier(const char* type, const std::string& value) {
    JsonValue json = JsonValue::object();
    json["type"] = type;
    json["values"] = value;
    return json;
}

}  // namespace

template <class T>
bool EnumTypeSpecifier<T>::hasDescriptions() const {
    for (const EnumValue<T>& value : m_values)
        if (!value.description.isEmpty())
            return true;
    return false;
}

template <class T>
JsonValue EnumTypeSpecifier<T>::toJson() const {
    JsonValue values = JsonValue::array();
    for (const EnumValue<T>& value : m_values) {
        if (value.description.isEmpty()) {
            values.push_back(jsonOf(value.value));
        } else {
            JsonValue pair = JsonValue::object();
            pair["ref"] = jsonOf(value.value);
            pair["desc"] = utf8(value.description);
            values.push_back(std::move(pair));
        }
    }
    JsonValue json = JsonValue::object();
    json["type"] = "Enum";
    json["values"] = std::move(values);
    json["allow_custom_value"] = m_allowCustomValue;
    return json;
}

template <class T>
void EnumTypeSpecifier<T>::fromJson(const JsonValue& json) {
    expectType(json, "Enum");
    const JsonValue& list = member(json, "values");
    if (!list.is_array())
        throw ValueError(OdString(L"The values of an enumeration are not a JSON list"));
    const JsonValue& allow = member(json, "allow_custom_value");
    if (!allow.is_boolean())
        throw ValueError(OdString(L"The key 'allow_custom_value' of an enumeration is not true or false"));
    Values values;
    for (const JsonValue& element : list) {
        if (element.is_object()) {
            EnumValue<T> value{enumValue<T>(member(element, "ref")), OdString()};
            if (element.contains("desc"))
                value.description = OdString::fromUtf8(text(element, "desc"));
            values.push_back(std::move(value));
        } else {
            values.push_back({enumValue<T>(element), OdString()});
        }
    }
    m_values = std::move(values);
    m_allowCustomValue = allow.get<bool>();
}

template <class T>
JsonValue FormulaTypeSpecifier<T>::toJson() const {
    return textSpecifier("Formula", utf8(m_formula));
}

template <class T>
void FormulaTypeSpecifier<T>::fromJson(const JsonValue& json) {
    expectType(json, "Formula");
    m_formula = OdString::fromUtf8(text(json, "values"));
}

template <class T>
JsonValue ParentRefTypeSpecifier<T>::toJson() const {
    return textSpecifier("ParentRef", utf8(m_reference));
}

template <class T>
void ParentRefTypeSpecifier<T>::fromJson(const JsonValue& json) {
    expectType(json, "ParentRef");
    m_reference = OdString::fromUtf8(text(json, "values"));
}

template <class T>
JsonValue ValueDefinitionTypeSpecifier<T>::toJson() const {
    return textSpecifier("ValueDefinition", utf8(m_valueDefinition));
}

template <class T>
void ValueDefinitionTypeSpecifier<T>::fromJson(const JsonValue& json) {
    expectType(json, "ValueDefinition");
    m_valueDefinition = OdString::fromUtf8(text(json, "values"));
}

ExtendedTypeSpecifier::ExtendedTypeSpecifier(int code, int valueCategory, const std::string& definitionText)
    : TypeSpecifier<OdString>(code), m_valueCategory(valueCategory), m_text(definitionText) {
    if (valueCategory == kSingleValue)
        throw ValueError(OdString(L"A single value is no extended type"));
}

JsonValue ExtendedTypeSpecifier::toJson() const { return textSpecifier("Extended", m_text); }

void ExtendedTypeSpecifier::fromJson(const JsonValue& json) {
    expectType(json, "Extended");
    m_text = text(json, "values");
}

template class EnumTypeSpecifier<long long>;
template class EnumTypeSpecifier<double>;
template class EnumTypeSpecifier<OdString>;
template class FormulaTypeSpecifier<OdString>;
template class ParentRefTypeSpecifier<OdString>;
template class ValueDefinitionTypeSpecifier<OdString>;

bool isEditableType(const AbstractTypeSpecifier& specifier) {
    const int code = specifier.primitiveCode();
    return specifier.valueCategory() == kSingleValue &&
           (code == kBooleanCode || code == kIntegerCode || code == kRealCode || code == kStringCode);
}

namespace {

JsonValue parsedData(const vantlib::TypeSpecification& stored) {
    JsonValue json = JsonValue::parse(stored.data, nullptr, false);
    if (json.is_discarded())
        throw ValueError(OdString(L"The data of a stored type specifier is not JSON"));
    return json;
}

template <class Specifier>
TypeSpecifierPtr read(Specifier specifier, const vantlib::TypeSpecification& stored) {
    specifier.fromJson(parsedData(stored));
    return std::make_shared<Specifier>(std::move(specifier));
}

}  // namespace

TypeSpecifierPtr specifierFromStorage(const vantlib::TypeSpecification& stored) {
    using Stored = vantlib::TypeSpecification;
    switch (stored.kind) {
    case Stored::kPrimitive:
        if (stored.code == kBooleanCode || stored.code == kIntegerCode)
            return std::make_shared<TypeSpecifier<long long>>(stored.code);
        if (stored.code == kRealCode)
            return std::make_shared<TypeSpecifier<double>>(stored.code);
        return std::make_shared<TypeSpecifier<OdString>>(stored.code);
    case Stored::kEnumeration:
        if (stored.code == kIntegerCode)
            return read(EnumTypeSpecifier<long long>(stored.code), stored);
        if (stored.code == kRealCode)
            return read(EnumTypeSpecifier<double>(stored.code), stored);
        return read(EnumTypeSpecifier<OdString>(stored.code), stored);
    case Stored::kFormula:
        return read(FormulaTypeSpecifier<OdString>(), stored);
    case Stored::kParentReference:
        return read(ParentRefTypeSpecifier<OdString>(), stored);
    case Stored::kValueDefinitionReference:
        return read(ValueDefinitionTypeSpecifier<OdString>(), stored);
    case Stored::kExtended:
        return std::make_shared<ExtendedTypeSpecifier>(stored.code, stored.valueCategory, stored.data);
    }
    throw ValueError(OdString::formatted(L"Unknown kind of type specifier %u", unsigned(stored.kind)));
}

vantlib::TypeSpecification storageOf(const AbstractTypeSpecifier& specifier) {
    vantlib::TypeSpecification stored;
    stored.kind = specifier.kind();
    stored.code = specifier.primitiveCode();
    stored.valueCategory = specifier.valueCategory();
    if (stored.kind == vantlib::TypeSpecification::kExtended)
        stored.data = static_cast<const ExtendedTypeSpecifier&>(specifier).definitionText();
    else if (stored.kind != vantlib::TypeSpecification::kPrimitive)
        stored.data = specifier.toJson().dump();
    return stored;
}

}  // namespace vl_db
