// Name clashes in save and copy, and what a copy brings along.
#include "support.h"

using namespace vltest;

namespace {

class ClashTest : public ::testing::Test {
protected:
    void SetUp() override {
        target = Library::create(dir.file("target.vlib"), OdDb::kUnitsMillimeters);
        source = Library::create(dir.file("source.vlib"), OdDb::kUnitsMillimeters);
        existing = target->save(sampleMaterial(W("Brick")));
    }
    QcSmartPtr<Material> incomingBrick() {
        auto brick = sampleMaterial(W("BRICK"));
        brick->set_description(W("incoming"));
        return brick;
    }
    TempDir dir;
    std::shared_ptr<Library> target, source;
    QcSmartPtr<Material> existing;
};

}  // namespace

TEST_F(ClashTest, SaveWithoutReactorThrows) {
    EXPECT_THROW(target->save(incomingBrick()), ObjectNotUnique);
    EXPECT_EQ(1u, target->count<Material>());
}

TEST_F(ClashTest, SaveSkipKeepsTheExistingObject) {
    RecordingReactor reactor;
    reactor.answer = kSaveSkip;
    auto result = target->save(incomingBrick());
    ASSERT_EQ(1u, reactor.clashes.size());
    EXPECT_EQ(W("BRICK"), reactor.clashes[0]);
    EXPECT_EQ(kMaterial, reactor.clashTypes[0]);
    EXPECT_EQ(existing->id(), result->id());
    EXPECT_EQ(W("Brick description"), target->get<Material>(existing->id())->description());
    EXPECT_EQ(1u, target->count<Material>());
}

TEST_F(ClashTest, SaveOverwriteReplacesContentAndKeepsId) {
    RecordingReactor reactor;
    reactor.answer = kSaveOverwrite;
    auto result = target->save(incomingBrick());
    EXPECT_EQ(existing->id(), result->id());
    auto stored = target->get<Material>(existing->id());
    EXPECT_EQ(W("incoming"), stored->description());
    EXPECT_EQ(W("BRICK"), stored->name());
    EXPECT_EQ(1u, target->count<Material>());
    EXPECT_EQ(1, reactor.modified);
}

TEST_F(ClashTest, SaveRenameUsesTheNameTheReactorSet) {
    RecordingReactor reactor;
    reactor.answer = kSaveRename;
    reactor.proposedName = W("brick");  // taken: tryName refuses it
    auto incoming = incomingBrick();
    auto first = target->save(incoming);
    EXPECT_EQ(W("BRICK_2"), first->name()) << "the default rename picks the first free suffix";
    EXPECT_EQ(W("BRICK"), incoming->name()) << "the caller's object keeps its name";

    reactor.proposedName = W("Brick (imported)");
    auto second = target->save(incomingBrick());
    EXPECT_EQ(W("Brick (imported)"), second->name());
    EXPECT_EQ(3u, target->count<Material>());
}

TEST_F(ClashTest, RenameThatFindsNoNameFails) {
    class StubbornReactor : public RecordingReactor {
    public:
        void onObjectNotUniqueRename(ObjectInfo&) override {}
        void onObjectNotUniqueFail(ObjectInfo&) override { ++failures; }
        int failures = 0;
    } reactor;
    reactor.answer = kSaveRename;
    EXPECT_THROW(target->save(incomingBrick()), ObjectNotUnique);
    EXPECT_EQ(1, reactor.failures);
    EXPECT_EQ(1u, target->count<Material>());
}

TEST_F(ClashTest, RenamingAStoredObjectOntoAnotherAsks) {
    RecordingReactor reactor;
    auto stone = target->save(Material::create(W("Stone")));
    stone->set_name(W("brick"));
    reactor.answer = kSaveSkip;
    stone->save();
    EXPECT_EQ(W("Stone"), target->get<Material>(stone->id())->name());
    stone->set_name(W("Stone"));
    stone->set_description(W("granite"));
    stone->save();  // its own name is no clash
    EXPECT_EQ(1u, reactor.clashes.size());
    EXPECT_EQ(W("granite"), target->get<Material>(stone->id())->description());
}

TEST_F(ClashTest, CopyBringsDependenciesOnceAndMapsIds) {
    RecordingReactor reactor;
    auto concrete = source->save(sampleMaterial(W("Concrete"), W("Masonry")));
    auto wool = Material::create(W("Wool"));
    wool->set_type(MaterialType::create(W("Insulation")));
    wool->add_tag(W("Thermal"));
    wool = source->save(wool);
    auto wall = source->save(sampleComposition(W("Wall"), {concrete, wool, concrete}));
    auto slab = source->save(sampleComposition(W("Slab"), {concrete}));
    // Read back so that references carry their source ids.
    concrete = source->get<Material>(concrete->id());
    wool = source->get<Material>(wool->id());

    IdMapping mapping(target);
    target->copy(source, {wall->key(), slab->key(), concrete->key()}, mapping, Library::kSingleTransaction);

    EXPECT_TRUE(reactor.clashes.empty());
    EXPECT_EQ(3u, target->count<Material>());  // Brick, Concrete, Wool
    EXPECT_EQ(2u, target->count<Composition>());
    EXPECT_EQ(2u, target->count<MaterialType>()) << "Masonry reused, Insulation brought";
    EXPECT_EQ(3, reactor.primaryCopies);

    auto stateOf = [&](const ObjectKey& key) { return mapping.find(key)->second.state; };
    ASSERT_TRUE(mapping.contains(concrete->key()));
    EXPECT_EQ(IdMapping::kCopied, stateOf(concrete->key()));
    EXPECT_EQ(IdMapping::kReused, stateOf(concrete->material_type()->key()));
    EXPECT_EQ(IdMapping::kCopied, stateOf(wool->material_type()->key()));
    EXPECT_EQ(IdMapping::kReused, stateOf(concrete->tags()[0]->key()));
    EXPECT_EQ(IdMapping::kCopied, stateOf(wool->tags()[0]->key()));

    uint32_t wallId = mapping.find(wall->key())->second.id;
    auto copied = target->get<Composition>(wallId);
    ASSERT_TRUE(copied);
    ASSERT_EQ(3u, copied->numPlies());
    EXPECT_EQ(mapping.find(concrete->key())->second.id, copied->ply(0).material()->id());
    EXPECT_EQ(mapping.find(wool->key())->second.id, copied->ply(1).material()->id());
    EXPECT_EQ(W("Insulation"), copied->ply(1).material()->material_type()->name());
    EXPECT_EQ(W("Exterior wall"), copied->composition_type()->name());
    EXPECT_EQ(mapping.copiedCount(), unsigned(mapping.size()));

    // The source is never changed.
    EXPECT_EQ(2u, source->count<Material>());
    EXPECT_EQ(W("Concrete"), source->get<Material>(concrete->id())->name());
}

