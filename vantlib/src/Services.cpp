// Process-wide services: the reactor registry, its default behaviour, translations.
#include <vantlib/LibraryManager.h>
#include <vantlib/Reactor.h>
#include <vantlib/Translations.h>

#include <atomic>

#include "LibraryAccess.h"

namespace vantlib {

LibraryManager* LibraryManager::instance() {
    static LibraryManager manager;
    return &manager;
}

bool Library::Reactor::ObjectInfo::tryName(const OdString& name) {
    if (name.isEmpty() || !m_target)
        return false;
    uint32_t except = LibraryAccess::belongsTo(*m_object, m_target.get()) ? m_object->id() : 0;
    if (m_target->isNameUsed(*m_object, name, except))
        return false;
    m_object->set_name(name);
    return true;
}

void Library::Reactor::onTransactionBegin(const std::shared_ptr<const Library>&) {}
void Library::Reactor::onTransactionEnd(const std::shared_ptr<const Library>&, TransactionResult) {}
void Library::Reactor::onObjectNotUniqueFail(ObjectInfo&) {}
SaveResolution Library::Reactor::onObjectNotUnique(ObjectInfo&) { return kSaveSkip; }

void Library::Reactor::onObjectNotUniqueRename(ObjectInfo& info) {
    OdString base = info.name();
    for (int n = 2; n < 100000; ++n)
        if (info.tryName(OdString::formatted(L"%ls_%d", base.c_str(), n)))
            return;
}

void Library::Reactor::onSaved(const std::shared_ptr<const Library>&, const ObjectKey&) {}
RemoveResolution Library::Reactor::onRemove(const std::shared_ptr<const Library>&, const ObjectKey&) { return kRemoveAllow; }
void Library::Reactor::onRemoved(const std::shared_ptr<const Library>&, const ObjectKey&) {}
void Library::Reactor::onCopied(const std::shared_ptr<const Library>&, const IdMapping&) {}
void Library::Reactor::onModified(const std::shared_ptr<const Library>&, const ObjectKey&) {}
void Library::Reactor::onLoadFailed(const std::shared_ptr<const Library>&, const ObjectKey&, const OdString&) {}
void Library::Reactor::onPrimaryCopy(const std::shared_ptr<const Library>&, const ObjectKey&, const ObjectKey&) {}
void Library::Reactor::onClosed(const OdString&, const OdString&) {}

namespace {
std::atomic<Translations*> g_translations{nullptr};
}

void Translations::set(Translations* provider) { g_translations.store(provider); }
Translations* Translations::get() { return g_translations.load(); }

OdString translate(const OdString& text) {
    OdString out;
    if (Translations* provider = Translations::get())
        if (provider->translate(out, text))
            return out;
    return text;
}

}  // namespace vantlib
