// Library: opening and creating library files, and the typed operations forwarded to the
// store.
#include <vantlib/Library.h>

#include <random>
#include <type_traits>

#include <SQLiteCpp/Transaction.h>

#include <vantlib/Composition.h>
#include <vantlib/LibraryManager.h>
#include <vantlib/Reactor.h>

#include "LibraryFile.h"
#include "LibraryStore.h"
#include "Schema.h"
#include "Text.h"

namespace vantlib {

namespace {

OdString newGuid() {
    std::random_device device;
    std::mt19937_64 generator((uint64_t(device()) << 32) ^ device());
    uint64_t high = generator(), low = generator();
    // Version 4 (random) layout.
    high = (high & 0xFFFFFFFFFFFF0FFFull) | 0x0000000000004000ull;
    low = (low & 0x3FFFFFFFFFFFFFFFull) | 0x8000000000000000ull;
    return OdString::formatted(L"%08llX-%04llX-%04llX-%04llX-%012llX", (unsigned long long)(high >> 32),
                               (unsigned long long)((high >> 16) & 0xFFFF), (unsigned long long)(high & 0xFFFF),
                               (unsigned long long)(low >> 48), (unsigned long long)(low & 0xFFFFFFFFFFFFull));
}

template <class T>
QcSmartPtr<T> downcast(const QcSmartPtr<Object>& object) {
    return QcSmartPtr<T>(static_cast<T*>(object.get()));
}

template <class T>
void downcastAll(std::vector<QcSmartPtr<T>>& out, const std::vector<QcSmartPtr<Object>>& objects) {
    out.clear();
    out.reserve(objects.size());
    for (const auto& object : objects)
        out.push_back(downcast<T>(object));
}

}  // namespace

Library::Library(std::unique_ptr<LibraryStore> store) : m_store(std::move(store)) {}

Library::~Library() {
    OdString filename = m_store->path(), guid = m_store->guid();
    try {
        while (m_store->depth() > 0)
            m_store->rollback();
    } catch (...) {
        // Closing the connection below discards whatever was not committed anyway.
    }
    m_store.reset();
    if (Reactor* r = LibraryManager::instance()->reactor())
        r->onClosed(filename, guid);
}

std::shared_ptr<Library> Library::create(const OdString& path, OdDb::UnitsValue unit) {
    try {
        checkFileHeader(path, true);
    } catch (const FileMissing&) {
        // A new file is what create() is for.
    }
    requireFolder(path);
    if (containsLibrary(path))
        throw AlreadyExists(path);
    if (!canWrite(path))
        throw ReadOnly(path);
    try {
        auto db = connect(path, FileAccess::kReadWrite, true);
        {
            SQLite::Transaction transaction(*db, SQLite::TransactionBehavior::IMMEDIATE);
            if (hasLibraryTables(db->getHandle()))
                throw AlreadyExists(path);
            if (vantlib::schemaVersion(db->getHandle()) != 0)
                throw NotALibrary(path, OdString(L"the file's schema version slot is used by another format"));
            createSchema(db->getHandle(), newGuid(), unit);
            transaction.commit();
        }
        auto store = std::make_unique<LibraryStore>(std::move(db), path, false, kSchemaVersion);
        store->loadMeta();
        return Library::attachStore(std::move(store));
    } catch (const SQLite::Exception& e) {
        throwOpenError(path, e.getExtendedErrorCode(), e.what());
    } catch (const StorageError& e) {
        throwOpenError(path, e.sqliteCode(), e.what());
    }
}

std::shared_ptr<Library> Library::open(const OdString& path, bool readOnly) {
    bool writable = !readOnly && canWrite(path);
    OpenedFile file = openLibraryFile(path, writable ? FileAccess::kReadWrite : FileAccess::kReadOnly);
    try {
        // Read before anything is written: a file that fails here stays as it is.
        // A writable open brings an older schema up to date below.
        auto store = std::make_unique<LibraryStore>(std::move(file.db), path, !writable,
                                                    writable ? kSchemaVersion : file.schemaVersion);
        store->loadMeta();
        if (writable) {
            SQLite::Database& db = store->database();
            useRollbackJournal(db, path);
            if (file.schemaVersion < kSchemaVersion) {
                SQLite::Transaction transaction(db, SQLite::TransactionBehavior::IMMEDIATE);
                migrateSchema(db.getHandle(), file.schemaVersion);
                transaction.commit();
            }
        }
        return Library::attachStore(std::move(store));
    } catch (const SQLite::Exception& e) {
        throwOpenError(path, e.getExtendedErrorCode(), e.what());
    } catch (const StorageError& e) {
        throwOpenError(path, e.sqliteCode(), e.what());
    }
}

std::shared_ptr<Library> Library::attachStore(std::unique_ptr<LibraryStore> store) {
    std::shared_ptr<Library> library(new Library(std::move(store)));
    library->m_store->attach(library);
    return library;
}

bool Library::containsLibrary(const OdString& path) {
    try {
        openLibraryFile(path, FileAccess::kReadOnly);
        return true;
    } catch (const NewerSchema&) {
        return true;
    } catch (const NeedsRecovery&) {
        // Only libraries are opened for writing by this module, so the unfinished write
        // was one of a library.
        return true;
    } catch (const Exception&) {
        return false;
    }
}

bool Library::isReadOnly() const { return m_store->isReadOnly(); }
int Library::schemaVersion() const { return m_store->schemaVersion(); }
const OdString& Library::filename() const { return m_store->path(); }
const OdString& Library::guid() const { return m_store->guid(); }
OdDb::UnitsValue Library::unit() const { return m_store->unit(); }
const OdString& Library::description() const { return m_store->description(); }
void Library::set_description(const OdString& text) { m_store->setDescription(text); }
unsigned Library::transactionDepth() const { return m_store->depth(); }

bool Library::isImperial() const {
    return oddbIsImperialUnit(unit());
}

bool Library::isNameUsed(ObjectType type, const OdString& name, uint32_t exceptId) const {
    return m_store->findId(type, name, exceptId) != 0;
}

bool Library::isNameUsed(const Object& object, const OdString& name, uint32_t exceptId) const {
    return m_store->findClash(object, name, exceptId) != 0;
}

// ---- Typed operations

template <class T>
QcSmartPtr<T> Library::get(uint32_t id) const {
    return downcast<T>(m_store->loadById(T::kType, id));
}

template <class T>
QcSmartPtr<T> Library::get(const NameKey& name) const {
    return downcast<T>(m_store->loadByName(T::kType, name.name()));
}

template <class T>
QcSmartPtr<T> Library::get(const ProfileKey& key) const {
    static_assert(std::is_same_v<T, Profile>, "profile keys find profiles");
    return m_store->loadProfile(key);
}

template <class T>
QcSmartPtr<T> Library::get(const ProfileNameKey& key) const {
    static_assert(std::is_same_v<T, ProfileName>, "profile name keys find profile names");
    return m_store->loadProfileName(key);
}

namespace {

void query(const LibraryStore& store, std::vector<QcSmartPtr<Profile>>& out, const ProfilesPanelQuery& criteria) {
    out = store.loadProfiles(criteria);
}

void query(const LibraryStore& store, std::vector<QcSmartPtr<Profile>>& out, const ProfileCriteria& criteria) {
    out = store.loadProfiles(criteria);
}

template <class T>
void query(const LibraryStore& store, std::vector<QcSmartPtr<T>>& out, const StringCriteria& criteria) {
    downcastAll(out, store.loadNamed(T::kType, criteria));
}

template <class T>
void query(const LibraryStore& store, std::vector<QcSmartPtr<T>>& out, const NameCriteria& criteria) {
    downcastAll(out, store.loadNamed(T::kType, criteria.name));
}

void query(const LibraryStore& store, std::vector<QcSmartPtr<Material>>& out, const MaterialCriteria& criteria) {
    out = store.loadMaterials(criteria);
}

void query(const LibraryStore& store, std::vector<QcSmartPtr<Composition>>& out, const CompositionCriteria& criteria) {
    out = store.loadCompositions(criteria);
}

template <class T>
void listRows(const LibraryStore& store, std::vector<ObjectSummary>& out, const StringCriteria& criteria) {
    out = store.listNamed(T::kType, criteria);
}

void listRows(const LibraryStore& store, std::vector<ObjectSummary>& out, const MaterialCriteria& criteria) {
    out = store.listMaterials(criteria);
}

void listRows(const LibraryStore& store, std::vector<ObjectSummary>& out, const CompositionCriteria& criteria) {
    out = store.listCompositions(criteria);
}

}  // namespace

template <class T, class Criteria>
void Library::list(std::vector<ObjectSummary>& out, const Criteria& criteria) const {
    if constexpr (std::is_same_v<Criteria, StringCriteria>)
        listRows<T>(*m_store, out, criteria);
    else
        listRows(*m_store, out, criteria);
}

template <class T>
ObjectSummary Library::listRow(uint32_t id) const {
    return m_store->listOne(T::kType, id);
}

template <class T, class Criteria>
void Library::get(std::vector<QcSmartPtr<T>>& out, const Criteria& criteria) const {
    query(*m_store, out, criteria);
}

template <class T>
void Library::get(std::vector<QcSmartPtr<T>>& out, const std::set<unsigned>& ids) const {
    downcastAll(out, m_store->loadByIds(T::kType, ids));
}

template <class T>
unsigned Library::count() const {
    return m_store->count(T::kType);
}

template <class T>
QcSmartPtr<T> Library::save(const QcSmartPtr<T>& object) {
    if (!object)
        throw ConsistencyError(OdString(L"No object to save"));
    return downcast<T>(m_store->guardWrite([&] { return m_store->saveObject(*object); }));
}

template <class T>
Library::RemoveResult Library::remove(const QcSmartPtr<T>& object) {
    if (!object || object->id() == 0)
        return kNotFound;
    return m_store->guardWrite([&] { return m_store->removeObject(T::kType, object->id()); });
}

template <class T>
Library::RemoveResult Library::remove(uint32_t id) {
    return m_store->guardWrite([&] { return m_store->removeObject(T::kType, id); });
}

template <class T>
std::set<unsigned> Library::remove(const std::set<unsigned>& ids) {
    m_store->requireWritable();
    return m_store->guardWrite([&] {
        std::set<unsigned> kept;
        LibraryStore::WriteScope scope(*m_store);
        for (unsigned id : ids) {
            RemoveResult result = m_store->removeObject(T::kType, id);
            if (result == kReferenced || result == kVetoed)
                kept.insert(id);
        }
        scope.commit();
        return kept;
    });
}

template <class T>
unsigned Library::purge() {
    return m_store->guardWrite([&] { return m_store->purge(T::kType); });
}

void Library::copy(const std::shared_ptr<const Library>& source, const std::set<ObjectKey>& keys, IdMapping& mapping,
                   TransactionType transactionType) {
    m_store->guardWrite([&] { m_store->copyFrom(source, keys, mapping, transactionType); });
}

OdString getImplFilename(const Library& library) { return library.filename(); }

OdString getImplFilename(const std::shared_ptr<const Library>& library) {
    return library ? library->filename() : OdString();
}

#define VL_INSTANTIATE_KIND(T)                                                                       \
    template QcSmartPtr<T> Library::get<T>(uint32_t) const;                                          \
    template QcSmartPtr<T> Library::get<T>(const NameKey&) const;                                    \
    template void Library::get<T, StringCriteria>(std::vector<QcSmartPtr<T>>&, const StringCriteria&) const; \
    template void Library::get<T, NameCriteria>(std::vector<QcSmartPtr<T>>&, const NameCriteria&) const;     \
    template void Library::get<T>(std::vector<QcSmartPtr<T>>&, const std::set<unsigned>&) const;     \
    template unsigned Library::count<T>() const;                                                     \
    template void Library::list<T, StringCriteria>(std::vector<ObjectSummary>&, const StringCriteria&) const; \
    template ObjectSummary Library::listRow<T>(uint32_t) const;                                      \
    template QcSmartPtr<T> Library::save<T>(const QcSmartPtr<T>&);                                   \
    template Library::RemoveResult Library::remove<T>(const QcSmartPtr<T>&);                         \
    template Library::RemoveResult Library::remove<T>(uint32_t);                                     \
    template std::set<unsigned> Library::remove<T>(const std::set<unsigned>&);

VL_INSTANTIATE_KIND(Tag)
VL_INSTANTIATE_KIND(Layer)
VL_INSTANTIATE_KIND(MaterialType)
VL_INSTANTIATE_KIND(CompositionType)
VL_INSTANTIATE_KIND(CustomProperty)
VL_INSTANTIATE_KIND(Material)
VL_INSTANTIATE_KIND(Composition)
VL_INSTANTIATE_KIND(ProfileStandard)
VL_INSTANTIATE_KIND(ProfileName)
VL_INSTANTIATE_KIND(Profile)
VL_INSTANTIATE_KIND(AsymmetricIShapeProfile)
VL_INSTANTIATE_KIND(IShapeProfile)
VL_INSTANTIATE_KIND(LShapeProfile)
VL_INSTANTIATE_KIND(UShapeProfile)
VL_INSTANTIATE_KIND(CShapeProfile)
VL_INSTANTIATE_KIND(ZShapeProfile)
VL_INSTANTIATE_KIND(TShapeProfile)
VL_INSTANTIATE_KIND(CraneRailAShapeProfile)
VL_INSTANTIATE_KIND(CraneRailFShapeProfile)
VL_INSTANTIATE_KIND(CircleProfile)
VL_INSTANTIATE_KIND(CircleHollowProfile)
VL_INSTANTIATE_KIND(EllipseProfile)
VL_INSTANTIATE_KIND(RectangleProfile)
VL_INSTANTIATE_KIND(RectangleHollowProfile)
VL_INSTANTIATE_KIND(RoundedRectangleProfile)
VL_INSTANTIATE_KIND(TrapeziumProfile)
VL_INSTANTIATE_KIND(CustomProfile)
template QcSmartPtr<Profile> Library::get<Profile>(const ProfileKey&) const;
template QcSmartPtr<ProfileName> Library::get<ProfileName>(const ProfileNameKey&) const;
template void Library::get<Profile, ProfileCriteria>(std::vector<QcSmartPtr<Profile>>&, const ProfileCriteria&) const;
template void Library::get<Profile, ProfilesPanelQuery>(std::vector<QcSmartPtr<Profile>>&, const ProfilesPanelQuery&) const;

template void Library::get<Material, MaterialCriteria>(std::vector<QcSmartPtr<Material>>&, const MaterialCriteria&) const;
template void Library::list<Material, MaterialCriteria>(std::vector<ObjectSummary>&, const MaterialCriteria&) const;
template void Library::list<Composition, CompositionCriteria>(std::vector<ObjectSummary>&,
                                                              const CompositionCriteria&) const;
template void Library::get<Composition, CompositionCriteria>(std::vector<QcSmartPtr<Composition>>&,
                                                             const CompositionCriteria&) const;
template unsigned Library::purge<Tag>();
template unsigned Library::purge<Layer>();

}  // namespace vantlib