TEST_F(ClashTest, CopyClashAnswers) {
    auto brick = source->save(incomingBrick());
    auto stone = source->save(Material::create(W("Stone")));
    std::set<unsigned> both{brick->id(), stone->id()};

    // No reactor: clashing objects are skipped.
    IdMapping silent = target->copy<Material>(source, both);
    EXPECT_EQ(IdMapping::kNotCopied, silent.find(brick->key())->second.state);
    EXPECT_EQ(existing->id(), silent.find(brick->key())->second.id);
    EXPECT_EQ(IdMapping::kCopied, silent.find(stone->key())->second.state);

    RecordingReactor reactor;
    reactor.answer = kSaveSkip;
    IdMapping skipped = target->copy<Material>(source, both);
    EXPECT_EQ(2u, reactor.clashes.size()) << "Stone now clashes too";
    EXPECT_EQ(0u, skipped.copiedCount()) << "a skipped object brings nothing along";
    EXPECT_EQ(2u, target->count<Material>());

    reactor.answer = kSaveOverwrite;
    IdMapping overwritten = target->copy<Material>(source, {brick->id()});
    EXPECT_EQ(IdMapping::kOverwritten, overwritten.find(brick->key())->second.state);
    EXPECT_EQ(existing->id(), overwritten.find(brick->key())->second.id);
    EXPECT_EQ(W("incoming"), target->get<Material>(existing->id())->description());

    reactor.answer = kSaveRename;
    IdMapping renamed = target->copy<Material>(source, {brick->id()});
    const auto& value = renamed.find(brick->key())->second;
    EXPECT_EQ(IdMapping::kRenamed, value.state);
    EXPECT_EQ(W("BRICK_2"), target->get<Material>(value.id)->name());
    EXPECT_EQ(3u, target->count<Material>());
    EXPECT_EQ(W("BRICK"), source->get<Material>(brick->id())->name());
}

TEST_F(ClashTest, CopiedCompositionUsesTheKeptMaterialWhenItsMaterialIsSkipped) {
    RecordingReactor reactor;
    reactor.answer = kSaveSkip;
    auto brick = source->save(incomingBrick());
    auto wall = source->save(sampleComposition(W("Wall"), {brick}));
    IdMapping mapping = target->copy<Composition>(source, {wall->id()});
    EXPECT_EQ(IdMapping::kNotCopied, mapping.find(brick->key())->second.state);
    EXPECT_EQ(IdMapping::kCopied, mapping.find(wall->key())->second.state);
    auto copied = target->get<Composition>(mapping.find(wall->key())->second.id);
    EXPECT_EQ(existing->id(), copied->ply(0).material()->id());

    // All skipped: nothing counts as copied, so a drop reports no copy.
    auto slab = source->save(sampleComposition(W("Slab"), {brick}));
    target->save(Composition::create(W("Slab")));
    IdMapping none = target->copy<Composition>(source, {slab->id()});
    EXPECT_EQ(0u, none.copiedCount());
}

TEST_F(ClashTest, CopyOfMissingObjectsCopiesNothing) {
    IdMapping mapping(target);
    target->copy(source, {ObjectKey(kMaterial, 77)}, mapping);
    EXPECT_EQ(0u, mapping.copiedCount());
    EXPECT_EQ(1u, mapping.size());
    EXPECT_THROW(target->copy(nullptr, {ObjectKey(kMaterial, 1)}, mapping), ConsistencyError);
}

TEST_F(ClashTest, FailedCopyKeepsOnlyWhatItsTransactionTypePromises) {
    class FailingRename : public RecordingReactor {
    public:
        void onObjectNotUniqueRename(ObjectInfo&) override {}
    } reactor;
    reactor.answer = kSaveRename;
    auto alpha = source->save(Material::create(W("Alpha")));
    auto brick = source->save(incomingBrick());  // clashes and cannot be renamed

    IdMapping whole(target);
    EXPECT_THROW(target->copy(source, {alpha->key(), brick->key()}, whole, Library::kSingleTransaction), ObjectNotUnique);
    EXPECT_FALSE(target->get<Material>(NameKey(W("Alpha"))));
    EXPECT_TRUE(whole.empty());

    IdMapping each(target);
    EXPECT_THROW(target->copy(source, {alpha->key(), brick->key()}, each, Library::kPerObject), ObjectNotUnique);
    EXPECT_TRUE(target->get<Material>(NameKey(W("Alpha"))));
    EXPECT_TRUE(each.contains(alpha->key()));
    EXPECT_FALSE(each.contains(brick->key()));
    EXPECT_EQ(0u, target->transactionDepth());
}
