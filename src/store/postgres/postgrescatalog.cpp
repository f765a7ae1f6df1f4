#include "store/postgres/postgrescatalog.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "store/postgres/failures.h"
#include "store/postgres/session.h"
#include "store/text.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/runtime.h"
#include "store/tsql/translator.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::postgres {

namespace {

// A number that is read first can only be too low for what is read behind it, which the next statement notices.
constexpr const char* kVersion = "SELECT number FROM orven.schema_version";

constexpr const char* kColumns =
    "SELECT c.relname, c.relkind IN ('v', 'm'), obj_description(c.oid, 'pg_class'), a.attname, "
    "format_type(a.atttypid, a.atttypmod), d.description, a.attnotnull, a.atthasdef, a.attidentity <> '' "
    "FROM pg_class c LEFT JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
    "LEFT JOIN pg_description d ON d.objoid = c.oid AND d.classoid = 'pg_class'::regclass AND d.objsubid = a.attnum "
    "WHERE c.relnamespace = to_regnamespace(current_schema()) AND c.relkind IN ('r', 'p', 'f', 'v', 'm') "
    "AND ($1::text IS NULL OR c.relname = $1) ORDER BY c.relname, a.attnum";
enum ColumnField {
    objectName,
    isView,
    objectComment,
    columnName,
    nativeType,
    columnComment,
    notNull,
    hasDefault,
    isIdentity
};

constexpr const char* kIndexes =
    "SELECT t.relname, i.relname, obj_description(i.oid, 'pg_class'), x.indisprimary, x.indisunique, "
    "CASE WHEN x.indpred IS NULL THEN (SELECT string_agg(a.attname, chr(31) ORDER BY k.place) "
    "FROM unnest(x.indkey) WITH ORDINALITY k(number, place) JOIN pg_attribute a ON a.attrelid = x.indrelid "
    "AND a.attnum = k.number WHERE k.place <= x.indnkeyatts) END, x.indexprs IS NOT NULL, "
    "pg_get_expr(x.indexprs, x.indrelid) LIKE 'length(rtrim(%, length(translate(%' FROM pg_index x "
    "JOIN pg_class t ON t.oid = x.indrelid JOIN pg_class i ON i.oid = x.indexrelid "
    "WHERE t.relnamespace = to_regnamespace(current_schema()) AND ($1::text IS NULL OR t.relname = $1) "
    "ORDER BY x.indisprimary DESC, i.oid";
enum IndexField {
    tableName,
    indexName,
    indexComment,
    isPrimary,
    isUnique,
    indexedColumns,
    hasExpressions,
    servesCodes
};
constexpr char kBetweenNames = '\x1f';

// The type of a column that was made by hand.
tsql::Type nativeColumnType(std::string_view native) {
    struct Name {
        std::string_view native;
        tsql::Kind kind;
    };
    constexpr Name kNames[] = {
        {"boolean", tsql::Kind::bit},     {"smallint", tsql::Kind::smallint},
        {"integer", tsql::Kind::integer}, {"bigint", tsql::Kind::bigint},
        {"real", tsql::Kind::real},       {"double precision", tsql::Kind::floating},
        {"date", tsql::Kind::date},       {"uuid", tsql::Kind::uniqueidentifier},
        {"bytea", tsql::Kind::image},     {"numeric", tsql::Kind::floating},
    };
    for (const Name& name : kNames) {
        if (name.native == native) return tsql::typeOf(name.kind);
    }
    if (native.starts_with("numeric")) {
        const auto type = tsql::parseType(native);
        return type ? *type : tsql::typeOf(tsql::Kind::floating);
    }
    if (native.starts_with("timestamp")) return tsql::typeOf(tsql::Kind::datetime);
    if (native.starts_with("time")) return tsql::typeOf(tsql::Kind::time);
    constexpr std::string_view kVarying = "character varying(";
    int length = 0;
    if (native.starts_with(kVarying))
        std::from_chars(native.data() + kVarying.size(), native.data() + native.size(), length);
    const bool bounded = length > 0 && length <= tsql::kMostNvarchar;
    return tsql::textType(tsql::Kind::nvarchar, bounded ? length : -1);
}

// "fNumber varchar(30)" of a column fnumber. A name may hold blanks, so that the first split with a type behind it
// counts.
bool readDeclaration(std::string_view comment, std::string_view native, tsql::ColumnInfo& column) {
    comment = comment.substr(0, comment.find(tsql::kCommentBreak));
    for (auto blank = comment.find(' '); blank != std::string_view::npos; blank = comment.find(' ', blank + 1)) {
        const std::string_view name = comment.substr(0, blank);
        const std::string_view declared = comment.substr(blank + 1);
        const auto type = tsql::parseType(declared);
        if (!type || tsql::nativeName(name) != native) continue;
        column.name = name;
        column.type = *type;
        column.declaredType = declared;
        return true;
    }
    return false;
}

tsql::ColumnInfo columnOf(const PGresult* rows, int row) {
    tsql::ColumnInfo column;
    const std::string_view native = textOf(rows, row, columnName);
    if (!readDeclaration(textOf(rows, row, columnComment), native, column)) {
        column.name = native;
        if (tsql::nativeName(native) != native) column.nativeName = native;
        column.type = nativeColumnType(textOf(rows, row, nativeType));
        column.declaredType = tsql::printType(column.type);
    }
    column.nullable = !isTrue(rows, row, notNull);
    column.hasDefault = isTrue(rows, row, hasDefault);
    column.identity = isTrue(rows, row, isIdentity);
    return column;
}

// The name out of a table's comment; a comment that somebody wrote is none.
std::string declaredName(std::string_view comment, std::string_view native) {
    return std::string(tsql::nativeName(comment) == native ? comment : native);
}

// An index as the dialect's tables keep it: of t.constraint.pk.pk_t, whose comment is PK_t, T.constraint.pk.PK_t.
std::string keptIndex(const std::string& table, std::string_view native, std::string_view comment) {
    for (const std::string_view infix : {tsql::kPrimaryKeyInfix, tsql::kUniqueInfix, std::string_view(".")}) {
        std::string kept = table + std::string(infix) + std::string(comment);
        if (tsql::nativeName(kept) == native) return kept;
    }
    return std::string(native);
}

// The columns of an index that stand in it as they are.
std::vector<std::string> plainColumns(const PGresult* rows, int row) {
    std::vector<std::string> columns;
    const std::string_view names = textOf(rows, row, indexedColumns);
    for (std::size_t at = 0; at < names.size();) {
        const std::size_t end = std::min(names.find(kBetweenNames, at), names.size());
        columns.emplace_back(names.substr(at, end - at));
        at = end + 1;
    }
    return columns;
}

// The columns of an index, where the order of an index is that of their values: of texts it isn't. Rows whose columns
// are equal keep the order in which they lie.
std::vector<std::string> orderOf(const PGresult* rows, int row, const tsql::ObjectInfo& table) {
    if (isTrue(rows, row, hasExpressions)) return {};
    std::vector<std::string> order = plainColumns(rows, row);
    for (const tsql::ColumnInfo& column : table.columns) {
        const bool indexed = std::find(order.begin(), order.end(), tsql::nativeNameOf(column)) != order.end();
        if (indexed && column.type.isText()) return {};
    }
    if (!order.empty() && !isTrue(rows, row, isUnique)) order.emplace_back("ctid");
    return order;
}

bool isViewText(std::string_view comment) {
    const std::string start = asciiLower(trimmed(comment).substr(0, 7));
    return start == "create " || start.starts_with("alter ");
}

}  // namespace

