#pragma once
// The module's reactor to library events: name clashes become a keep / replace / rename
// question (or a remembered answer), objects that fail to load a command-line message, and
// library files that cannot be opened a notification balloon.
#include <map>
#include <memory>
#include <set>

#include <wx/string.h>

#include <vl_db/LibraryReactor.h>

#include "app/IDlgEnabler.h"

namespace vl_app {

class LibraryReactor : public vl_db::LibraryReactor {
public:
    // While it lives, only clashes of the given object types are put to the user; the types
    // in force before are restored when it ends, so enablers nest.
    class DlgEnabler : public IDlgEnabler {
    public:
        explicit DlgEnabler(const std::set<vantlib::ObjectType>& types);
        ~DlgEnabler() override;
        DlgEnabler(const DlgEnabler&) = delete;
        DlgEnabler& operator=(const DlgEnabler&) = delete;

    private:
        std::set<vantlib::ObjectType> m_saved;
    };

    static LibraryReactor* instance();

    // Forgets the remembered clash answers (back to the host's default answer) and zeroes the
    // skipped counts; runs when an outermost transaction begins.
    void reset();
    // Clashes of `type` answered with skip since the outermost transaction began; throws
    // std::out_of_range for a type that has no count.
    unsigned skipped(vantlib::ObjectType type) const;

    // The remembered answer of a type (0 ask, 1 skip, 2 overwrite, 3 rename); 0 when none.
    unsigned rememberedAnswer(vantlib::ObjectType type) const;
    const std::set<vantlib::ObjectType>& dialogTypes() const { return m_dialogTypes; }
    unsigned transactionDepth() const { return m_depth; }

    void onTransactionBegin(const std::shared_ptr<const vantlib::Library>& library) override;
    void onTransactionEnd(const std::shared_ptr<const vantlib::Library>& library,
                          vantlib::TransactionResult result) override;
    void onObjectNotUniqueFail(ObjectInfo& info) override;
    vantlib::SaveResolution onObjectNotUnique(ObjectInfo& info) override;
    void onObjectNotUniqueRename(ObjectInfo& info) override;
    void onCopied(const std::shared_ptr<const vantlib::Library>& target, const vantlib::IdMapping& mapping) override;
    void onLoadFailed(const std::shared_ptr<const vantlib::Library>& library, const vantlib::ObjectKey& key,
                      const OdString& name) override;

    // These may arrive on a worker thread; the balloon is shown on the main thread.
    void onLibraryFileMissing(OdDbDatabase* db, const OdString& path, vl_db::EDbType type) override;
    void onLibraryFileLoadingError(OdDbDatabase* db, const OdString& path, vl_db::EDbType type) override;
    void onLibraryFileUnknownError(OdDbDatabase* db, const OdString& path, vl_db::EDbType type) override;

    void initBalloonNotificationHandler() override;
    void unInitBalloonNotificationHandler() override;

private:
    LibraryReactor();
    ~LibraryReactor() override;

    // Gives the incoming object the first free name of: its own, then "<stem>_2", "<stem>_3", ...
    // (a bare number when the stem is empty). Returns the name set, empty when none was free.
    wxString suggestName(ObjectInfo& info) const;
    bool isCurrentProjectLibrary(const std::shared_ptr<const vantlib::Library>& library) const;
    unsigned askUser(vantlib::ObjectType type, bool project, const wxString& displayName, const wxString& newName);

    static LibraryReactor s_instance;

    unsigned m_depth = 0;
    std::set<vantlib::ObjectType> m_dialogTypes;
    std::map<vantlib::ObjectType, unsigned> m_answers;
    std::map<vantlib::ObjectType, unsigned> m_skipped;
};

}  // namespace vl_app
