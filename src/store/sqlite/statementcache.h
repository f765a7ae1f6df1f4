// Translations and prepared statements by the shape of their text: at most a thousand, the least recently used goes
// first. One shape has several entries where the values of some literals are part of the translation.
//
//   select id from t where n=5          one entry
//   select id from t where n=6          the same
//   select id, n from t order by 1      one entry, fixed to 1
//   select id, n from t order by 2      another one, of the same shape
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "store/sqlite/statement.h"
#include "store/tsql/shape.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::sqlite {

struct CachedStatement {
    std::string key;
    tsql::Translation translation;
    Statement statement;  ///< none for DDL, whose statements are prepared one after the other
};

class StatementCache {
public:
    static constexpr std::size_t kLimit = 1000;

    /// The entry of the shape whose fixed literals are equal, or null. It stays valid until the next add or drop.
    CachedStatement* find(const tsql::Shape& shape);
    CachedStatement& add(CachedStatement entry);
    void drop(const CachedStatement& entry);
    void clear();
    std::size_t size() const { return entries_.size(); }

    template <typename Visit>
    void forEach(Visit visit) {
        for (CachedStatement& entry : entries_)
            visit(entry);
    }

private:
    using Entries = std::list<CachedStatement>;

    Entries entries_;                                                     // the most recently used first
    std::unordered_multimap<std::string_view, Entries::iterator> byKey_;  // views into the entries' keys
};

}  // namespace orvenmod::store::sqlite
