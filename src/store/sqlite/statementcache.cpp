#include "store/sqlite/statementcache.h"

#include <algorithm>

namespace orvenmod::store::sqlite {

namespace {

bool fits(const tsql::Translation& translation, const tsql::Shape& shape) {
    return std::all_of(translation.fixedLiterals.begin(), translation.fixedLiterals.end(), [&](const auto& fixed) {
        return shape.literals[static_cast<std::size_t>(fixed.literal)].text == fixed.text;
    });
}

}  // namespace

CachedStatement* StatementCache::find(const tsql::Shape& shape) {
    const auto [first, last] = byKey_.equal_range(shape.key);
    for (auto at = first; at != last; ++at) {
        if (!fits(at->second->translation, shape)) continue;
        entries_.splice(entries_.begin(), entries_, at->second);
        return &*at->second;
    }
    return nullptr;
}

CachedStatement& StatementCache::add(CachedStatement entry) {
    if (entries_.size() >= kLimit) drop(entries_.back());
    entries_.push_front(std::move(entry));
    byKey_.emplace(entries_.front().key, entries_.begin());
    return entries_.front();
}

void StatementCache::drop(const CachedStatement& entry) {
    const auto [first, last] = byKey_.equal_range(entry.key);
    for (auto at = first; at != last; ++at) {
        if (&*at->second != &entry) continue;
        const Entries::iterator gone = at->second;
        byKey_.erase(at);
        entries_.erase(gone);
        return;
    }
}

void StatementCache::clear() {
    byKey_.clear();
    entries_.clear();
}

}  // namespace orvenmod::store::sqlite
