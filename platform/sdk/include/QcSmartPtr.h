#pragma once
// Intrusive reference counting for library objects and SDK records. A null QcSmartPtr means
// "nothing found".
#include <atomic>
#include <cstddef>
#include <utility>

class QcRefCounted {
public:
    QcRefCounted() = default;
    QcRefCounted(const QcRefCounted&) : m_refs(0) {}
    QcRefCounted& operator=(const QcRefCounted&) { return *this; }
    virtual ~QcRefCounted() = default;

    void addRef() const { m_refs.fetch_add(1, std::memory_order_relaxed); }
    void release() const {
        if (m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }
    long numRefs() const { return m_refs.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<long> m_refs{0};
};

template <class T>
class QcSmartPtr {
public:
    QcSmartPtr() = default;
    QcSmartPtr(std::nullptr_t) {}
    QcSmartPtr(T* object) : m_ptr(object) { if (m_ptr) m_ptr->addRef(); }
    QcSmartPtr(const QcSmartPtr& other) : m_ptr(other.m_ptr) { if (m_ptr) m_ptr->addRef(); }
    QcSmartPtr(QcSmartPtr&& other) noexcept : m_ptr(other.m_ptr) { other.m_ptr = nullptr; }
    template <class U>
    QcSmartPtr(const QcSmartPtr<U>& other) : m_ptr(other.get()) { if (m_ptr) m_ptr->addRef(); }
    ~QcSmartPtr() { if (m_ptr) m_ptr->release(); }

    QcSmartPtr& operator=(QcSmartPtr other) noexcept { std::swap(m_ptr, other.m_ptr); return *this; }

    // Takes an object whose reference was already counted for us.
    static QcSmartPtr attach(T* object) { QcSmartPtr p; p.m_ptr = object; return p; }
    T* detach() { T* p = m_ptr; m_ptr = nullptr; return p; }

    T* get() const { return m_ptr; }
    T* operator->() const { return m_ptr; }
    T& operator*() const { return *m_ptr; }
    explicit operator bool() const { return m_ptr != nullptr; }
    bool isNull() const { return m_ptr == nullptr; }
    void release() { if (m_ptr) { m_ptr->release(); m_ptr = nullptr; } }

    friend bool operator==(const QcSmartPtr& a, const QcSmartPtr& b) { return a.m_ptr == b.m_ptr; }
    friend bool operator!=(const QcSmartPtr& a, const QcSmartPtr& b) { return a.m_ptr != b.m_ptr; }
    friend bool operator==(const QcSmartPtr& a, std::nullptr_t) { return a.m_ptr == nullptr; }
    friend bool operator!=(const QcSmartPtr& a, std::nullptr_t) { return a.m_ptr != nullptr; }

private:
    T* m_ptr = nullptr;
};

template <class T, class... Args>
QcSmartPtr<T> qcMake(Args&&... args) { return QcSmartPtr<T>(new T(std::forward<Args>(args)...)); }
