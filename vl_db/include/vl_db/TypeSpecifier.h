#pragma once
// The type of a property or value definition: which kind of values it holds and, for the
// richer kinds, their extra data (an enumerated list, a formula, a reference to a parent
// value). Each specifier writes itself to a JSON value and reads itself back; the library
// keeps the kind, primitive code and value category in columns of their own and the JSON as
// the specifier's data.
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include <OdString.h>

#include <vantlib/Exception.h>
#include <vantlib/PropertySets.h>

namespace vl_db {

// Keys keep the order they were written in.
using JsonValue = nlohmann::ordered_json;

// A JSON value that does not describe a specifier: a missing key or a value of the wrong JSON
// type.
class ValueError : public vantlib::Exception {
public:
    using Exception::Exception;
};

// Primitive codes the editors offer; the library knows others (kept whole by
// ExtendedTypeSpecifier).
enum PrimitiveCode : int {
    kBooleanCode = 1,
    kIntegerCode = 6,
    kRealCode = 10,
    kStringCode = 11,
};

// How many values a definition holds and in which arrangement. The editors change the type
// of single values only.
enum ValueCategory : int {
    kSingleValue = 1,
    kBoundedValue = 2,    // lower and upper bound, maybe a set point
    kListValue = 3,
    kTableValue = 4,      // defining and defined values
    kReferenceValue = 5,  // a reference to another object
    kComplexValue = 6,    // several properties under one name
};

using SpecifierKind = vantlib::TypeSpecification::Kind;

class AbstractTypeSpecifier {
public:
    virtual ~AbstractTypeSpecifier() = default;

    virtual SpecifierKind kind() const = 0;
    virtual int primitiveCode() const = 0;
    virtual int valueCategory() const { return kSingleValue; }
    // The specifier's data; null for a primitive, which has none beyond its code.
    virtual JsonValue toJson() const = 0;
    // Replaces the data with the JSON's; ValueError for JSON that does not describe this kind.
    virtual void fromJson(const JsonValue& json) = 0;
    virtual std::shared_ptr<AbstractTypeSpecifier> clone() const = 0;
};

using TypeSpecifierPtr = std::shared_ptr<AbstractTypeSpecifier>;

// A single value of type T: long long (Boolean and Integer codes), double (Real) or OdString
// (String and the other codes).
template <class T>
class TypeSpecifier : public AbstractTypeSpecifier {
    static_assert(std::is_same<T, long long>::value || std::is_same<T, double>::value || std::is_same<T, OdString>::value,
                  "specifiers hold integers, reals or texts");

public:
    using ValueType = T;

    explicit TypeSpecifier(int code) : m_code(code) {}

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kPrimitive; }
    int primitiveCode() const override { return m_code; }
    JsonValue toJson() const override { return JsonValue(); }
    void fromJson(const JsonValue&) override {}
    TypeSpecifierPtr clone() const override { return std::make_shared<TypeSpecifier>(*this); }

private:
    int m_code;
};

// One value of an enumeration; an empty description is none.
template <class T>
struct EnumValue {
    T value;
    OdString description;

    friend bool operator==(const EnumValue& a, const EnumValue& b) {
        return a.value == b.value && a.description == b.description;
    }
};

// Values restricted to an ordered list, each with an optional description, and a flag that
// allows values outside the list. Instantiated for Integer (long long), Real (double) and
// String (OdString).
template <class T>
class EnumTypeSpecifier : public TypeSpecifier<T> {
public:
    using Values = std::vector<EnumValue<T>>;

    explicit EnumTypeSpecifier(int code = defaultCode()) : TypeSpecifier<T>(code) {}
    EnumTypeSpecifier(int code, Values values, bool allowCustomValue)
        : TypeSpecifier<T>(code), m_values(std::move(values)), m_allowCustomValue(allowCustomValue) {}

    // Integer 6, Real 10, String 11.
    static constexpr int defaultCode() {
        return std::is_same<T, long long>::value ? kIntegerCode : std::is_same<T, double>::value ? kRealCode : kStringCode;
    }

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kEnumeration; }
    const Values& values() const { return m_values; }
    void setValues(Values values) { m_values = std::move(values); }
    void addValue(const T& value, const OdString& description = OdString()) { m_values.push_back({value, description}); }
    bool allowCustomValue() const { return m_allowCustomValue; }
    void setAllowCustomValue(bool allow) { m_allowCustomValue = allow; }
    // True when any value has a description.
    bool hasDescriptions() const;

    // {"type": "Enum", "values": [...], "allow_custom_value": ...}; a value with a description
    // is {"ref": value, "desc": description}, one without it the bare value.
    JsonValue toJson() const override;
    void fromJson(const JsonValue& json) override;
    TypeSpecifierPtr clone() const override { return std::make_shared<EnumTypeSpecifier>(*this); }

