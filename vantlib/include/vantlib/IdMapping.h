#pragma once
// Result of a copy between libraries: for every source object considered (the requested
// objects and what they brought along) the id it has in the target and what happened.
#include <map>
#include <memory>

#include <vantlib/Types.h>

namespace vantlib {

class Library;

class IdMapping {
public:
    using Key = ObjectKey;  // the object in the source library

    enum State : uint32_t {
        kCopied = 0,       // stored in the target as a new object
        kNotCopied = 1,    // clash answered with skip: the target's existing object (id) stays
        kOverwritten = 2,  // replaced the target's object of the same name (id kept)
        kRenamed = 3,      // stored as a new object under a new name
        kReused = 4,       // a dependency (class, tag, layer, custom property) that the target
                           // already had under the same name and that was used as it is
    };

    struct Value {
        uint32_t id = 0;  // id in the target; 0 when a skipped object had no counterpart
        State state = kCopied;
    };

    using Map = std::map<Key, Value>;
    using const_iterator = Map::const_iterator;

    explicit IdMapping(const std::shared_ptr<const Library>& target = nullptr) : m_target(target) {}

    const std::shared_ptr<const Library>& target() const { return m_target; }

    const_iterator begin() const { return m_map.begin(); }
    const_iterator end() const { return m_map.end(); }
    const_iterator find(const Key& key) const { return m_map.find(key); }
    bool contains(const Key& key) const { return m_map.count(key) != 0; }
    size_t size() const { return m_map.size(); }
    bool empty() const { return m_map.empty(); }
    void clear() { m_map.clear(); }
    void set(const Key& key, const Value& value) { m_map[key] = value; }

    // Number of entries whose state is not kNotCopied (what a copy actually produced).
    unsigned copiedCount() const;

private:
    std::shared_ptr<const Library> m_target;
    Map m_map;
};

}  // namespace vantlib
