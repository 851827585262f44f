// Every stored kind through the same checks, by object type only, so that what runs is the
// kind's description: written and read back with its references, copied with what it refers
// to, refused removal while referred to, purged when nothing refers to it.
#include "support.h"

#include <map>
#include <sstream>

#include "Kinds.h"
#include "LibraryStore.h"

using namespace vltest;

namespace {

// What a test knows of one kind, written by hand (not taken from the description).
struct KindCase {
    ObjectType type;
    const char* label;
    // A new object of the kind referring to everything its kind can refer to; what it needs
    // that is not shared by name is stored in `library` first.
    QcSmartPtr<Object> (*make)(Library& library, const OdString& name);
    // The object's values and the names of what it refers to, for comparisons.
    std::string (*summary)(const Object& object);
    // Stores an object of another kind that refers to `target`; null when no kind refers to
    // objects of this one.
    ObjectKey (*referTo)(Library& library, const Object& target);
};

void PrintTo(const KindCase& kind, std::ostream* out) { *out << kind.label; }

std::string text(const OdString& value) { return value.toUtf8(); }

std::string nameOf(const Object* object) { return object ? text(object->name()) : std::string("-"); }

std::string annotations(const AnnotatedObject& object) {
    std::ostringstream out;
    out << " '" << text(object.description()) << "' tags";
    for (const auto& tag : object.tags())
        out << ' ' << text(tag->name());
    out << " values";
    for (const auto& value : object.custom_values())
        out << ' ' << text(value.property->name()) << '(' << value.property->object_type() << ")=" << text(value.value);
    return out.str();
}

std::string nameSummary(const Object& object) { return text(object.name()); }

std::string propertySummary(const Object& object) {
    return text(object.name()) + " for " + std::to_string(static_cast<const CustomProperty&>(object).object_type());
}

std::string materialSummary(const Object& object) {
    const Material& material = static_cast<const Material&>(object);
    std::ostringstream out;
    out << text(material.name()) << " class " << nameOf(material.material_type().get());
    if (const BimAsset* bim = material.bim_asset())
        out << " layers " << nameOf(bim->layer().get()) << '/' << nameOf(bim->layer_elevation().get());
    out << annotations(material);
    return out.str();
}

std::string compositionSummary(const Object& object) {
    const Composition& composition = static_cast<const Composition&>(object);
    std::ostringstream out;
    out << text(composition.name()) << " type " << nameOf(composition.composition_type().get()) << " layer "
        << nameOf(composition.layer().get()) << " plies";
    for (const Ply& ply : composition.plies())
        out << ' ' << materialSummary(*ply.material()) << ':' << ply.thickness() << ':' << ply.function();
    out << annotations(composition);
    return out.str();
}

template <class T>
QcSmartPtr<Object> named(Library&, const OdString& name) {
    return QcSmartPtr<Object>(T::create(name).get());
}

QcSmartPtr<Object> makeProperty(Library&, const OdString& name) {
    return QcSmartPtr<Object>(CustomProperty::create(name, kMaterial).get());
}

QcSmartPtr<Object> makeMaterial(Library&, const OdString& name) {
    QcSmartPtr<Material> material = sampleMaterial(name);
    material->bim_asset()->set_layer_elevation(Layer::create(W("A-ELEV")));
    return QcSmartPtr<Object>(material.get());
}

QcSmartPtr<Object> makeComposition(Library& library, const OdString& name) {
    QcSmartPtr<Material> ply = library.get<Material>(NameKey(name + L" ply"));
    if (!ply)
        ply = library.save(sampleMaterial(name + L" ply"));
    QcSmartPtr<Composition> composition = sampleComposition(name, {ply, ply});
    composition->set_layer(Layer::create(W("A-WALL")));
    composition->set_custom_value(CustomProperty::create(W("U value"), kComposition), W("0.24"));
    return QcSmartPtr<Object>(composition.get());
}

// Referrers: a material or composition using the target by name (or, for a material, as ply).
ObjectKey savedMaterial(Library& library, const QcSmartPtr<Material>& material) {
    return library.save(material)->key();
}

ObjectKey tagReferrer(Library& library, const Object& target) {
    QcSmartPtr<Material> material = Material::create(W("Uses tag"));
    material->add_tag(target.name());
    return savedMaterial(library, material);
}

ObjectKey layerReferrer(Library& library, const Object& target) {
    QcSmartPtr<Composition> composition = Composition::create(W("Uses layer"));
    composition->set_layer(Layer::create(target.name()));
    return library.save(composition)->key();
}

ObjectKey classReferrer(Library& library, const Object& target) {
    QcSmartPtr<Material> material = Material::create(W("Uses class"));
    material->set_type(MaterialType::create(target.name()));
    return savedMaterial(library, material);
}

ObjectKey compositionTypeReferrer(Library& library, const Object& target) {
    QcSmartPtr<Composition> composition = Composition::create(W("Uses type"));
    composition->set_type(CompositionType::create(target.name()));
    return library.save(composition)->key();
}

ObjectKey propertyReferrer(Library& library, const Object& target) {
    QcSmartPtr<Material> material = Material::create(W("Uses property"));
    material->set_custom_value(CustomProperty::create(target.name(), kMaterial), W("x"));
    return savedMaterial(library, material);
}

ObjectKey plyReferrer(Library& library, const Object& target) {
    QcSmartPtr<Material> material = library.get<Material>(target.id());
    return library.save(sampleComposition(W("Uses material"), {material}))->key();
}

// ---- Profiles: every shape stored through the same table.

QcSmartPtr<ProfileStandard> standard(const OdString& name) { return ProfileStandard::create(name); }

QcSmartPtr<Object> makeProfileName(Library&, const OdString& name) {
    return QcSmartPtr<Object>(ProfileName::create(standard(W("EN 10365")), name, kProfileStructuralSteel).get());
}

std::string profileNameSummary(const Object& object) {
    const ProfileName& name = static_cast<const ProfileName&>(object);
    return text(name.Object::name()) + " of " + nameOf(name.standard().get()) + " type " + std::to_string(name.type());
}

ObjectKey standardReferrer(Library& library, const Object& target) {
    return library.save(ProfileName::create(standard(target.name()), W("Uses standard"), kProfileGeneric))->key();
}

ObjectKey profileNameReferrer(Library& library, const Object& target) {
    QcSmartPtr<ProfileName> name = library.get<ProfileName>(target.id());
    QcSmartPtr<IShapeProfile> profile = IShapeProfile::create(name, W("Uses name"));
    profile->set_overall_depth(100);
    profile->set_overall_width(50);
    profile->set_web_thickness(4);
    profile->set_flange_thickness(6);
    return library.save(QcSmartPtr<Profile>(profile.get()))->key();
}

// A profile of the class with every dimension set (optional ones too), an offset, a material
// of the library and, for a custom profile, an outline with a hole.
QcSmartPtr<Object> makeProfile(Library& library, ObjectType type, const OdString& size) {
    const ProfileClass* shape = ProfileClass::byType(type == kConstructionProfile ? kIShapeProfile : type);
    QcSmartPtr<Profile> profile = shape->createEmpty();
    QcSmartPtr<ProfileStandard> en = library.get<ProfileStandard>(NameKey(W("EN 10365")));
    QcSmartPtr<ProfileName> he =
        en ? library.get<ProfileName>(ProfileNameKey(W("HE"), en->id(), kProfileStructuralSteel)) : QcSmartPtr<ProfileName>();
    profile->set_name(he ? he : library.save(ProfileName::create(standard(W("EN 10365")), W("HE"), kProfileStructuralSteel)));
    profile->set_size(size);
    profile->set_description(W("rolled, ") + size);
    profile->set_offset(Vector2d(-12.5, 0.25));
    QcSmartPtr<Material> steel = library.get<Material>(NameKey(W("S355")));
    profile->set_material(steel ? steel : library.save(Material::create(W("S355"))));
    // Dimensions that make a section of every shape (libraries refuse impossible ones).
    using S = ShapeParameter;
    const std::map<ShapeParameter, double> dimensions{
        {S::kOverallDepth, 200.5}, {S::kOverallWidth, 100.25}, {S::kTopFlangeWidth, 80.5}, {S::kWebThickness, 6.125},
        {S::kFlangeThickness, 10.5}, {S::kTopFlangeThickness, 8.25}, {S::kFilletRadius, 5.5},
        {S::kTopFlangeFilletRadius, 4.5}, {S::kCentreOfGravityInX, -3.25}, {S::kCentreOfGravityInY, 3.75},
        {S::kDepth, 120.5}, {S::kWidth, 60.25}, {S::kThickness, 8.5}, {S::kEdgeRadius, 4.25}, {S::kLegSlope, 0.0625},
        {S::kFlangeWidth, 60.5}, {S::kFlangeSlope, 0.0625}, {S::kGirth, 20.5}, {S::kWallThickness, 3.125},
        {S::kInternalFilletRadius, 3.5}, {S::kFlangeEdgeRadius, 4.5}, {S::kWebEdgeRadius, 1.5}, {S::kWebSlope, 0.03125},
        {S::kHeadDepth2, 40.5}, {S::kHeadDepth3, 20.5}, {S::kBaseDepth1, 10.5}, {S::kBaseDepth2, 30.5},
        {S::kBaseDepth3, 20.25}, {S::kOverallHeight, 150.5}, {S::kHeadWidth, 60.75}, {S::kBaseWidth2, 120.5},
        {S::kBaseWidth4, 40.5}, {S::kRadius, 40.25}, {S::kSemiAxis1, 40.5}, {S::kSemiAxis2, 20.5}, {S::kXDim, 80.5},
        {S::kYDim, 50.25}, {S::kBottomXDim, 60.5}, {S::kTopXDim, 30.25}, {S::kTopXOffset, -10.5},
        {S::kInnerFilletRadius, 2.5}, {S::kOuterFilletRadius, 5.25}, {S::kRoundingRadius, 5.125}};
    for (const ShapeParameterInfo& p : shape->parameters())
        profile->setParameter(p.id, dimensions.at(p.id));
    if (type == kCraneRailAShapeProfile || type == kCraneRailFShapeProfile)
        profile->setParameter(S::kRadius, 5.25);
    if (type == kCustomProfile) {
        ProfileGeometry outline;
        outline.outer = {ProfileEdge(Vector2d(0, 0)), ProfileEdge(Vector2d(100, 0), 0.4142135623730951),
                         ProfileEdge(Vector2d(100, 60)), ProfileEdge(Vector2d(0, 60))};
        outline.holes = {{ProfileEdge(Vector2d(40, 30), 1.0), ProfileEdge(Vector2d(60, 30), 1.0)}};
        static_cast<CustomProfile&>(*profile).set_geometry(outline);
    }
    return QcSmartPtr<Object>(profile.get());
}

template <ObjectType Type>
QcSmartPtr<Object> makeProfileOf(Library& library, const OdString& size) {
    return makeProfile(library, Type, size);
}

std::string profileSummary(const Object& object) {
    const Profile& profile = static_cast<const Profile&>(object);
    std::ostringstream out;
    out.precision(17);
    out << profile.isA().shortName() << ' ' << text(profile.displayName()) << " type "
        << (profile.name() ? int(profile.name()->type()) : -1) << " '" << text(profile.description()) << "' material "
        << nameOf(profile.material().get());
    if (profile.has_offset())
        out << " offset " << profile.offset().x << ',' << profile.offset().y;
    for (const ShapeParameterInfo& p : profile.isA().parameters())
        if (profile.hasParameter(p.id))
            out << ' ' << p.key << '=' << profile.parameter(p.id);
    if (profile.objectType() == kCustomProfile) {
        const ProfileGeometry& geometry = static_cast<const CustomProfile&>(profile).geometry();
        out << " outline";
        for (const auto* loop : {&geometry.outer}) {
            for (const ProfileEdge& edge : *loop)
                out << ' ' << edge.start.x << ',' << edge.start.y << ',' << edge.bulge;
        }
        for (const ProfileLoop& hole : geometry.holes) {
            out << " hole";
            for (const ProfileEdge& edge : hole)
                out << ' ' << edge.start.x << ',' << edge.start.y << ',' << edge.bulge;
        }
    }
    return out.str();
}

const std::vector<KindCase>& kindCases() {
    static const std::vector<KindCase> cases = {
        {kProfileStandard, "ProfileStandard", named<ProfileStandard>, nameSummary, standardReferrer},
        {kProfileName, "ProfileName", makeProfileName, profileNameSummary, profileNameReferrer},
        {kConstructionProfile, "AnyProfile", makeProfileOf<kConstructionProfile>, profileSummary, nullptr},
        {kAsymmetricIShapeProfile, "AsymmetricIShape", makeProfileOf<kAsymmetricIShapeProfile>, profileSummary, nullptr},
        {kIShapeProfile, "IShape", makeProfileOf<kIShapeProfile>, profileSummary, nullptr},
        {kLShapeProfile, "LShape", makeProfileOf<kLShapeProfile>, profileSummary, nullptr},
        {kUShapeProfile, "UShape", makeProfileOf<kUShapeProfile>, profileSummary, nullptr},
        {kCShapeProfile, "CShape", makeProfileOf<kCShapeProfile>, profileSummary, nullptr},
        {kZShapeProfile, "ZShape", makeProfileOf<kZShapeProfile>, profileSummary, nullptr},
        {kTShapeProfile, "TShape", makeProfileOf<kTShapeProfile>, profileSummary, nullptr},
        {kCraneRailAShapeProfile, "CraneRailAShape", makeProfileOf<kCraneRailAShapeProfile>, profileSummary, nullptr},
        {kCraneRailFShapeProfile, "CraneRailFShape", makeProfileOf<kCraneRailFShapeProfile>, profileSummary, nullptr},
        {kCircleProfile, "Circle", makeProfileOf<kCircleProfile>, profileSummary, nullptr},
        {kCircleHollowProfile, "CircleHollow", makeProfileOf<kCircleHollowProfile>, profileSummary, nullptr},
        {kEllipseProfile, "Ellipse", makeProfileOf<kEllipseProfile>, profileSummary, nullptr},
        {kRectangleProfile, "Rectangle", makeProfileOf<kRectangleProfile>, profileSummary, nullptr},
        {kRectangleHollowProfile, "RectangleHollow", makeProfileOf<kRectangleHollowProfile>, profileSummary, nullptr},
        {kRoundedRectangleProfile, "RoundedRectangle", makeProfileOf<kRoundedRectangleProfile>, profileSummary, nullptr},
        {kTrapeziumProfile, "Trapezium", makeProfileOf<kTrapeziumProfile>, profileSummary, nullptr},
        {kCustomProfile, "CustomShape", makeProfileOf<kCustomProfile>, profileSummary, nullptr},
        {kTag, "Tag", named<Tag>, nameSummary, tagReferrer},
        {kLayer, "Layer", named<Layer>, nameSummary, layerReferrer},
        {kMaterialType, "MaterialType", named<MaterialType>, nameSummary, classReferrer},
        {kMaterial, "Material", makeMaterial, materialSummary, plyReferrer},
        {kComposition, "Composition", makeComposition, compositionSummary, nullptr},
        {kCompositionType, "CompositionType", named<CompositionType>, nameSummary, compositionTypeReferrer},
        {kCustomProperty, "CustomProperty", makeProperty, propertySummary, propertyReferrer},
    };
    return cases;
}

class KindTest : public ::testing::TestWithParam<KindCase> {
protected:
    void SetUp() override {
        library = Library::create(dir.file("lib.vlib"), OdDb::kUnitsMillimeters);
        kind = GetParam();
    }
    LibraryStore& store() { return library->store(); }
    // Stores a new object of the kind through the untyped store and returns it as read back.
    QcSmartPtr<Object> stored(Library& into, const char* name) {
        QcSmartPtr<Object> object = kind.make(into, W(name));
        uint32_t id = into.store().saveObject(*object)->id();
        return into.store().loadById(kind.type, id);
    }

