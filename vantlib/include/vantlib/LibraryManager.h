#pragma once
// Process-wide services of the data module.
#include <vantlib/Reactor.h>

namespace vantlib {

class LibraryManager {
public:
    static LibraryManager* instance();

    // The reactor of all libraries; null for none. Not owned.
    void setReactor(Library::Reactor* reactor) { m_reactor = reactor; }
    Library::Reactor* reactor() const { return m_reactor; }

private:
    LibraryManager() = default;
    Library::Reactor* m_reactor = nullptr;
};

}  // namespace vantlib
