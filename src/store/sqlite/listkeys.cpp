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

class KeyQuery {
public:
    KeyQuery(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape)
        : database_(database),
          list_(list),
          shape_(shape),
          statement_(database.prepareLasting(list.keys.statements[0])) {}

    Keys inOrder() {
        Keys keys;
        run([&keys](sqlite3_stmt* statement) { keys.push_back(sqlite3_column_int64(statement, 0)); });
        return keys;
    }

    Keys byText() {
        Keys keys;
        std::vector<TextKey> aside;
        run([&](sqlite3_stmt* statement) {
            const std::int64_t key = sqlite3_column_int64(statement, 1);
            // A null counts as the empty text, and comes before it.
            const bool null = sqlite3_column_type(statement, 0) == SQLITE_NULL;
            const std::string_view text = null ? "" : textOf(sqlite3_column_value(statement, 0));
            if (!null && isOrderedAlike(text)) {
                keys.push_back(key);
            } else {
                aside.push_back({std::string(text), key});
            }
        });
        return aside.empty() ? keys : merged(std::move(aside), keys.size());
    }

private:
    template <typename Take>
    void run(Take take) {
        sqlite3_stmt* statement = statement_.get();
        const ResetStatement reset(statement);
        database_.runtime().startStatement();
        bindLiterals(statement, list_.keys, shape_);
        int code = sqlite3_step(statement);
        for (; code == SQLITE_ROW; code = sqlite3_step(statement))
            take(statement);
        if (code != SQLITE_DONE) database_.fail(code);
    }

    Keys merged(std::vector<TextKey> aside, std::size_t others) {
        std::sort(aside.begin(), aside.end(),
                  [](const TextKey& left, const TextKey& right) { return standsBefore(left, right.text, right.key); });
        Keys keys;
        keys.reserve(aside.size() + others);
        auto next = aside.begin();
        run([&](sqlite3_stmt* statement) {
            if (sqlite3_column_type(statement, 0) == SQLITE_NULL) return;
            const std::string_view text = textOf(sqlite3_column_value(statement, 0));
            if (!isOrderedAlike(text)) return;
            const std::int64_t key = sqlite3_column_int64(statement, 1);
            for (; next != aside.end() && standsBefore(*next, text, key); ++next)
                keys.push_back(next->key);
            keys.push_back(key);
        });
        for (; next != aside.end(); ++next)
            keys.push_back(next->key);
        return keys;
    }

    Database& database_;
    const tsql::KeyedList& list_;
    const tsql::Shape& shape_;
    Statement statement_;
};

}  // namespace

std::vector<std::int64_t> listKeys(Database& database, const tsql::KeyedList& list, const tsql::Shape& shape) {
    KeyQuery query(database, list, shape);
    Keys keys = list.order == tsql::KeyedList::Order::told ? query.inOrder() : query.byText();
    keys.shrink_to_fit();
    return keys;
}

}  // namespace orvenmod::store::sqlite
