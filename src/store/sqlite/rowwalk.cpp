#include "store/sqlite/rowwalk.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "store/sqlite/binding.h"
#include "store/sqlite/fetch.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::sqlite {

namespace {

std::uint64_t distance(std::int64_t from, std::int64_t to) {
    return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
}

// So many of the keys that ascend stand close to each other.
std::size_t runAt(std::span<const std::int64_t> keys) {
    constexpr std::uint64_t kClose = 16;
    std::size_t end = 1;
    while (end < keys.size() && distance(keys[end - 1], keys[end]) <= kClose)
        ++end;
    return end;
}

}  // namespace

std::vector<std::uint32_t> positionsByKey(const Keys& keys) {
    if (keys.empty()) return {};
    const auto [least, greatest] = std::minmax_element(keys.begin(), keys.end());
    constexpr std::size_t kDense = 4;
    if (distance(*least, *greatest) >= kDense * keys.size()) {
        std::vector<std::uint32_t> positions(keys.size());
        std::iota(positions.begin(), positions.end(), 0U);
        std::sort(positions.begin(), positions.end(),
                  [&keys](std::uint32_t left, std::uint32_t right) { return keys[left] < keys[right]; });
        return positions;
    }
    constexpr auto kNone = static_cast<std::uint32_t>(-1);
    std::vector<std::uint32_t> byKey(static_cast<std::size_t>(distance(*least, *greatest)) + 1, kNone);
    for (std::size_t position = 0; position < keys.size(); ++position)
        byKey[static_cast<std::size_t>(distance(*least, keys[position]))] = static_cast<std::uint32_t>(position);
    std::erase(byKey, kNone);
    byKey.shrink_to_fit();
    return byKey;
}

RowWalk::RowWalk(Database& database, const tsql::Translation& walk)
    : database_(database), columns_(walk.columns), statement_(database.prepareLasting(walk.statements[0])) {}

Recordset RowWalk::read(std::span<const std::int64_t> keys) {
    Recordset rows = tsql::emptyRecordset(columns_);
    database_.runtime().startStatement();
    while (!keys.empty()) {
        const std::size_t run = runAt(keys);
        readRun(keys.first(run), rows);
        keys = keys.subspan(run);
    }
    return rows;
}

void RowWalk::readRun(std::span<const std::int64_t> keys, Recordset& rows) {
    sqlite3_stmt* statement = statement_.get();
    const ResetStatement reset(statement);
    checkBound(sqlite3_bind_int64(statement, 1, keys.front()));
    checkBound(sqlite3_bind_int64(statement, 2, keys.back()));
    std::size_t found = 0;
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        const std::int64_t key = sqlite3_column_int64(statement, rows.columnCount());
        if (found == keys.size() || key < keys[found]) continue;
        if (key > keys[found]) failOnMissingRow();
        fetchRow(statement, columns_, rows);
        ++found;
    }
    if (code != SQLITE_DONE) database_.fail(code);
    if (found < keys.size()) failOnMissingRow();
}

// Within one snapshot only a damaged file has a key without its row.
void RowWalk::failOnMissingRow() { throw failureOf(database_.handle(), SQLITE_CORRUPT, database_.file()); }

}  // namespace orvenmod::store::sqlite
