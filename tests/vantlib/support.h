#pragma once
// Shared fixtures of the library data module tests: a temporary folder, sample objects and a
// reactor that records what it is told and answers clashes as a test wishes.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include <vantlib/vantlib.h>

// Readable failure messages for text.
inline void PrintTo(const OdString& text, std::ostream* out) { *out << '"' << text.toUtf8() << '"'; }

namespace vltest {

using namespace vantlib;

class TempDir {
public:
    TempDir();
    ~TempDir();
    OdString file(const char* name) const;
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

class RecordingReactor : public Library::Reactor {
public:
    RecordingReactor() { LibraryManager::instance()->setReactor(this); }
    ~RecordingReactor() override { LibraryManager::instance()->setReactor(nullptr); }

    SaveResolution answer = kSaveSkip;
    // Optional name proposed with tryName before answering (empty: none).
    OdString proposedName;
    std::function<RemoveResolution(const ObjectKey&)> removeAnswer;

    std::vector<OdString> clashes;       // names asked about
    std::vector<ObjectType> clashTypes;
    int begins = 0, ends = 0, rolledBack = 0;
    int saved = 0, modified = 0, removed = 0, primaryCopies = 0, closed = 0;
    std::vector<ObjectKey> loadFailures;

    void onTransactionBegin(const std::shared_ptr<const Library>&) override { ++begins; }
    void onTransactionEnd(const std::shared_ptr<const Library>&, TransactionResult result) override {
        ++ends;
        if (result == kTransactionRolledBack)
            ++rolledBack;
    }
    SaveResolution onObjectNotUnique(ObjectInfo& info) override {
        clashes.push_back(info.name());
        clashTypes.push_back(info.type());
        if (!proposedName.isEmpty())
            info.tryName(proposedName);
        return answer;
    }
    void onSaved(const std::shared_ptr<const Library>&, const ObjectKey&) override { ++saved; }
    void onModified(const std::shared_ptr<const Library>&, const ObjectKey&) override { ++modified; }
    RemoveResolution onRemove(const std::shared_ptr<const Library>&, const ObjectKey& key) override {
        return removeAnswer ? removeAnswer(key) : kRemoveAllow;
    }
    void onRemoved(const std::shared_ptr<const Library>&, const ObjectKey&) override { ++removed; }
    void onPrimaryCopy(const std::shared_ptr<const Library>&, const ObjectKey&, const ObjectKey&) override { ++primaryCopies; }
    void onLoadFailed(const std::shared_ptr<const Library>&, const ObjectKey& key, const OdString&) override {
        loadFailures.push_back(key);
    }
    void onClosed(const OdString&, const OdString&) override { ++closed; }
};

// A material with a class, two tags, a section layer and a custom value.
QcSmartPtr<Material> sampleMaterial(const OdString& name, const OdString& className = OdString(L"Masonry"));
// A composition of plies of the given (stored) materials.
QcSmartPtr<Composition> sampleComposition(const OdString& name, const std::vector<QcSmartPtr<Material>>& materials);

// Every row of every lib_ table, in a stable order, for before/after comparisons.
std::string dumpLibrary(const OdString& path);
// A dump without the tables whose "[name]" line starts with `prefix` ("[lib_profile").
std::string withoutTables(const std::string& dump, const std::string& prefix);
std::string fileBytes(const std::string& path);

OdString W(const char* utf8);

}  // namespace vltest
