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
#include <string>

#include "store/sqlite/binding.h"
#include "store/tsql/textorder.h"

namespace orvenmod::store::sqlite {

namespace {

using Keys = std::vector<std::int64_t>;

struct TextKey {
    std::string text;
    std::int64_t key = 0;
};

// Texts that are equal stand in the order of their keys.
bool standsBefore(const TextKey& left, std::string_view text, std::int64_t key) {
    const int order = tsql::compareTexts(left.text, text);
    return order < 0 || (order == 0 && left.key < key);
}

// Signs from '{' on stand behind the letters for NOCASE, and a zero ends the text.
bool isOrderedAlike(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > 0 && c < '{'; });
}

// Runs a query of keys. `bind` binds its parameters, `take` gets it on each row.
template <typename Bind, typename Take>
void run(Database& database, sqlite3_stmt* statement, Bind bind, Take take) {
    const ResetStatement reset(statement);
    database.runtime().startStatement();
    bind(statement);
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement))
        take(statement);
    if (code != SQLITE_DONE) database.fail(code);
}

template <typename Bind>
Keys keysOf(Database& database, const std::string& text, Bind bind) {
    const Statement statement = database.prepareLasting(text);
    Keys keys;
    run(database, statement.get(), bind, [&keys](sqlite3_stmt* row) { keys.push_back(sqlite3_column_int64(row, 0)); });
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
        Keys keys;
        std::vector<TextKey> aside;
        forEach([&](std::string_view text, std::int64_t key, bool alike) {
            if (alike) {
                keys.push_back(key);
            } else {
                aside.push_back({std::string(text), key});
            }
        });
        return aside.empty() ? keys : merged(std::move(aside), keys.size());
    }

private:
    template <typename Take>
    void forEach(Take take) {
        run(database_, statement_.get(), bind_, [&](sqlite3_stmt* row) {
            const std::int64_t key = sqlite3_column_int64(row, 1);
            if (!wanted_(key)) return;
            // A null counts as the empty text, and comes before it.
            const bool null = sqlite3_column_type(row, 0) == SQLITE_NULL;
            const std::string_view text = null ? "" : textOf(sqlite3_column_value(row, 0));
            take(text, key, !null && isOrderedAlike(text));
        });
    }

    static void sort(std::vector<TextKey>& texts) {
        std::sort(texts.begin(), texts.end(),
                  [](const TextKey& left, const TextKey& right) { return standsBefore(left, right.text, right.key); });
    }

    Keys merged(std::vector<TextKey> aside, std::size_t others) {
        sort(aside);
        Keys keys;
        keys.reserve(aside.size() + others);
        auto next = aside.begin();
        forEach([&](std::string_view text, std::int64_t key, bool alike) {
            if (!alike) return;
            for (; next != aside.end() && standsBefore(*next, text, key); ++next)
                keys.push_back(next->key);
            keys.push_back(key);
        });
        for (; next != aside.end(); ++next)
            keys.push_back(next->key);
        return keys;
    }

    Database& database_;
    Statement statement_;
    Bind bind_;
    Wanted wanted_;
};

// So many of all rows that to pass through all in their order takes less than to fetch the text of each.
bool areMany(const Keys& keys, std::int64_t greatest) {
    constexpr std::int64_t kShare = 16;
    return static_cast<std::int64_t>(keys.size()) > greatest / kShare;
}

// Keys as they were found, put into the list's order.
Keys inOrder(Database& database, const tsql::KeyedList& list, const Keys& found) {
    if (found.empty()) return {};
    const auto [least, greatest] = std::minmax_element(found.begin(), found.end());
    if (*least < 0 || !areMany(found, *greatest)) {
        const std::string keys = keyList(found);
        return KeysByText(
                   database, list.textsOf, [&keys](sqlite3_stmt* statement) { bindKeyList(statement, keys); },
                   [](std::int64_t) { return true; })
            .sorted();
    }
    std::vector<bool> wanted(static_cast<std::size_t>(*greatest) + 1);
    for (const std::int64_t key : found)
        wanted[static_cast<std::size_t>(key)] = true;
    return KeysByText(
               database, list.texts, [](sqlite3_stmt*) {},
               [&wanted](std::int64_t key) {
                   return key >= 0 && static_cast<std::size_t>(key) < wanted.size() &&
                          wanted[static_cast<std::size_t>(key)];
               })
        .reordered();
}

}  // namespace

std::string keyList(std::span<const std::int64_t> keys) {
    std::string list = "[";
    for (const std::int64_t key : keys)
        list.append(list.size() > 1 ? "," : "").append(std::to_string(key));
    return list + "]";
}

void bindKeyList(sqlite3_stmt* statement, const std::string& keys) {
    checkBound(sqlite3_bind_text64(statement, 1, keys.data(), keys.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

std::vector<std::int64_t> listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape) {
    using Order = tsql::KeyedList::Order;
    const std::string& text = list.keys.statements[0];
    const auto bind = [&](sqlite3_stmt* statement) { bindLiterals(statement, list.keys, shape); };
    Keys keys = list.order == Order::ascii
                    ? KeysByText(database, text, bind, [](std::int64_t) { return true; }).reordered()
                    : keysOf(database, text, bind);
    if (list.order == Order::none) keys = inOrder(database, list, keys);
    keys.shrink_to_fit();
    return keys;
}

}  // namespace orvenmod::store::sqlite