void PostgresCatalog::clear() {
    known_ = false;
    forgotten_.clear();
    objects_.clear();
}

void PostgresCatalog::forget(const std::string& object) {
    forgotten_.push_back(tsql::nativeName(object));
    for (auto& [name, known] : objects_)
        known->bound = known->viewText.empty();
}

bool PostgresCatalog::refreshed() {
    if (known_) return false;
    readAll();
    return true;
}

const tsql::ObjectInfo* PostgresCatalog::find(std::string_view name) const {
    if (!known_) readAll();
    const std::string native = tsql::nativeName(name);
    // Only when it is asked for: the statements behind a definition mostly concern others.
    if (std::find(forgotten_.begin(), forgotten_.end(), native) != forgotten_.end()) readForgotten();
    const auto found = objects_.find(native);
    if (found == objects_.end()) return nullptr;
    Object& object = *found->second;
    if (!object.bound) {
        // Only now, since a view may stand on others, and many are never asked for.
        object.info.columns = tsql::viewColumns(object.viewText, *this);
        object.bound = true;
    }
    return &object.info;
}

void PostgresCatalog::readAll() const {
    Parameters everything;
    everything.addNull();
    session_.queueText(kVersion);
    session_.queueText(kColumns, everything);
    session_.queueText(kIndexes, everything);
    const Answer answer = session_.send();
    if (const PGresult* failure = answer.failure()) throw reported(failure, session_.address());
    objects_.clear();
    forgotten_.clear();
    const std::string_view number = textOf(answer.results[0].get(), 0, 0);
    std::from_chars(number.data(), number.data() + number.size(), version_);
    addColumns(answer.results[1].get());
    addIndexes(answer.results[2].get());
    known_ = true;
}

