// Translations and prepared statements by the shape of their text: at most a thousand, the least recently used goes
// first. One shape has several entries where the values of some literals are part of the translation.
//
//   select id from t where n=5          one entry
//   select id from t where n=6          the same
//   select id, n from t order by 1      one entry, fixed to 1
//   select id, n from t order by 2      another one, of the same shape
//
// `Native` is a store's own prepared statement, which its destructor lets go.
#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "store/tsql/shape.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

/// Whether the translation of a statement of the same shape holds for this one.
inline bool fits(const Translation& translation, const Shape& shape) {
    return std::all_of(translation.fixedLiterals.begin(), translation.fixedLiterals.end(), [&](const auto& fixed) {
        return shape.literals[static_cast<std::size_t>(fixed.literal)].text == fixed.text;
    });
}

template <typename Native>
class StatementCache {
public:
    static constexpr std::size_t kLimit = 1000;

    struct Entry {
        std::string key;
        Translation translation;
        Native statement;
    };

    /// The entry of the shape whose fixed literals are equal, or null. It stays valid until the next add or drop.
    Entry* find(const Shape& shape) {
        const auto [first, last] = byKey_.equal_range(shape.key);
        for (auto at = first; at != last; ++at) {
            if (!fits(at->second->translation, shape)) continue;
            entries_.splice(entries_.begin(), entries_, at->second);
            return &*at->second;
        }
        return nullptr;
    }

    /// Keeps the translation of a statement of that shape where it serves another one, else until the next such.
    Entry& keep(const Shape& shape, Entry entry) {
        if (!runsAsItIs(entry.translation.kind) || !entry.translation.cacheable) {
            passing_ = std::move(entry);
            return passing_;
        }
        entry.key = shape.key;
        return add(std::move(entry));
    }

    Entry& add(Entry entry) {
        if (entries_.size() >= kLimit) drop(entries_.back());
        entries_.push_front(std::move(entry));
        byKey_.emplace(entries_.front().key, entries_.begin());
        return entries_.front();
    }

    void drop(const Entry& entry) {
        const auto [first, last] = byKey_.equal_range(entry.key);
        for (auto at = first; at != last; ++at) {
            if (&*at->second != &entry) continue;
            const typename Entries::iterator gone = at->second;
            byKey_.erase(at);
            entries_.erase(gone);
            return;
        }
    }

    void clear() {
        byKey_.clear();
        entries_.clear();
    }

    std::size_t size() const { return entries_.size(); }

    template <typename Visit>
    void forEach(Visit visit) {
        for (Entry& entry : entries_)
            visit(entry);
    }

private:
    using Entries = std::list<Entry>;

    Entry passing_;
    Entries entries_;                                                              // the most recently used first
    std::unordered_multimap<std::string_view, typename Entries::iterator> byKey_;  // views into the entries' keys
};

}  // namespace orvenmod::store::tsql
