#include <vantlib/Transaction.h>

#include "LibraryStore.h"

namespace vantlib {

Transaction::Transaction(const std::shared_ptr<Library>& library, Init init) : m_library(library) {
    if (!m_library)
        throw ConsistencyError(OdString(L"A transaction needs a library"));
    m_library->store().requireWritable();
    if (init == kStart)
        start();
}

Transaction::~Transaction() {
    if (m_active) {
        try {
            rollback();
        } catch (...) {
            // A destructor must not throw; closing the library discards the changes anyway.
        }
    }
}

void Transaction::start() {
    if (m_active)
        throw ConsistencyError(OdString(L"The transaction has already started"));
    m_library->store().begin();
    m_active = true;
    m_level = m_library->store().depth();
}

void Transaction::commit() {
    if (!m_active)
        throw ConsistencyError(OdString(L"The transaction is not active"));
    if (m_library->store().depth() != m_level)
        throw ConsistencyError(OdString(L"An inner transaction is still open"));
    m_active = false;
    m_library->store().commit();
}

void Transaction::rollback() {
    if (!m_active)
        return;
    m_active = false;
    LibraryStore& store = m_library->store();
    // Inner transactions left open end with this one.
    while (store.depth() >= m_level && store.depth() > 0)
        store.rollback();
}

}  // namespace vantlib
