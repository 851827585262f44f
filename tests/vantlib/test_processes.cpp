// Several processes on one library file, and a process killed in the middle of a write.
#include "support.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vltest;

namespace {

// Runs `work` in a child process; its exit status is 0 when it returned normally.
pid_t spawn(const std::function<void()>& work) {
    pid_t pid = fork();
    if (pid == 0) {
        int status = 0;
        try {
            work();
        } catch (const std::exception& e) {
            fprintf(stderr, "child failed: %s\n", e.what());
            status = 1;
        }
        _exit(status);
    }
    return pid;
}

int waitFor(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

TEST(Processes, TwoWritersLoseNoUpdate) {
    TempDir dir;
    OdString path = dir.file("central.vlib");
    {
        auto library = Library::create(path, OdDb::kUnitsMillimeters);
        auto counter = Material::create(W("Counter"));
        counter->set_description(W("0"));
        library->save(counter);
    }
    const int rounds = 150;
    auto writer = [&](int which) {
        auto library = Library::open(path);
        for (int i = 0; i < rounds; ++i) {
            Transaction transaction(library);
            // Read and write inside one transaction: the other process waits meanwhile.
            auto counter = library->get<Material>(NameKey(W("Counter")));
            int value = std::stoi(counter->description().toUtf8());
            counter->set_description(OdString::formatted(L"%d", value + 1));
            counter->save();
            library->save(Material::create(OdString::formatted(L"Writer %d item %d", which, i)));
            transaction.commit();
        }
    };
    pid_t a = spawn([&] { writer(1); });
    pid_t b = spawn([&] { writer(2); });
    EXPECT_EQ(0, waitFor(a));
    EXPECT_EQ(0, waitFor(b));

    auto library = Library::open(path, true);
    EXPECT_EQ(W("300"), library->get<Material>(NameKey(W("Counter")))->description());
    EXPECT_EQ(unsigned(2 * rounds + 1), library->count<Material>());
}

TEST(Processes, OpenLibraryThatWasReadLeavesOtherWritersFree) {
    // With the rollback journal a reader's lock keeps writers of other processes from
    // committing, so reads must not keep one after they return.
    TempDir dir;
    OdString path = dir.file("central.vlib");
    auto library = Library::create(path, OdDb::kUnitsMillimeters);
    auto brick = library->save(sampleMaterial(W("Brick")));
    library->save(sampleComposition(W("Wall"), {brick}));
    std::vector<QcSmartPtr<Material>> materials;
    library->get(materials, MaterialCriteria());
    std::vector<QcSmartPtr<Composition>> compositions;
    library->get(compositions, CompositionCriteria());
    library->get<Material>(NameKey(W("Brick")));
    library->get<Composition>(brick->id());
    library->count<Tag>();
    library->isNameUsed(kMaterial, W("Brick"));

    pid_t writer = spawn([&] {
        // A lock left behind makes this fail once the busy timeout has passed.
        auto other = Library::open(path);
        other->save(Material::create(W("From another process")));
    });
    EXPECT_EQ(0, waitFor(writer));
    EXPECT_FALSE(library->get<Material>(NameKey(W("From another process"))).isNull());
}

TEST(Processes, KilledDuringLargeCopyLeavesTargetAsBefore) {
    TempDir dir;
    OdString sourcePath = dir.file("source.vlib"), targetPath = dir.file("target.vlib");
    std::set<unsigned> ids;
    {
        auto source = Library::create(sourcePath, OdDb::kUnitsMillimeters);
        Transaction transaction(source);
        for (int i = 0; i < 6000; ++i) {
            auto material = sampleMaterial(OdString::formatted(L"Material %d", i), OdString::formatted(L"Class %d", i % 40));
            material->add_tag(OdString::formatted(L"Batch %d", i % 25));
            ids.insert(source->save(material)->id());
        }
        transaction.commit();
        auto target = Library::create(targetPath, OdDb::kUnitsMillimeters);
        target->save(sampleMaterial(W("Material 5")));
        target->save(sampleMaterial(W("Existing")));
    }
    std::string before = dumpLibrary(targetPath);

    int progress[2];
    ASSERT_EQ(0, pipe(progress));
    pid_t child = spawn([&] {
        close(progress[0]);
        // Tells the parent once the copy is well under way, then keeps the transaction open.
        class Signaller : public Library::Reactor {
        public:
            explicit Signaller(int fd) : m_fd(fd) {}
            void onSaved(const std::shared_ptr<const Library>&, const ObjectKey& key) override {
                if (key.type == kMaterial && ++m_saved == 3000) {
                    char byte = 1;
                    if (write(m_fd, &byte, 1) == 1)
                        sleep(60);
                }
            }

        private:
            int m_fd;
            int m_saved = 0;
        } signaller(progress[1]);
        LibraryManager::instance()->setReactor(&signaller);
        auto source = Library::open(sourcePath, true);
        auto target = Library::open(targetPath);
        target->copy<Material>(source, ids);
    });
    close(progress[1]);
    char byte = 0;
    ASSERT_EQ(1, read(progress[0], &byte, 1)) << "the child never reached the middle of the copy";
    close(progress[0]);
    kill(child, SIGKILL);
    EXPECT_EQ(128 + SIGKILL, waitFor(child));

    EXPECT_EQ(before, dumpLibrary(targetPath));
    EXPECT_TRUE(checkIntegrity(targetPath).empty());
    auto target = Library::open(targetPath);
    EXPECT_EQ(2u, target->count<Material>());
    target->save(Material::create(W("After the crash")));
    EXPECT_EQ(3u, target->count<Material>());
}
