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

/// ".1.17.%", as a category asks for all below it.
bool isPathAndAll(std::string_view pattern) {
    return pattern.size() > 1 && pattern.find_first_not_of("0123456789.") == pattern.size() - 1 &&
           pattern.back() == '%';
}

std::string among(const std::string& key) { return " WHERE " + key + " IN (SELECT value FROM json_each(?1))"; }

std::string withinKeys(const std::string& key) { return " WHERE " + key + " BETWEEN ?1 AND ?2 ORDER BY " + key; }

/// A text of the driving table, as it stands in a query over that table alone.
struct TextColumn {
    std::string table;
    std::string name;
    std::string key;
    std::string mark;
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
        return columnsOf(view, columns, rowKey(drivingTable(from))) + " FROM " +
               joined(from, tablesNeeded(view, columns));
    }

    /// These columns of it that are of one joined table, and a column of that for the key.
    std::string partner(const Query& view, const Partner& partner, const std::set<int>& columns) {
        return columnsOf(view, columns, column(*partner.key)) + " FROM " + source(*partner.table);
    }

    std::string tableText(const Source& table) { return source(table); }
    std::string columnText(const Expression& expression) { return column(expression); }
    std::string rowKey(const Source& table) { return quoteName(aliasOf(table)) + ".rowid"; }

private:
    std::string columnsOf(const Query& view, const std::set<int>& columns, const std::string& key) {
        std::string text = "SELECT " + key + " AS " + kKey;
        for (const int column : columns) {
            const auto at = static_cast<std::size_t>(column);
            text += ", " + value(*view.select->items[at].expression) + " AS " + quoteName(view.columns[at].name);
        }
        return text;
    }

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

    Translation partners(const std::string& view) {
        standsAlone_ = true;
        return keysAsFound(view);
    }

    TextOrder textOrder(const TextColumn& column) const {
        const std::string text = equalityForm(column.name);
        TextOrder order;
        order.all = texts(column, "") + byText(column);
        order.from = texts(column, " WHERE " + text + " >= ?1") + byText(column);
        order.before = texts(column, " WHERE " + text + " < ?1") + byText(column) + " DESC";
        order.of = texts(column, among(column.mark));
        return order;
    }

    Translation rows(const std::string& view) {
        Translation translation = allRows(view);
        translation.statements[0] += among(key());
        return translation;
    }

    Translation walk(const std::string& view) {
        Translation translation = allRows(view);
        translation.statements[0] += withinKeys(key());
        return translation;
    }

private:
    std::string texts(const TextColumn& column, const std::string& where) const {
        return "SELECT " + equalityForm(column.name) + ", " + column.key + ", " + column.mark + " FROM " +
               column.table + where;
    }
    std::string byText(const TextColumn& column) const { return " ORDER BY " + equalityForm(column.name); }

    // This text serves no other literals, so that their values may be asked for.
    std::string like(const Expression& expression) override {
        const bool bounded =
            standsAlone_ && mayUseIndex(expression) && isPathAndAll(literalOf(*expression.operands[1]).text);
        return bounded ? "(" + likeBounds(expression) + ")" : SqliteEmitter::like(expression);
    }

    Translation allRows(const std::string& view) {
        Translation translation;
        begin(view, translation);
        addColumns(list_);
        const std::string columns = list_.select->items.empty() ? "" : items(*list_.select, nullptr) + ", ";
        translation.statements.push_back("SELECT " + columns + key() + " FROM " + sources(list_.select->from));
        return translation;
    }

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
    bool standsAlone_ = false;  // it joins nothing
};

const std::string& nameOf(const Expression& column) {
    return column.source->columns[static_cast<std::size_t>(column.column)].name;
}

/// Whether the index by a text has another column of the table.
bool isCarried(const Expression& text, const Expression& column, const Catalog& catalog) {
    return catalog.isCarried(*text.source->object, nameOf(text), nameOf(column));
}

std::string greatestKeyOf(const Source& table) { return "SELECT max(rowid) FROM " + quoteName(table.object->name); }

KeyedList ofTable(const Query& list, const std::vector<Literal>& literals) {
    KeyedList result;
    result.greatestKey = greatestKeyOf(*list.select->from[0]);
    ListEmitter target(literals, list);
    result.keys = target.keys("");
    result.rows = target.rows("");
    return result;
}

