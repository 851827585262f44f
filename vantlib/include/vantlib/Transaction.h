#pragma once
// Groups changes of one library. Transactions nest: only the outermost commit writes to the
// file, so an inner commit alone keeps nothing. A transaction that ends without commit (its
// destructor, typically during an exception) undoes everything done since it began,
// including its committed inner transactions. The reactor sees the begin and the end of
// every level. Implicit transactions of single operations count as levels too.
#include <memory>

#include <vantlib/Library.h>

namespace vantlib {

class Transaction {
public:
    enum Init : uint32_t {
        kStart = 0,     // begins at construction
        kDeferred = 1,  // begins with start()
    };

    // Throws ReadOnly on a read-only library.
    explicit Transaction(const std::shared_ptr<Library>& library, Init init = kStart);
    // Rolls back when not committed.
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void start();
    // Keeps the changes (the outermost commit writes them). Throws ConsistencyError while an
    // inner transaction is still open.
    void commit();
    void rollback();
    bool isActive() const { return m_active; }

private:
    std::shared_ptr<Library> m_library;
    bool m_active = false;
    unsigned m_level = 0;
};

}  // namespace vantlib