private:
    Values m_values;
    bool m_allowCustomValue = false;
};

// A value computed from a formula: {"type": "Formula", "values": "<formula>"}.
template <class T>
class FormulaTypeSpecifier : public TypeSpecifier<T> {
    static_assert(std::is_same<T, OdString>::value, "formulas are texts");

public:
    explicit FormulaTypeSpecifier(const OdString& formula = OdString()) : TypeSpecifier<T>(kStringCode), m_formula(formula) {}

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kFormula; }
    const OdString& formula() const { return m_formula; }
    void setFormula(const OdString& formula) { m_formula = formula; }
    JsonValue toJson() const override;
    void fromJson(const JsonValue& json) override;
    TypeSpecifierPtr clone() const override { return std::make_shared<FormulaTypeSpecifier>(*this); }

private:
    OdString m_formula;
};

// The value of the same property on the parent object: {"type": "ParentRef", "values":
// "<property>"}.
template <class T>
class ParentRefTypeSpecifier : public TypeSpecifier<T> {
    static_assert(std::is_same<T, OdString>::value, "parent references are texts");

public:
    explicit ParentRefTypeSpecifier(const OdString& reference = OdString())
        : TypeSpecifier<T>(kStringCode), m_reference(reference) {}

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kParentReference; }
    const OdString& reference() const { return m_reference; }
    void setReference(const OdString& reference) { m_reference = reference; }
    JsonValue toJson() const override;
    void fromJson(const JsonValue& json) override;
    TypeSpecifierPtr clone() const override { return std::make_shared<ParentRefTypeSpecifier>(*this); }

private:
    OdString m_reference;
};

// The value of a value definition of the same set, by its name:
// {"type": "ValueDefinition", "values": "<name>"}.
template <class T>
class ValueDefinitionTypeSpecifier : public TypeSpecifier<T> {
    static_assert(std::is_same<T, OdString>::value, "value-definition references are texts");

public:
    explicit ValueDefinitionTypeSpecifier(const OdString& valueDefinition = OdString())
        : TypeSpecifier<T>(kStringCode), m_valueDefinition(valueDefinition) {}

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kValueDefinitionReference; }
    const OdString& valueDefinition() const { return m_valueDefinition; }
    void setValueDefinition(const OdString& name) { m_valueDefinition = name; }
    JsonValue toJson() const override;
    void fromJson(const JsonValue& json) override;
    TypeSpecifierPtr clone() const override { return std::make_shared<ValueDefinitionTypeSpecifier>(*this); }

private:
    OdString m_valueDefinition;
};

// A kind the editors cannot change (bounded, list, table, reference and complex values),
// kept whole: the original text of its definition, as the file it came from gave it, with its
// primitive code and a value category other than a single value. {"type": "Extended",
// "values": "<text>"}.
class ExtendedTypeSpecifier : public TypeSpecifier<OdString> {
public:
    // Throws ValueError for the single-value category, which is no extended kind.
    ExtendedTypeSpecifier(int code, int valueCategory, const std::string& definitionText);

    SpecifierKind kind() const override { return vantlib::TypeSpecification::kExtended; }
    int valueCategory() const override { return m_valueCategory; }
    // UTF-8, verbatim.
    const std::string& definitionText() const { return m_text; }
    JsonValue toJson() const override;
    void fromJson(const JsonValue& json) override;
    TypeSpecifierPtr clone() const override { return std::make_shared<ExtendedTypeSpecifier>(*this); }

private:
    int m_valueCategory;
    std::string m_text;
};

// True when the editors offer the Type choice for the specifier: a single value of one of the
// four codes they know.
bool isEditableType(const AbstractTypeSpecifier& specifier);

// The specifier a stored type describes; ValueError for data that does not fit its kind.
TypeSpecifierPtr specifierFromStorage(const vantlib::TypeSpecification& stored);
// The stored form of a specifier.
vantlib::TypeSpecification storageOf(const AbstractTypeSpecifier& specifier);

extern template class EnumTypeSpecifier<long long>;
extern template class EnumTypeSpecifier<double>;
extern template class EnumTypeSpecifier<OdString>;
extern template class FormulaTypeSpecifier<OdString>;
extern template class ParentRefTypeSpecifier<OdString>;
extern template class ValueDefinitionTypeSpecifier<OdString>;

}  // namespace vl_db
