// vlib copy SRC DST KIND NAME... [--on-clash skip|overwrite|rename]
#include <filesystem>
#include <ostream>
#include <set>

#include <vantlib/LibraryManager.h>

#include <vl_db/LibraryReactor.h>

#include "Arguments.h"
#include "Commands.h"
#include "Kinds.h"
#include "LibraryFiles.h"

namespace vlib {

namespace {

// Answers every name clash of the copy the same way, as chosen on the command line; a rename
// takes the first free "name_N".
class FixedAnswerReactor : public vl_db::LibraryReactor {
public:
    explicit FixedAnswerReactor(vantlib::SaveResolution answer) : m_answer(answer) {
        m_previous = vantlib::LibraryManager::instance()->reactor();
        vantlib::LibraryManager::instance()->setReactor(this);
    }
    ~FixedAnswerReactor() override { vantlib::LibraryManager::instance()->setReactor(m_previous); }
    FixedAnswerReactor(const FixedAnswerReactor&) = delete;
    FixedAnswerReactor& operator=(const FixedAnswerReactor&) = delete;

    vantlib::SaveResolution onObjectNotUnique(ObjectInfo&) override { return m_answer; }

private:
    vantlib::SaveResolution m_answer;
    vantlib::Library::Reactor* m_previous = nullptr;
};

vantlib::SaveResolution clashAnswer(const std::string& word) {
    if (word == "skip")
        return vantlib::kSaveSkip;
    if (word == "overwrite")
        return vantlib::kSaveOverwrite;
    if (word == "rename")
        return vantlib::kSaveRename;
    throw UsageError("--on-clash takes skip, overwrite or rename, not '" + word + "'");
}

const char* stateWord(vantlib::IdMapping::State state) {
    switch (state) {
    case vantlib::IdMapping::kCopied: return "copied";
    case vantlib::IdMapping::kNotCopied: return "skipped (name taken)";
    case vantlib::IdMapping::kOverwritten: return "overwritten";
    case vantlib::IdMapping::kRenamed: return "renamed";
    case vantlib::IdMapping::kReused: return "reused";
    }
    return "?";
}

}  // namespace

int copyCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {"on-clash"});
    args.requirePositional(4, "SRC DST KIND NAME...", true);
    const std::string& sourcePath = args.positional()[0];
    const std::string& targetPath = args.positional()[1];
    const Kind& kind = kindFromWord(args.positional()[2]);
    const vantlib::SaveResolution answer = clashAnswer(args.value("on-clash", "skip"));

    std::error_code ec;
    if (std::filesystem::equivalent(sourcePath, targetPath, ec))
        throw std::runtime_error("source and destination are the same file: " + targetPath);

    const auto source = openLibrary(sourcePath, true);
    // Every name must be found before the destination is opened for writing.
    std::set<unsigned> ids;
    for (size_t i = 3; i < args.positional().size(); ++i) {
        const std::string& name = args.positional()[i];
        const uint32_t id = kind.idOf(*source, toOd(name));
        if (id == 0)
            throw std::runtime_error(sourcePath + ": no " + kind.word + " named '" + name + "'");
        ids.insert(id);
    }
    const auto target = openLibrary(targetPath, false);
    if (target->isReadOnly())
        throw std::runtime_error(targetPath + ": library is read-only");
    if (target->unit() != source->unit())
        out << "note: the libraries use different units (" << unitName(source->unit()) << " and "
            << unitName(target->unit()) << ")\n";

    std::set<vantlib::ObjectKey> keys;
    for (unsigned id : ids)
        keys.insert(vantlib::ObjectKey(kind.type, id));
    vantlib::IdMapping mapping(target);
    {
        const FixedAnswerReactor reactor(answer);
        target->copy(source, keys, mapping, vantlib::Library::kSingleTransaction);
    }

    unsigned written = 0;
    for (const auto& [sourceKey, result] : mapping) {
        const Kind* entryKind = findKind(sourceKey.type);
        // Dependencies that the destination already had are not worth a line.
        if (!entryKind || result.state == vantlib::IdMapping::kReused)
            continue;
        if (result.state != vantlib::IdMapping::kNotCopied)
            ++written;
        const OdString sourceName = entryKind->nameOf(*source, sourceKey.id);
        out << entryKind->word << " '" << toUtf8(sourceName) << "': " << stateWord(result.state);
        if (result.state == vantlib::IdMapping::kRenamed)
            out << " to '" << toUtf8(entryKind->nameOf(*target, result.id)) << "'";
        out << '\n';
    }
    out << written << (written == 1 ? " object" : " objects") << " written to " << targetPath << '\n';
    return 0;
}

}  // namespace vlib
