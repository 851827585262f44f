// Type specifiers: their JSON text key by key, reading it back, refusing JSON of the wrong
// shape with ValueError, and the stored form the library keeps.
#include <gtest/gtest.h>

#include <vl_db/TypeSpecifier.h>

using namespace vl_db;

namespace {

template <class Specifier>
Specifier readBack(const std::string& text) {
    Specifier specifier;
    specifier.fromJson(JsonValue::parse(text));
    return specifier;
}

}  // namespace

TEST(TypeSpecifierJson, EnumerationValuesAreBareUntilTheyHaveADescription) {
    EnumTypeSpecifier<long long> numbers;
    numbers.addValue(1);
    numbers.addValue(2);
    EXPECT_EQ(R"({"type":"Enum","values":[1,2],"allow_custom_value":false})", numbers.toJson().dump());
    numbers.setValues({{1, OdString()}, {2, OdString(L"two")}});
    EXPECT_EQ(R"({"type":"Enum","values":[1,{"ref":2,"desc":"two"}],"allow_custom_value":false})", numbers.toJson().dump());

    EnumTypeSpecifier<double> reals;
    reals.addValue(0.1);
    reals.addValue(1.0 / 3.0, L"third");
    reals.setAllowCustomValue(true);
    EXPECT_EQ(R"({"type":"Enum","values":[0.1,{"ref":0.3333333333333333,"desc":"third"}],"allow_custom_value":true})",
              reals.toJson().dump());

    EnumTypeSpecifier<OdString> texts;
    texts.addValue(L"NEW", L"Neu \u00fcberall");
    texts.addValue(L"EXISTING");
    EXPECT_EQ("{\"type\":\"Enum\",\"values\":[{\"ref\":\"NEW\",\"desc\":\"Neu \xc3\xbc" "berall\"},\"EXISTING\"],"
              "\"allow_custom_value\":false}",
              texts.toJson().dump());
    EXPECT_EQ(R"({"type":"Enum","values":[],"allow_custom_value":false})", EnumTypeSpecifier<OdString>().toJson().dump());
}

TEST(TypeSpecifierJson, EveryKindReadsBackWhatItWrote) {
    EnumTypeSpecifier<long long> numbers(kIntegerCode, {{-3, OdString()}, {9007199254740993LL, OdString(L"big")}}, true);
    auto numbersBack = readBack<EnumTypeSpecifier<long long>>(numbers.toJson().dump());
    EXPECT_EQ(numbers.values(), numbersBack.values());
    EXPECT_TRUE(numbersBack.allowCustomValue());

    EnumTypeSpecifier<OdString> texts(kStringCode, {{OdString(L"A"), OdString(L"first")}, {OdString(L"\u00c4"), OdString()}}, false);
    EXPECT_EQ(texts.values(), readBack<EnumTypeSpecifier<OdString>>(texts.toJson().dump()).values());

    // Values may come as objects without a description, and reals may be written as integers.
    auto reals = readBack<EnumTypeSpecifier<double>>(R"({"type":"Enum","values":[{"ref":2},1.5],"allow_custom_value":false})");
    ASSERT_EQ(2u, reals.values().size());
    EXPECT_EQ(2.0, reals.values()[0].value);
    EXPECT_FALSE(reals.hasDescriptions());

    FormulaTypeSpecifier<OdString> formula(L"Width * Height");
    EXPECT_EQ(R"({"type":"Formula","values":"Width * Height"})", formula.toJson().dump());
    EXPECT_EQ(formula.formula(), readBack<FormulaTypeSpecifier<OdString>>(formula.toJson().dump()).formula());
    ParentRefTypeSpecifier<OdString> parent(L"FireRating");
    EXPECT_EQ(R"({"type":"ParentRef","values":"FireRating"})", parent.toJson().dump());
    EXPECT_EQ(parent.reference(), readBack<ParentRefTypeSpecifier<OdString>>(parent.toJson().dump()).reference());
    ValueDefinitionTypeSpecifier<OdString> value(L"NetArea");
    EXPECT_EQ(value.valueDefinition(), readBack<ValueDefinitionTypeSpecifier<OdString>>(value.toJson().dump()).valueDefinition());
}

