// Transactions: nesting, rollback, what the reactor sees.
#include "support.h"

using namespace vltest;

namespace {

class TransactionTest : public ::testing::Test {
protected:
    void SetUp() override { library = Library::create(dir.file("lib.vlib"), OdDb::kUnitsMillimeters); }
    // What another connection sees: only committed data.
    unsigned committedMaterials() { return Library::open(dir.file("lib.vlib"), true)->count<Material>(); }
    TempDir dir;
    std::shared_ptr<Library> library;
};

}  // namespace

TEST_F(TransactionTest, OnlyTheOutermostCommitWrites) {
    RecordingReactor reactor;
    {
        Transaction outer(library);
        {
            Transaction inner(library);
            library->save(Material::create(W("Brick")));
            inner.commit();
        }
        EXPECT_EQ(1u, library->count<Material>());
        EXPECT_EQ(0u, committedMaterials()) << "an inner commit alone writes nothing";
        EXPECT_EQ(1u, library->transactionDepth());
        outer.commit();
    }
    EXPECT_EQ(1u, committedMaterials());
    EXPECT_EQ(0u, library->transactionDepth());
    // outer, inner and the save's own level
    EXPECT_EQ(3, reactor.begins);
    EXPECT_EQ(3, reactor.ends);
    EXPECT_EQ(0, reactor.rolledBack);
}

TEST_F(TransactionTest, DestructorWithoutCommitRollsEverythingBack) {
    RecordingReactor reactor;
    library->save(Material::create(W("Kept")));
    {
        Transaction outer(library);
        {
            Transaction inner(library);
            library->save(sampleMaterial(W("Brick")));
            inner.commit();
        }
        library->save(Material::create(W("Stone")));
    }
    EXPECT_EQ(1u, library->count<Material>());
    EXPECT_EQ(0u, library->count<Tag>()) << "tags created on the way are undone too";
    EXPECT_EQ(0u, library->count<MaterialType>());
    EXPECT_EQ(1, reactor.rolledBack);
    // Name caches must not remember undone objects.
    auto again = library->save(sampleMaterial(W("Brick")));
    EXPECT_EQ(W("Masonry"), library->get<Material>(again->id())->material_type()->name());
}

TEST_F(TransactionTest, ExceptionInsideRollsBackAndKeepsEarlierWork) {
    library->save(Material::create(W("Brick")));
    try {
        Transaction transaction(library);
        library->save(Material::create(W("Stone")));
        library->save(Material::create(W("brick")));  // no reactor: clash throws
        transaction.commit();
        FAIL() << "the clash should have thrown";
    } catch (const ObjectNotUnique&) {
    }
    EXPECT_EQ(1u, library->count<Material>());
    EXPECT_FALSE(library->get<Material>(NameKey(W("Stone"))));

    // An inner rollback undoes only the inner work.
    Transaction outer(library);
    library->save(Material::create(W("Sand")));
    {
        Transaction inner(library);
        library->save(Material::create(W("Loam")));
        inner.rollback();
    }
    outer.commit();
    EXPECT_TRUE(library->get<Material>(NameKey(W("Sand"))));
    EXPECT_FALSE(library->get<Material>(NameKey(W("Loam"))));
}

TEST_F(TransactionTest, MisuseIsReported) {
    Transaction deferred(library, Transaction::kDeferred);
    EXPECT_FALSE(deferred.isActive());
    EXPECT_THROW(deferred.commit(), ConsistencyError);
    deferred.start();
    EXPECT_THROW(deferred.start(), ConsistencyError);
    {
        Transaction inner(library);
        EXPECT_THROW(deferred.commit(), ConsistencyError) << "an inner transaction is still open";
        inner.commit();
    }
    deferred.commit();
    EXPECT_THROW(Transaction(std::shared_ptr<Library>()), ConsistencyError);
}

TEST_F(TransactionTest, ReactorFailingAtBeginLeavesNoLevelOpen) {
    class Refusing : public RecordingReactor {
    public:
        void onTransactionBegin(const std::shared_ptr<const Library>&) override {
            if (refuse)
                throw Exception(OdString(L"refused"));
        }
        bool refuse = true;
    } reactor;
    EXPECT_THROW(library->save(Material::create(W("Brick"))), Exception);
    EXPECT_EQ(0u, library->transactionDepth());
    reactor.refuse = false;
    library->save(Material::create(W("Brick")));
    EXPECT_EQ(1u, committedMaterials());
}
