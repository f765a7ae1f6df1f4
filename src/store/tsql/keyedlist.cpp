#include "store/tsql/keyedlist.h"

#include <algorithm>
#include <utility>

#include "store/tsql/binder.h"
#include "store/tsql/keyedshape.h"
#include "store/tsql/lexer.h"
#include "store/tsql/parser.h"
#include "store/tsql/sqlite_emitter.h"
#include "store/tsql/viewtext.h"

namespace orvenmod::store::tsql {
namespace {

constexpr const char* kKey = "\"orven.key\"";

std::string among(const std::string& key) { return " WHERE " + key + " IN (SELECT value FROM json_each(?1))"; }

/// A text of the driving table, as it stands in a query over that table alone.
struct TextColumn {
    std::string table;
    std::string name;
    std::string key;
};

bool hidesKey(const Query& view) {
    return std::ranges::any_of(view.columns,
                               [](const ColumnInfo& column) { return sameName(quoteName(column.name), kKey); });
}

std::vector<std::string> columnNames(const Query& query) {
    std::vector<std::string> names;
    for (const ColumnInfo& column : query.columns)
        names.push_back(column.name);
    return names;
}

/// A view's query with the key of its driving table, as the view itself is kept: in plain functions.
class ViewEmitter : public SqliteEmitter {
public:
    explicit ViewEmitter(const std::vector<Literal>& literals) : SqliteEmitter(literals) {
        translation_ = &unused_;
        stored_ = inline_ = true;
    }

    /// All of it, without the key.
    std::string whole(const Query& view) {
        const Names names = columnNames(view);
        return query(view, &names);
    }

    /// These columns of it, from the tables that they need.
    std::string keyed(const Query& view, const std::set<int>& columns) {
        const Source& from = *view.select->from[0];
        std::string text = "SELECT " + rowKey(drivingTable(from)) + " AS " + kKey;
        for (const int column : columns) {
            const auto at = static_cast<std::size_t>(column);
            text += ", " + value(*view.select->items[at].expression) + " AS " + quoteName(view.columns[at].name);
        }
        return text + " FROM " + joined(from, tablesNeeded(view, columns));
    }

    std::string tableText(const Source& table) { return source(table); }
    std::string columnText(const Expression& expression) { return column(expression); }
    std::string rowKey(const Source& table) { return quoteName(aliasOf(table)) + ".rowid"; }

private:
    std::string joined(const Source& from, const std::set<const Source*>& tables) {
        if (from.kind != Source::Kind::join) return source(from);
        const std::string left = joined(*from.left, tables);
        if (!tables.contains(from.right.get())) return left;
        return left + " LEFT JOIN " + source(*from.right) + " ON " + condition(*from.on);
    }

    Translation unused_;
};

/// The query of the list. Where it reads a view, that stands as its keyed text.
class ListEmitter : public SqliteEmitter {
public:
    ListEmitter(const std::vector<Literal>& literals, const Query& list) : SqliteEmitter(literals), list_(list) {}

    Translation keys(const std::string& view) {
        Translation translation = keysAsFound(view);
        translation.statements[0] += orderBy(list_, ItemNaming::byExpression) + ", " + key();
        return translation;
    }

    Translation keysAsFound(const std::string& view) {
        Translation translation;
        begin(view, translation);
        translation.statements.push_back("SELECT " + key() + rowsOf(list_));
        return translation;
    }

    Translation keysByText(const TextColumn& column) {
        Translation translation;
        begin("", translation);
        const std::string where = list_.select->where ? " WHERE " + condition(*list_.select->where) : std::string();
        translation.statements.push_back(texts(column, where) + byText(column));
        return translation;
    }

    /// The column in the equality form of texts, in front of each key.
    std::string texts(const TextColumn& column, const std::string& where) const {
        return "SELECT " + equalityForm(column.name) + ", " + column.key + " FROM " + column.table + where;
    }

    std::string byText(const TextColumn& column) const {
        return " ORDER BY " + equalityForm(column.name) + ", " + column.key;
    }