TEST(TypeSpecifierJson, JsonOfTheWrongShapeRaisesValueError) {
    const char* const wrongEnumerations[] = {
        R"({"values":[1],"allow_custom_value":false})",                 // no type
        R"({"type":"Enum","allow_custom_value":false})",                // no values
        R"({"type":"Enum","values":[1]})",                              // no flag
        R"({"type":"Enum","values":{"a":1},"allow_custom_value":false})",
        R"({"type":"Enum","values":[1.5],"allow_custom_value":false})", // a real in an integer list
        R"({"type":"Enum","values":["1"],"allow_custom_value":false})",
        R"({"type":"Enum","values":[{"desc":"no ref"}],"allow_custom_value":false})",
        R"({"type":"Enum","values":[{"ref":1,"desc":2}],"allow_custom_value":false})",
        R"({"type":"Enum","values":[1],"allow_custom_value":"yes"})",
        R"({"type":"Enum","values":[18446744073709551615],"allow_custom_value":false})",
        R"({"type":"Formula","values":[1],"allow_custom_value":false})",
        R"([1,2])",
        R"(null)",
    };
    for (const char* text : wrongEnumerations) {
        EnumTypeSpecifier<long long> specifier(kIntegerCode, {{7, OdString()}}, false);
        EXPECT_THROW(specifier.fromJson(JsonValue::parse(text)), ValueError) << text;
        ASSERT_EQ(1u, specifier.values().size()) << "a refused read leaves the specifier as it was: " << text;
    }
    EnumTypeSpecifier<OdString> texts;
    EXPECT_THROW(texts.fromJson(JsonValue::parse(R"({"type":"Enum","values":[1],"allow_custom_value":false})")), ValueError);
    EnumTypeSpecifier<double> reals;
    EXPECT_THROW(reals.fromJson(JsonValue::parse(R"({"type":"Enum","values":[true],"allow_custom_value":false})")), ValueError);

    FormulaTypeSpecifier<OdString> formula;
    EXPECT_THROW(formula.fromJson(JsonValue::parse(R"({"type":"Formula"})")), ValueError);
    EXPECT_THROW(formula.fromJson(JsonValue::parse(R"({"type":"Formula","values":3})")), ValueError);
    EXPECT_THROW(formula.fromJson(JsonValue::parse(R"({"type":"ParentRef","values":"x"})")), ValueError);
}

TEST(TypeSpecifierStorage, KindsCodesAndCategoriesSurviveTheStoredForm) {
    const EnumTypeSpecifier<double> reals(kRealCode, {{0.5, OdString(L"half")}}, false);
    const ExtendedTypeSpecifier bounded(kRealCode, kBoundedValue, "<TypePropertyBoundedValue><DataType type=\"IfcLengthMeasure\"/>");
    const TypeSpecifier<long long> boolean(kBooleanCode);
    const ParentRefTypeSpecifier<OdString> parent(L"Reference");

    for (const AbstractTypeSpecifier* specifier :
         std::initializer_list<const AbstractTypeSpecifier*>{&reals, &bounded, &boolean, &parent}) {
        TypeSpecifierPtr back = specifierFromStorage(storageOf(*specifier));
        EXPECT_EQ(specifier->kind(), back->kind());
        EXPECT_EQ(specifier->primitiveCode(), back->primitiveCode());
        EXPECT_EQ(specifier->valueCategory(), back->valueCategory());
        EXPECT_EQ(specifier->toJson(), back->toJson());
    }
    EXPECT_EQ(bounded.definitionText(), storageOf(bounded).data) << "the original text is kept verbatim";
    EXPECT_EQ(kBoundedValue, storageOf(bounded).valueCategory);
    EXPECT_TRUE(dynamic_cast<EnumTypeSpecifier<double>*>(specifierFromStorage(storageOf(reals)).get()));
    EXPECT_TRUE(dynamic_cast<TypeSpecifier<long long>*>(specifierFromStorage(storageOf(boolean)).get()));

    // The Type choice is offered for single values of the four codes only.
    EXPECT_TRUE(isEditableType(boolean));
    EXPECT_TRUE(isEditableType(reals));
    EXPECT_FALSE(isEditableType(bounded));
    EXPECT_FALSE(isEditableType(TypeSpecifier<OdString>(3)));
    EXPECT_THROW(ExtendedTypeSpecifier(kRealCode, kSingleValue, "x"), ValueError);

    vantlib::TypeSpecification damaged{vantlib::TypeSpecification::kEnumeration, kIntegerCode, kSingleValue, "{not json"};
    EXPECT_THROW(specifierFromStorage(damaged), ValueError);
}