    TempDir dir;
    std::shared_ptr<Library> library;
    KindCase kind;
};

}  // namespace

TEST(Kinds, EveryStoredKindHasATestCaseAndOtherKindsAreRefused) {
    std::set<ObjectType> described, tested;
    for (const KindDescription* description : storedKinds())
        described.insert(description->type);
    for (const KindCase& c : kindCases())
        tested.insert(c.type);
    EXPECT_EQ(described, tested) << "a new kind needs its case in kindCases()";

    TempDir dir;
    auto library = Library::create(dir.file("lib.vlib"), OdDb::kUnitsMillimeters);
    EXPECT_THROW(library->store().loadById(kPlyRecord, 1), ConsistencyError);
    EXPECT_THROW(library->store().count(kLastProfileShape), ConsistencyError);
    EXPECT_FALSE(library->store().exists(kBimAssetRecord, 1));
}

TEST_P(KindTest, WrittenObjectReadsBackWithWhatItRefersTo) {
    QcSmartPtr<Object> written = kind.make(*library, W("First"));
    QcSmartPtr<Object> saved = store().saveObject(*written);
    ASSERT_TRUE(saved);
    ASSERT_NE(0u, saved->id());
    uint32_t second = store().saveObject(*kind.make(*library, W("Second")))->id();

    QcSmartPtr<Object> byId = store().loadById(kind.type, saved->id());
    ASSERT_TRUE(byId);
    EXPECT_EQ(kind.summary(*written), kind.summary(*byId));
    EXPECT_EQ(library, byId->library());
    QcSmartPtr<Object> byName = store().loadByName(kind.type, W("FIRST"));
    ASSERT_TRUE(byName);
    EXPECT_EQ(saved->id(), byName->id());
    EXPECT_EQ(2u, store().loadNamed(kind.type, StringCriteria()).size());
    EXPECT_EQ(1u, store().loadNamed(kind.type, StringCriteria().contains(W("econ"))).size());
    EXPECT_EQ(2u, store().loadByIds(kind.type, {saved->id(), second, 4242}).size());

    // A changed object overwrites its row and its references.
    byId->set_name(W("Renamed"));
    if (auto* annotated = dynamic_cast<AnnotatedObject*>(byId.get())) {
        annotated->clear_tags();
        annotated->add_tag(W("Changed"));
    }
    store().saveObject(*byId);
    QcSmartPtr<Object> again = store().loadById(kind.type, saved->id());
    ASSERT_TRUE(again);
    EXPECT_EQ(kind.summary(*byId), kind.summary(*again));
    EXPECT_FALSE(store().loadByName(kind.type, W("First")));
}