void PostgresCatalog::readForgotten() const {
    const std::vector<std::string> names = std::exchange(forgotten_, {});
    for (const std::string& name : names) {
        objects_.erase(name);
        Parameters one;
        one.addText(name);
        session_.queueText(kColumns, one);
        session_.queueText(kIndexes, one);
    }
    const Answer answer = session_.send();
    if (const PGresult* failure = answer.failure()) throw reported(failure, session_.address());
    for (std::size_t i = 0; i < answer.results.size(); i += 2) {
        addColumns(answer.results[i].get());
        addIndexes(answer.results[i + 1].get());
    }
}

void PostgresCatalog::addColumns(const PGresult* rows) const {
    for (int row = 0; row < PQntuples(rows); ++row) {
        const std::string_view native = textOf(rows, row, objectName);
        std::unique_ptr<Object>& object = objects_[tsql::nativeName(native)];
        if (!object) {
            object = std::make_unique<Object>();
            const bool view = isTrue(rows, row, isView);
            const std::string_view comment = textOf(rows, row, objectComment);
            object->info.kind = view ? tsql::ObjectInfo::Kind::view : tsql::ObjectInfo::Kind::table;
            object->info.name = declaredName(comment, native);
            if (tsql::nativeName(object->info.name) != native) object->info.nativeName = native;
            if (view && isViewText(comment)) object->viewText = comment;
            object->bound = object->viewText.empty();
        }
        if (PQgetisnull(rows, row, columnName) != 0) continue;
        object->info.columns.push_back(columnOf(rows, row));
        if (object->info.columns.back().identity) object->info.rowOrder = {std::string(textOf(rows, row, columnName))};
    }
}

void PostgresCatalog::addIndexes(const PGresult* rows) const {
    for (int row = 0; row < PQntuples(rows); ++row) {
        const auto found = objects_.find(tsql::nativeName(textOf(rows, row, tableName)));
        if (found == objects_.end()) continue;
        tsql::ObjectInfo& table = found->second->info;
        table.indexes.push_back(keptIndex(table.name, textOf(rows, row, indexName), textOf(rows, row, indexComment)));
        if (isTrue(rows, row, servesCodes)) {
            std::vector<std::string> columns = plainColumns(rows, row);
            std::string code = std::move(columns.back());
            columns.pop_back();
            table.codeIndexes.push_back({std::move(columns), std::move(code)});
        }
        if (table.rowOrder.empty() || isTrue(rows, row, isPrimary)) {
            std::vector<std::string> order = orderOf(rows, row, table);
            if (!order.empty()) table.rowOrder = std::move(order);
        }
    }
}

bool PostgresCatalog::isQuoted(const std::string& object) const {
    const auto found = objects_.find(tsql::nativeName(object));
    return found != objects_.end() && !found->second->info.nativeName.empty();
}

std::string PostgresCatalog::declaredTable(const std::string& native) const {
    const auto found = objects_.find(tsql::nativeName(native));
    return found == objects_.end() ? native : found->second->info.name;
}

std::string PostgresCatalog::declaredColumn(const std::string& table, const std::string& native) const {
    const auto found = objects_.find(tsql::nativeName(table));
    if (found == objects_.end()) return native;
    for (const tsql::ColumnInfo& column : found->second->info.columns) {
        if (tsql::nativeName(column.name) == native) return column.name;
    }
    return native;
}

}  // namespace orvenmod::store::postgres
