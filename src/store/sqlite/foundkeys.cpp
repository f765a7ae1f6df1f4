#include "store/sqlite/foundkeys.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/orderedkeys.h"
#include "store/tsql/textorder.h"

namespace orvenmod::store::sqlite {

namespace {

template <typename Take>
void runOf(Database& database, const tsql::TextOrder& order, const Keys& marks, Take take) {
    const Statement statement = database.prepareLasting(order.of);
    const std::string keys = keyList(marks);
    runQuery(
        database, statement.get(), [&keys](sqlite3_stmt* query) { bindKeyList(query, keys); }, take);
}

// One of two ways through the texts, from one of them on.
class Way {
public:
    Way(Database& database, const std::string& text, const std::string& start, OrderedKeys::Order order)
        : database_(database), statement_(database.prepareLasting(text)), keys_(order) {
        checkBound(sqlite3_bind_text64(statement_.get(), 1, start.data(), start.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    }

    /// Goes on until it meets none of the marks for a while. False where one has its place elsewhere.
    bool walk(Marks& marks) {
        constexpr int kFarAway = 4096;
        sqlite3_stmt* row = statement_.get();
        for (int missed = 0; missed < kFarAway; ++missed) {
            const int code = sqlite3_step(row);
            if (code == SQLITE_DONE) return true;
            if (code != SQLITE_ROW) database_.fail(code);
            if (!marks.has(sqlite3_column_value(row, kMark))) continue;
            const std::string_view text = textOf(sqlite3_column_value(row, kText));
            if (!isOrderedAlike(text)) return false;
            keys_.add(text, sqlite3_column_int64(row, kKey));
            marks.drop(sqlite3_column_int64(row, kMark));
            missed = 0;
        }
        return true;
    }
    Keys keys() { return keys_.taken(); }

private:
    Database& database_;
    Statement statement_;
    OrderedKeys keys_;
};

// The least text of some of the marks.
std::string startAmong(Database& database, const tsql::TextOrder& order, const Keys& marks) {
    constexpr std::size_t kSamples = 64;
    Keys samples;
    for (std::size_t i = 0; i < kSamples; ++i)
        samples.push_back(marks[marks.size() * i / kSamples]);
    std::optional<std::string> least;
    runOf(database, order, samples, [&least](sqlite3_stmt* row) {
        if (sqlite3_column_type(row, kText) == SQLITE_NULL) return;
        std::string text(textOf(sqlite3_column_value(row, kText)));
        if (!least || tsql::compareTexts(text, *least) < 0) least = std::move(text);
    });
    return least.value_or("");
}

}  // namespace

Marks::Marks(const Keys& marks) : all_(marks) {
    if (marks.empty()) return;
    constexpr std::int64_t kShare = 16;
    const auto [least, greatest] = std::minmax_element(marks.begin(), marks.end());
    if (*least < 0 || static_cast<std::int64_t>(marks.size()) <= *greatest / kShare) return;
    has_.resize(static_cast<std::size_t>(*greatest) + 1);
    for (const std::int64_t mark : marks)
        has_[static_cast<std::size_t>(mark)] = true;
}

bool Marks::has(sqlite3_value* mark) const {
    if (sqlite3_value_type(mark) != SQLITE_INTEGER) return false;
    const auto at = static_cast<std::uint64_t>(sqlite3_value_int64(mark));
    return at < has_.size() && has_[at];
}

Keys Marks::left() const {
    Keys keys;
    for (const std::int64_t mark : all_) {
        if (has_[static_cast<std::size_t>(mark)]) keys.push_back(mark);
    }
    return keys;
}

std::optional<Keys> keysStandingTogether(Database& database, const tsql::TextOrder& order, Marks marks) {
    const std::string start = startAmong(database, order, marks.all());
    database.runtime().startStatement();
    Way up(database, order.from, start, OrderedKeys::Order::ascending);
    Way down(database, order.before, start, OrderedKeys::Order::descending);
    if (!up.walk(marks) || !down.walk(marks)) return std::nullopt;
    constexpr std::size_t kFew = 4096;
    const Keys left = marks.left();
    bool elsewhere = left.size() > kFew;
    if (!elsewhere) runOf(database, order, left, [&elsewhere](sqlite3_stmt*) { elsewhere = true; });
    if (elsewhere) return std::nullopt;
    Keys keys = down.keys();
    std::reverse(keys.begin(), keys.end());
    const Keys above = up.keys();
    keys.insert(keys.end(), above.begin(), above.end());
    return keys;
}

}  // namespace orvenmod::store::sqlite
