#pragma once
// Growable array of the SDK, with the operations the module uses.
#include <algorithm>
#include <vector>

#include "OdError.h"

template <class T>
class OdArray {
public:
    using iterator = typename std::vector<T>::iterator;
    using const_iterator = typename std::vector<T>::const_iterator;

    OdArray() = default;
    OdArray(std::initializer_list<T> items) : m_items(items) {}

    unsigned size() const { return static_cast<unsigned>(m_items.size()); }
    unsigned length() const { return size(); }
    bool isEmpty() const { return m_items.empty(); }
    bool empty() const { return m_items.empty(); }

    OdArray& append(const T& item) { m_items.push_back(item); return *this; }
    void push_back(const T& item) { m_items.push_back(item); }
    void clear() { m_items.clear(); }
    void removeAt(unsigned index) { check(index); m_items.erase(m_items.begin() + index); }
    void insertAt(unsigned index, const T& item) {
        if (index > m_items.size()) throw OdError_InvalidIndex();
        m_items.insert(m_items.begin() + index, item);
    }
    bool contains(const T& item) const { return std::find(m_items.begin(), m_items.end(), item) != m_items.end(); }

    T& at(unsigned index) { check(index); return m_items[index]; }
    const T& at(unsigned index) const { check(index); return m_items[index]; }
    T& operator[](unsigned index) { check(index); return m_items[index]; }
    const T& operator[](unsigned index) const { check(index); return m_items[index]; }
    const T& first() const { check(0); return m_items.front(); }
    const T& last() const { check(0); return m_items.back(); }

    iterator begin() { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator begin() const { return m_items.begin(); }
    const_iterator end() const { return m_items.end(); }

    friend bool operator==(const OdArray& a, const OdArray& b) { return a.m_items == b.m_items; }

private:
    void check(unsigned index) const { if (index >= m_items.size()) throw OdError_InvalidIndex(); }
    std::vector<T> m_items;
};