TEST_P(KindTest, CopyBringsWhatTheObjectRefersTo) {
    auto target = Library::create(dir.file("target.vlib"), OdDb::kUnitsMillimeters);
    QcSmartPtr<Object> original = stored(*library, "Original");
    ASSERT_TRUE(original);

    IdMapping mapping(target);
    target->copy(library, {original->key()}, mapping);
    auto entry = mapping.find(original->key());
    ASSERT_NE(mapping.end(), entry);
    EXPECT_EQ(IdMapping::kCopied, entry->second.state);
    QcSmartPtr<Object> copied = target->store().loadById(kind.type, entry->second.id);
    ASSERT_TRUE(copied);
    EXPECT_EQ(kind.summary(*original), kind.summary(*copied));
    EXPECT_EQ(target, copied->library());

    // A second copy finds the name taken: shared kinds are reused, others (no reactor) kept.
    IdMapping second(target);
    target->copy(library, {original->key()}, second);
    IdMapping::State expected = describeKind(kind.type).nameOnly ? IdMapping::kReused : IdMapping::kNotCopied;
    EXPECT_EQ(expected, second.find(original->key())->second.state);
    EXPECT_EQ(entry->second.id, second.find(original->key())->second.id);
    EXPECT_EQ(store().count(kind.type), target->store().count(kind.type));
}