    Translation rows(const std::string& view) {
        Translation translation;
        begin(view, translation);
        addColumns(list_);
        translation.statements.push_back("SELECT " + items(*list_.select, nullptr) + ", " + key() + " FROM " +
                                         sources(list_.select->from) + among(key()));
        return translation;
    }

private:
    void begin(const std::string& view, Translation& translation) {
        view_ = view;
        translation_ = &translation;
    }
    std::string tableName(const ObjectInfo& object) const override {
        return view_.empty() ? SqliteEmitter::tableName(object) : derived(view_);
    }
    std::string key() {
        const std::string column = view_.empty() ? "rowid" : kKey;
        return quoteName(aliasOf(*list_.select->from[0])) + "." + column;
    }

    const Query& list_;
    std::string view_;
};

std::string greatestKeyOf(const Source& table) { return "SELECT max(rowid) FROM " + quoteName(table.object->name); }

KeyedList ofTable(const Query& list, const std::vector<Literal>& literals) {
    KeyedList result;
    result.greatestKey = greatestKeyOf(*list.select->from[0]);
    ListEmitter target(literals, list);
    result.keys = target.keys("");
    result.rows = target.rows("");
    return result;
}

std::optional<KeyedList> ofView(const Query& list, const std::vector<Literal>& literals, const Catalog& catalog) {
    const ViewDefinition definition = catalog.viewDefinition(*list.select->from[0]->object);
    if (definition.text.empty()) return std::nullopt;
    Parser parser(definition.text);
    Statement statement = parser.parse();
    auto* created = std::get_if<CreateViewStatement>(&statement);
    if (created == nullptr) return std::nullopt;
    Binder(catalog, parser.literals()).bindView(*created);
    const Query& view = *created->query;
    const auto emitter = [&parser] { return ViewEmitter(parser.literals()); };
    // What reads it by its name must see the same rows.
    if (emitter().whole(view) != definition.native) return std::nullopt;
    if (!isViewByKeys(view, catalog) || hidesKey(view)) return std::nullopt;
    const Source& table = drivingTable(*view.select->from[0]);
    if (!hasRowKey(table)) return std::nullopt;

    KeyedList result;
    result.greatestKey = greatestKeyOf(table);
    ListEmitter target(literals, list);
    const Expression* column = columnOfOrder(list, view, parser.literals());
    const ConditionOn condition = column == nullptr ? ConditionOn::drivingTable : conditionOn(list, view);
    const std::string rows = emitter().keyed(view, columnsNamed(list, Clauses::conditionAndOrder));
    if (condition == ConditionOn::drivingTable) {
        result.keys = target.keys(rows);
    } else {
        ViewEmitter names = emitter();
        const TextColumn text{names.tableText(table), names.columnText(*column), names.rowKey(table)};
        if (condition == ConditionOn::nothing) {
            result.order = KeyedList::Order::ascii;
            result.keys = target.keysByText(text);
        } else {
            result.order = KeyedList::Order::none;
            result.keys = target.keysAsFound(rows);
            result.texts = target.texts(text, "") + target.byText(text);
            result.textsOf = target.texts(text, among(text.key));
        }
    }
    result.rows = target.rows(emitter().keyed(view, columnsNamed(list, Clauses::items)));
    return result;
}

}  // namespace

std::optional<KeyedList> keyedList(std::string_view sql, const Catalog& catalog) {
    Parser parser(sql);
    Statement statement = parser.parse();
    auto* query = std::get_if<QueryStatement>(&statement);
    if (query == nullptr || (query->query->select && !query->query->select->into.empty())) return std::nullopt;
    Binder(catalog, parser.literals()).bind(statement);
    const Query& list = *query->query;
    if (!isListOfColumns(list)) return std::nullopt;
    const Source& source = *list.select->from[0];
    if (source.object->kind == ObjectInfo::Kind::view) return ofView(list, parser.literals(), catalog);
    return hasRowKey(source) ? std::optional(ofTable(list, parser.literals())) : std::nullopt;
}

}  // namespace orvenmod::store::tsql
