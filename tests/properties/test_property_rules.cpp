// The editor's rules without its window: search, first namespace, unique names, pane rows and
// which buttons act.
#include <gtest/gtest.h>

#include "PropertiesFixture.h"

#include "app/properties/PropertySetRules.h"

namespace vl_props_test {

using namespace vl_app;

TEST(PropertySetRules, SearchIsALowerCasedSubstring) {
    EXPECT_TRUE(matchesSearch("wall", "Wall thickness"));
    EXPECT_TRUE(matchesSearch("", "anything"));
    EXPECT_TRUE(matchesSearch("thick", "Wall THICKNESS"));
    EXPECT_FALSE(matchesSearch("wall*", "Wall thickness"));
    EXPECT_FALSE(matchesSearch("door", "Wall thickness"));
}

TEST(PropertySetRules, FirstNamespaceOfTheChoice) {
    // One entry without a matching name stays unselected; of several the second is taken.
    EXPECT_EQ(namespaceChoiceIndex({7}, {L"Only"}, 0, L"Missing"), -1);
    EXPECT_EQ(namespaceChoiceIndex({7, 8, 9}, {L"A", L"B", L"C"}, 0, OdString()), 1);
    // The name is compared exactly, the id wins over the name.
    EXPECT_EQ(namespaceChoiceIndex({7, 8, 9}, {L"A", L"B", L"C"}, 0, L"C"), 2);
    EXPECT_EQ(namespaceChoiceIndex({7, 8, 9}, {L"A", L"B", L"C"}, 0, L"c"), 1);
    EXPECT_EQ(namespaceChoiceIndex({7, 8, 9}, {L"A", L"B", L"C"}, 7, L"C"), 0);
    EXPECT_EQ(namespaceChoiceIndex({}, {}, 0, L"A"), -1);
}

TEST(PropertySetRules, PaneRowsFollowTheKindAndType) {
    TypeSpecifier<long long> boolean(vl_db::kBooleanCode);
    TypeSpecifier<double> real(vl_db::kRealCode);
    TypeSpecifier<OdString> text(vl_db::kStringCode);
    vl_db::ExtendedTypeSpecifier bounded(vl_db::kRealCode, vl_db::kBoundedValue, "<bounded/>");
    using Rows = std::vector<PaneRow>;
    EXPECT_EQ(paneRows(vl_db::kNamespaceObject, nullptr), (Rows{kRowId, kRowLabel}));
    EXPECT_EQ(paneRows(vl_db::kPropertySetObject, nullptr), (Rows{kRowId, kRowLabel, kRowPerInstance, kRowVisible}));
    EXPECT_EQ(paneRows(vl_db::kPropertyDefinitionObject, &boolean), (Rows{kRowId, kRowLabel, kRowDescription, kRowType}));
    EXPECT_EQ(paneRows(vl_db::kPropertyDefinitionObject, &real),
              (Rows{kRowId, kRowLabel, kRowDescription, kRowType, kRowEnum}));
    EXPECT_EQ(paneRows(vl_db::kPropertyDefinitionObject, &bounded), (Rows{kRowId, kRowLabel, kRowDescription, kRowType}));
    EXPECT_EQ(paneRows(vl_db::kValueDefinitionObject, &real),
              (Rows{kRowId, kRowLabel, kRowDescription, kRowType, kRowMeasure}));
    EXPECT_EQ(paneRows(vl_db::kValueDefinitionObject, &text),
              (Rows{kRowId, kRowLabel, kRowDescription, kRowType, kRowFormula}));
    EXPECT_FALSE(isRowEditable(kRowId, true));
    EXPECT_TRUE(isRowEditable(kRowVisible, false));
    EXPECT_FALSE(isRowEditable(kRowLabel, false));
    EXPECT_EQ(paneRowLabel(42), "Unrecognized property type (42)");
}

TEST(PropertySetRules, TypeChoiceAndEnumerations) {
    EXPECT_EQ(typeChoiceIndex(vl_db::kRealCode), 2);
    EXPECT_EQ(typeChoiceIndex(3), -1);
    EXPECT_FALSE(hasEnumValues(vl_db::EnumTypeSpecifier<double>()));
    EXPECT_TRUE(hasEnumValues(vl_db::EnumTypeSpecifier<OdString>(vl_db::kStringCode, {{L"a", OdString()}}, false)));
    EXPECT_FALSE(hasEnumValues(TypeSpecifier<OdString>(vl_db::kStringCode)));
    EXPECT_EQ(plainSpecifier(vl_db::kBooleanCode)->primitiveCode(), vl_db::kBooleanCode);
    EXPECT_EQ(plainSpecifier(vl_db::kRealCode)->kind(), vantlib::TypeSpecification::kPrimitive);
}

TEST(PropertySetRules, ButtonsFollowSelectionEditabilityAndDomain) {
    TreeSelection first;
    first.nothing = false;
    first.type = vl_db::kPropertyDefinitionObject;
    first.editable = true;
    first.index = 0;
    first.count = 3;
    ButtonStates states = buttonStates(first, true, false);
    EXPECT_FALSE(states.up);
    EXPECT_TRUE(states.down);
    EXPECT_TRUE(states.newValueDefinition);
    EXPECT_FALSE(buttonStates(first, true, true).newValueDefinition);

    TreeSelection last = first;
    last.index = 2;
    states = buttonStates(last, true, false);
    EXPECT_TRUE(states.up);
    EXPECT_FALSE(states.down);

    TreeSelection readOnly = first;
    readOnly.editable = false;
    readOnly.index = 1;
    states = buttonStates(readOnly, false, false);
    EXPECT_FALSE(states.newSet || states.newPropertyDefinition || states.up || states.down || states.remove);

    TreeSelection ns;
    ns.nothing = false;
    ns.editable = true;
    EXPECT_TRUE(buttonStates(ns, true, false).remove);
    EXPECT_FALSE(buttonStates(ns, true, true).remove);
    EXPECT_FALSE(buttonStates(ns, true, false).newPropertyDefinition);

    EXPECT_EQ(combinedCheckState({}), 0);
    EXPECT_EQ(combinedCheckState({true, true}), 1);
    EXPECT_EQ(combinedCheckState({false, true}), 2);
}

class PropertyNames : public PropertiesFixture {};

TEST_F(PropertyNames, UniquePerNamespaceWithoutLetterCase) {
    auto library = vl_db::propertySetLibrary(central);
    std::shared_ptr<vl_db::INamespace> office, other;
    for (const auto& ns : library->namespaces())
        (ns->name() == L"Office" ? office : other) = ns;
    ASSERT_TRUE(office && other);
    EXPECT_FALSE(isNameFree(vl_db::kPropertySetObject, *office, "pset_a"));
    EXPECT_FALSE(isNameFree(vl_db::kPropertySetObject, *office, ""));
    EXPECT_TRUE(isNameFree(vl_db::kPropertySetObject, *other, "pset_a"));
    // A definition's name is taken in every set of the namespace, per kind.
    EXPECT_FALSE(isNameFree(vl_db::kPropertyDefinitionObject, *office, "doornumber"));
    EXPECT_TRUE(isNameFree(vl_db::kValueDefinitionObject, *office, "doornumber"));
    EXPECT_FALSE(isNameFree(vl_db::kValueDefinitionObject, *office, "FINISHEDAREA"));
    // The object being renamed may change its own letter case.
    const auto set = office->propertySets().front();
    EXPECT_TRUE(isNameFree(vl_db::kPropertySetObject, *office, "PSET_A", set->id()));
    EXPECT_TRUE(isNameFree(vl_db::kNamespaceObject, *office, "Office"));
}

TEST_F(PropertyNames, TreeContentFiltersDefinitionsNotSets) {
    auto library = vl_db::propertySetLibrary(central);
    for (const auto& ns : library->namespaces()) {
        if (ns->name() != L"Office")
            continue;
        const auto content = namespaceTreeContent(*ns, "wall");
        ASSERT_EQ(content.size(), 2u);
        ASSERT_EQ(content[0].propertyDefinitions.size(), 1u);
        EXPECT_EQ(content[0].propertyDefinitions[0].label, "Wall thickness");
        EXPECT_TRUE(content[0].valueDefinitions.empty());
        EXPECT_TRUE(content[1].propertyDefinitions.empty());
        EXPECT_EQ(namespaceTreeContent(*ns, "")[0].propertyDefinitions.size(), 3u);
        // Definitions read from files often have no label: the tree shows and searches the name.
        auto unlabelled = ns->createPropertySet(L"Pset_Unlabelled");
        unlabelled->createPropertyDefinition(L"AcousticRating");
        const auto withNames = namespaceTreeContent(*ns, "acoustic");
        EXPECT_EQ(withNames.back().label, "Pset_Unlabelled");
        ASSERT_EQ(withNames.back().propertyDefinitions.size(), 1u);
        EXPECT_EQ(withNames.back().propertyDefinitions[0].label, "AcousticRating");
    }
}

}  // namespace vl_props_test