TEST_P(KindTest, RemovalIsRefusedWhileSomethingRefersToTheObject) {
    // Inside one transaction, so that names resolved on the way are cached.
    Transaction transaction(library);
    QcSmartPtr<Object> object = stored(*library, "Used");
    ASSERT_TRUE(object);
    if (kind.referTo) {
        ObjectKey referrer = kind.referTo(*library, *object);
        EXPECT_TRUE(store().isReferenced(kind.type, object->id()));
        EXPECT_EQ(Library::kReferenced, store().removeObject(kind.type, object->id()));
        EXPECT_TRUE(store().loadById(kind.type, object->id()));
        EXPECT_EQ(Library::kRemoved, store().removeObject(referrer.type, referrer.id));
    }
    EXPECT_FALSE(store().isReferenced(kind.type, object->id()));
    EXPECT_EQ(Library::kRemoved, store().removeObject(kind.type, object->id()));
    EXPECT_FALSE(store().loadById(kind.type, object->id()));
    EXPECT_EQ(Library::kNotFound, store().removeObject(kind.type, object->id()));
    if (kind.referTo && describeKind(kind.type).nameOnly) {
        // The removed object's name must not resolve to its old id any more.
        kind.referTo(*library, *object);
        QcSmartPtr<Object> recreated = store().loadByName(kind.type, W("Used"));
        ASSERT_TRUE(recreated);
        EXPECT_TRUE(store().isReferenced(kind.type, recreated->id()));
    }
    transaction.commit();
}

TEST_P(KindTest, PurgeRemovesOnlyWhatNothingRefersTo) {
    QcSmartPtr<Object> unused = stored(*library, "Unused");
    QcSmartPtr<Object> used = stored(*library, "Used");
    if (!describeKind(kind.type).purgeable) {
        EXPECT_THROW(store().purge(kind.type), ConsistencyError);
        return;
    }
    ASSERT_TRUE(kind.referTo);
    kind.referTo(*library, *used);
    unsigned before = store().count(kind.type);
    EXPECT_EQ(1u, store().purge(kind.type));
    EXPECT_FALSE(store().loadById(kind.type, unused->id()));
    EXPECT_TRUE(store().loadById(kind.type, used->id()));
    EXPECT_EQ(before - 1, store().count(kind.type));
    EXPECT_EQ(0u, store().purge(kind.type));
}

INSTANTIATE_TEST_SUITE_P(StoredKinds, KindTest, ::testing::ValuesIn(kindCases()),
                         [](const ::testing::TestParamInfo<KindCase>& info) { return std::string(info.param.label); });
