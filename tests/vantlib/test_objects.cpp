// In-memory behaviour of objects that the editors rely on.
#include "support.h"

#include <OdError.h>

using namespace vltest;

TEST(Objects, VariablePlyFollowsItsPlyThroughEdits) {
    QcSmartPtr<Material> brick = Material::create(W("Brick"));
    QcSmartPtr<Material> wool = Material::create(W("Wool"));
    QcSmartPtr<Material> plaster = Material::create(W("Plaster"));
    QcSmartPtr<Composition> wall = Composition::create(W("Wall"));
    wall->append_ply(Ply(brick, 0.24, kFunctionStructure));
    wall->append_ply(Ply(wool, 0.1, kFunctionInsulation));
    wall->append_ply(Ply(plaster, 0.015, kFunctionFinish1));
    wall->set_variable_ply(1);

    wall->insert_ply(0, Ply(plaster, 0.01, kFunctionFinish2));
    EXPECT_EQ(2, wall->variable_ply());
    wall->move_ply(2, 0);
    EXPECT_EQ(0, wall->variable_ply());
    EXPECT_EQ(W("Wool"), wall->ply(0).material()->name());
    wall->move_ply(3, 0);
    EXPECT_EQ(1, wall->variable_ply());
    wall->remove_ply(0);
    EXPECT_EQ(0, wall->variable_ply());
    wall->remove_ply(0);
    EXPECT_FALSE(wall->has_variable_ply());
    EXPECT_NEAR(0.25, wall->thickness(), 1e-12);

    EXPECT_THROW(wall->ply(5), OdError_InvalidIndex);
    EXPECT_THROW(wall->set_variable_ply(7), OdError_InvalidIndex);
    EXPECT_THROW(wall->insert_ply(9, Ply()), OdError_InvalidIndex);
}

TEST(Objects, TagsAndCustomValuesMatchNamesIgnoringCase) {
    QcSmartPtr<Material> material = Material::create(W("Concrete"));
    EXPECT_TRUE(material->add_tag(W("Exterior")));
    EXPECT_FALSE(material->add_tag(W("EXTERIOR")));
    EXPECT_EQ(1u, material->tags().size());
    EXPECT_THROW(material->add_tag(OdString()), ConsistencyError);

    auto rating = CustomProperty::create(W("Fire rating"), kMaterial);
    material->set_custom_value(rating, W("REI 60"));
    material->set_custom_value(CustomProperty::create(W("fire RATING"), kMaterial), W("REI 90"));
    ASSERT_EQ(1u, material->custom_values().size());
    EXPECT_EQ(W("REI 90"), material->custom_value(rating));
    EXPECT_THROW(material->set_custom_value(CustomProperty::create(W("U value"), kComposition), W("0.2")),
                 ConsistencyError);
    EXPECT_TRUE(material->clear_custom_value(rating));
    EXPECT_FALSE(material->has_custom_value(rating));
    EXPECT_THROW(CustomProperty::create(W("Bad"), kLayer), ConsistencyError);
}

TEST(Objects, CloneIsUnstoredAndIndependent) {
    QcSmartPtr<Material> material = sampleMaterial(W("Brick"));
    material->information_asset(true)->set_unique_code(W("B-1"));
    QcSmartPtr<Material> copy = material->cloneObject();
    copy->set_name(W("Brick-2"));
    copy->information_asset()->clear_unique_code();
    copy->bim_asset()->set_thicknesses({0.3});
    EXPECT_EQ(0u, copy->id());
    EXPECT_EQ(W("Brick"), material->name());
    EXPECT_TRUE(material->information_asset()->has_unique_code());
    EXPECT_EQ(3u, material->bim_asset()->thicknesses().size());

    Ply ply = Ply::defaultPly(material);
    EXPECT_DOUBLE_EQ(0.115, ply.thickness());
    EXPECT_EQ(kFunctionStructure, ply.function());
    EXPECT_THROW(Ply::defaultPly(QcSmartPtr<Material>()), ConsistencyError);
}

TEST(Objects, StringCriteriaModes) {
    EXPECT_TRUE(StringCriteria().matches(W("anything")));
    EXPECT_TRUE(StringCriteria().equals(W("brick")).matches(W("BRICK")));
    EXPECT_FALSE(StringCriteria().equals(W("brick")).matches(W("bricks")));
    EXPECT_TRUE(StringCriteria(W("RIC"), StringCriteria::kContains).matches(W("Brick")));
    EXPECT_FALSE(StringCriteria(W("x"), StringCriteria::kContains).matches(W("Brick")));
}
