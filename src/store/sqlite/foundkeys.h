// Rows that were found in any order, by their keys or by references to another table: their marks.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "store/sqlite/keyquery.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite {

/// Whatever is no whole number is no mark: to a number nothing else is equal.
class Marks {
public:
    explicit Marks(const Keys& marks);

    const Keys& all() const { return all_; }
    /// So many that to pass through all rows in their order takes less than to fetch the text of each.
    bool areMany() const { return !has_.empty(); }

    // Of many.
    bool has(sqlite3_value* mark) const;
    void drop(std::int64_t mark) { has_[static_cast<std::size_t>(mark)] = false; }
    Keys left() const;

private:
    Keys all_;
    std::vector<bool> has_;
};

/// The keys of rows that stand together in the list's order, found from one of them on in both directions. Nothing
/// where they don't, or where one has no place by NOCASE. No two rows have one mark. Throws Failure.
std::optional<Keys> keysStandingTogether(Database& database, const tsql::TextOrder& order, Marks marks);

}  // namespace orvenmod::store::sqlite
