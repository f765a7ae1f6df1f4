// Keys that come by the equality form of a text, NOCASE, instead of in the list's order, ts_order. Both agree on texts
// of plain ASCII below '{'; the others are taken out in a first pass, sorted, and put between them in a second:
//
//   by NOCASE    A1(7)  b2(3)  中(9)  啊(4)
//   first pass   A1(7)  b2(3)              aside 啊(4)  中(9)
//   second       啊(4)  中(9)  A1(7)  b2(3)
//
// Mostly nothing is put aside, and the first pass is all.
#include "store/sqlite/listkeys.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "store/sqlite/binding.h"
#include "store/sqlite/foundkeys.h"
#include "store/sqlite/orderedkeys.h"
#include "store/tsql/textorder.h"

namespace orvenmod::store::sqlite {

namespace {

struct TextKey {
    std::string text;
    std::int64_t key = 0;
};

// Texts that are equal stand in the order of their keys.
bool standsBefore(const TextKey& left, std::string_view text, std::int64_t key) {
    const int order = tsql::compareTexts(left.text, text);
    return order < 0 || (order == 0 && left.key < key);
}

template <typename Bind>
Keys keysOf(Database& database, const std::string& text, Bind bind) {
    const Statement statement = database.prepareLasting(text);
    Keys keys;
    runQuery(database, statement.get(), bind,
             [&keys](sqlite3_stmt* row) { keys.push_back(sqlite3_column_int64(row, 0)); });
    return keys;
}

// The keys of a query of texts and keys, in the list's order, as far as they are wanted.
template <typename Bind, typename Wanted>
class KeysByText {
public:
    KeysByText(Database& database, const std::string& text, Bind bind, Wanted wanted)
        : database_(database), statement_(database.prepareLasting(text)), bind_(bind), wanted_(wanted) {}

    Keys sorted() {
        std::vector<TextKey> all;
        forEach([&all](std::string_view text, std::int64_t key, bool) { all.push_back({std::string(text), key}); });
        sort(all);
        Keys keys;
        for (const TextKey& each : all)
            keys.push_back(each.key);
        return keys;
    }

    /// Of a query that gives them by the equality form.
    Keys reordered() {
        OrderedKeys keys;
        std::vector<TextKey> aside;
        forEach([&](std::string_view text, std::int64_t key, bool alike) {
            if (alike) {
                keys.add(text, key);
            } else {
                aside.push_back({std::string(text), key});
            }
        });
        return aside.empty() ? keys.taken() : merged(std::move(aside));
    }

private:
    template <typename Take>
    void forEach(Take take) {
        runQuery(database_, statement_.get(), bind_, [&](sqlite3_stmt* row) {
            if (!wanted_(row)) return;
            // A null counts as the empty text, and comes before it.
            const bool null = sqlite3_column_type(row, kText) == SQLITE_NULL;
            const std::string_view text = null ? "" : textOf(sqlite3_column_value(row, kText));
            take(text, sqlite3_column_int64(row, kKey), !null && isOrderedAlike(text));
        });
    }

    static void sort(std::vector<TextKey>& texts) {
        std::sort(texts.begin(), texts.end(),
                  [](const TextKey& left, const TextKey& right) { return standsBefore(left, right.text, right.key); });
    }

    Keys merged(std::vector<TextKey> aside) {
        sort(aside);
        OrderedKeys keys;
        auto next = aside.begin();
        const auto addAside = [&] {
            keys.add(next->text, next->key);
            ++next;
        };
        forEach([&](std::string_view text, std::int64_t key, bool alike) {
            if (!alike) return;
            while (next != aside.end() && standsBefore(*next, text, key))
                addAside();
            keys.add(text, key);
        });
        while (next != aside.end())
            addAside();
        return keys.taken();
    }

    Database& database_;
    Statement statement_;
    Bind bind_;
    Wanted wanted_;
};

// The keys of the rows with these marks, in the list's order.
Keys inOrder(Database& database, const tsql::TextOrder& order, const Keys& found) {
    if (found.empty()) return {};
    const Marks marks(found);
    if (!marks.areMany()) {
        const std::string keys = keyList(found);
        return KeysByText(
                   database, order.of, [&keys](sqlite3_stmt* statement) { bindKeyList(statement, keys); },
                   [](sqlite3_stmt*) { return true; })
            .sorted();
    }
    if (order.oneRowEach) {
        if (auto keys = keysStandingTogether(database, order, marks)) return std::move(*keys);
    }
    return KeysByText(
               database, order.all, [](sqlite3_stmt*) {},
               [&marks](sqlite3_stmt* row) { return marks.has(sqlite3_column_value(row, kMark)); })
        .reordered();
}

// The marks that a query gives; nothing where one of them is no whole number.
template <typename Bind>
std::optional<Keys> marksOf(Database& database, const std::string& text, Bind bind) {
    const Statement statement = database.prepareLasting(text);
    Keys marks;
    bool whole = true;
    runQuery(database, statement.get(), bind, [&](sqlite3_stmt* row) {
        const int type = sqlite3_column_type(row, 0);
        if (type == SQLITE_INTEGER) marks.push_back(sqlite3_column_int64(row, 0));
        whole = whole && (type == SQLITE_INTEGER || type == SQLITE_NULL);
    });
    if (!whole) return std::nullopt;
    return marks;
}

// Also a table whose rows have no key of SQLite's own is none to be read by them.
bool isSmall(Database& database, const std::string& greatestKey, std::int64_t smallTable) {
    try {
        const Statement greatest = database.prepareLasting(greatestKey);
        return sqlite3_step(greatest.get()) != SQLITE_ROW || sqlite3_column_int64(greatest.get(), 0) <= smallTable;
    } catch (const Failure&) {
        return true;
    }
}

}  // namespace

std::optional<tsql::KeyedList> longList(Database& database, std::string_view sql, const tsql::Shape& shape,
                                        std::int64_t smallTable) {
    // To take the query apart takes as long as to fetch a thousand rows.
    std::string& greatestKey = database.catalog().greatestKeyQuery(shape.key);
    if (!greatestKey.empty() && isSmall(database, greatestKey, smallTable)) return std::nullopt;
    auto list = tsql::keyedList(sql, database.catalog());
    if (!list) return std::nullopt;
    greatestKey = list->greatestKey;
    if (isSmall(database, greatestKey, smallTable)) return std::nullopt;
    return list;
}

Keys listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape) {
    using Order = tsql::KeyedList::Order;
    const auto bindTo = [&shape](const tsql::Translation& query) {
        return [&](sqlite3_stmt* statement) { bindLiterals(statement, query, shape); };
    };
    if (list.partner) {
        const auto& [query, order] = *list.partner;
        if (const auto marks = marksOf(database, query.statements[0], bindTo(query)))
            return inOrder(database, order, *marks);
    }
    const std::string& text = list.keys.statements[0];
    const auto bind = bindTo(list.keys);
    Keys keys = list.order == Order::ascii
                    ? KeysByText(database, text, bind, [](sqlite3_stmt*) { return true; }).reordered()
                    : keysOf(database, text, bind);
    if (list.order == Order::none) keys = inOrder(database, list.texts, keys);
    keys.shrink_to_fit();
    return keys;
}

}  // namespace orvenmod::store::sqlite