/// A view that was made here, bound anew from its own text.
class BoundView {
public:
    BoundView(const Source& source, const Catalog& catalog)
        : definition_(catalog.viewDefinition(*source.object)), parser_(definition_.text) {
        if (definition_.text.empty()) return;
        statement_ = parser_.parse();
        auto* created = std::get_if<CreateViewStatement>(&statement_);
        if (created == nullptr) return;
        Binder(catalog, parser_.literals()).bindView(*created);
        query_ = created->query.get();
    }
    BoundView(const BoundView&) = delete;
    BoundView& operator=(const BoundView&) = delete;

    bool isByKeys(const Catalog& catalog) const {
        // What reads it by its name must see the same rows.
        return query_ != nullptr && emitter().whole(*query_) == definition_.native && isViewByKeys(*query_, catalog) &&
               !hidesKey(*query_) && hasRowKey(table());
    }
    const Query& query() const { return *query_; }
    const Source& table() const { return drivingTable(*query_->select->from[0]); }
    const std::vector<Literal>& literals() const { return parser_.literals(); }
    ViewEmitter emitter() const { return ViewEmitter(literals()); }

private:
    ViewDefinition definition_;
    Parser parser_;
    Statement statement_;
    const Query* query_ = nullptr;
};

std::optional<KeyedList> ofView(const Query& list, const std::vector<Literal>& literals, const Catalog& catalog) {
    const BoundView bound(*list.select->from[0], catalog);
    if (!bound.isByKeys(catalog)) return std::nullopt;
    const Query& view = bound.query();
    const Source& table = bound.table();
    const auto emitter = [&bound] { return bound.emitter(); };

    KeyedList result;
    result.greatestKey = greatestKeyOf(table);
    ListEmitter target(literals, list);
    const Expression* column = columnOfOrder(list, view, bound.literals());
    const ConditionOn condition = column == nullptr ? ConditionOn::drivingTable : conditionOn(list, view);
    const std::string rows = emitter().keyed(view, columnsNamed(list, Clauses::conditionAndOrder));
    if (condition == ConditionOn::drivingTable) {
        result.keys = target.keys(rows);
    } else {
        ViewEmitter names = emitter();
        const std::string key = names.rowKey(table);
        const TextColumn text{names.tableText(table), names.columnText(*column), key, key};
        if (condition == ConditionOn::nothing) {
            result.order = KeyedList::Order::ascii;
            result.keys = target.keysByText(text);
        } else {
            result.order = KeyedList::Order::none;
            result.keys = target.keysAsFound(rows);
            result.texts = target.textOrder(text);
            const auto partner = partnerOf(list, view);
            if (partner && isCarried(*column, *partner->reference, catalog)) {
                const TextColumn marked{text.table, text.name, text.key, names.columnText(*partner->reference)};
                result.partner = PartnerList{
                    ListEmitter(literals, list)
                        .partners(emitter().partner(view, *partner, columnsNamed(list, Clauses::condition))),
                    target.textOrder(marked)};
                result.partner->order.oneRowEach = catalog.isKey(*table.object, nameOf(*partner->reference));
            }
        }
    }
    result.rows = target.rows(emitter().keyed(view, columnsNamed(list, Clauses::items)));
    return result;
}

bool readsView(const Query& list) { return list.select->from[0]->object->kind == ObjectInfo::Kind::view; }

/// Leaves these of the list's columns, in their order.
void keepColumns(Query& list, std::span<const int> columns) {
    std::vector<SelectItem> items;
    std::vector<ColumnInfo> infos;
    for (const int column : columns) {
        const auto at = static_cast<std::size_t>(column);
        items.push_back(std::move(list.select->items.at(at)));
        infos.push_back(std::move(list.columns.at(at)));
    }
    list.select->items = std::move(items);
    list.columns = std::move(infos);
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
    if (readsView(list)) return ofView(list, parser.literals(), catalog);
    return hasRowKey(*list.select->from[0]) ? std::optional(ofTable(list, parser.literals())) : std::nullopt;
}

Translation keyedWalk(std::string_view sql, const Catalog& catalog, std::span<const int> columns) {
    Parser parser(sql);
    Statement statement = parser.parse();
    Binder(catalog, parser.literals()).bind(statement);
    Query& list = *std::get<QueryStatement>(statement).query;
    keepColumns(list, columns);
    ListEmitter target(parser.literals(), list);
    if (!readsView(list)) return target.walk("");
    const BoundView view(*list.select->from[0], catalog);
    return target.walk(view.emitter().keyed(view.query(), columnsNamed(list, Clauses::items)));
}

}  // namespace orvenmod::store::tsql
