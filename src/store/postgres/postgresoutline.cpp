// The outline of a database: names and types by the catalog, and what the dialect said of defaults, checks and views
// from the comments. What somebody made by hand comes as the server words it.
//
//   comment on column    fMade datetime, getdate() on the line behind     default getdate()
//   none, now()                                                           default now()
#include "store/postgres/postgresoutline.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "store/postgres/failures.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/postgresnames.h"
#include "store/tsql/runtime.h"

namespace orvenmod::store::postgres {

namespace {

constexpr const char* kOwnInfix = ".orven.";

// What a column takes by itself, and the number that it gives next.
constexpr const char* kColumns =
    "SELECT c.relname, a.attname, d.description, pg_get_expr(v.adbin, v.adrelid), a.attidentity <> '', "
    "coalesce(pg_sequence_last_value(s.seqrelid) + 1, s.seqstart), a.attgenerated <> '' "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
    "LEFT JOIN pg_description d ON d.objoid = c.oid AND d.classoid = 'pg_class'::regclass AND d.objsubid = a.attnum "
    "LEFT JOIN pg_attrdef v ON v.adrelid = c.oid AND v.adnum = a.attnum "
    "LEFT JOIN pg_depend p ON a.attidentity <> '' AND p.refclassid = 'pg_class'::regclass AND p.refobjid = c.oid "
    "AND p.refobjsubid = a.attnum AND p.deptype = 'i' AND p.classid = 'pg_class'::regclass "
    "LEFT JOIN pg_sequence s ON s.seqrelid = p.objid "
    "WHERE c.relnamespace = to_regnamespace(current_schema()) AND c.relkind IN ('r', 'p') ORDER BY c.oid, a.attnum";
enum ColumnField { tableOf, columnOf, columnComment, columnDefault, isIdentity, nextNumber, isGenerated };

// The columns of an index in their order: a number, or of an expression, which has one column, that column's.
constexpr const char* kIndexes =
    "SELECT t.relname, i.relname, obj_description(i.oid, 'pg_class'), x.indisunique, coalesce(k.contype::text, ''), "
    "x.indpred IS NOT NULL, coalesce(a.attname, e.attname), coalesce((x.indoption[n - 1] & 1) = 1, false), "
    "n > x.indnkeyatts, pg_get_indexdef(i.oid, n, false) "
    "FROM pg_index x JOIN pg_class t ON t.oid = x.indrelid JOIN pg_class i ON i.oid = x.indexrelid "
    "LEFT JOIN pg_constraint k ON k.conindid = i.oid AND k.contype IN ('p', 'u', 'x') "
    "CROSS JOIN LATERAL generate_series(1, x.indnatts) n "
    "LEFT JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = x.indkey[n - 1] AND a.attnum > 0 "
    "LEFT JOIN LATERAL (SELECT (array_agg(m[1]::int))[(SELECT count(*) FROM generate_series(1, n) q "
    "WHERE x.indkey[q - 1] = 0)] AS number FROM regexp_matches(x.indexprs::text, ':varattno (\\d+)', 'g') m) v "
    "ON x.indkey[n - 1] = 0 "
    "LEFT JOIN pg_attribute e ON e.attrelid = t.oid AND e.attnum = v.number "
    "WHERE t.relnamespace = to_regnamespace(current_schema()) AND t.relkind IN ('r', 'p') "
    "ORDER BY t.oid, i.oid, n";
enum IndexField {
    indexTable,
    indexName,
    indexComment,
    isUnique,
    constraintKind,
    isPartial,
    indexColumn,
    isDescending,
    isIncluded,
    partText
};

constexpr const char* kChecks =
    "SELECT t.relname, k.conname, obj_description(k.oid, 'pg_constraint'), k.contype::text, "
    "pg_get_expr(k.conbin, k.conrelid) FROM pg_constraint k JOIN pg_class t ON t.oid = k.conrelid "
    "WHERE t.relnamespace = to_regnamespace(current_schema()) AND k.contype IN ('c', 'f') ORDER BY k.oid";
enum CheckField { checkTable, checkName, checkComment, checkKind, checkExpression };

constexpr const char* kViews =
    "SELECT c.relname, obj_description(c.oid, 'pg_class'), pg_get_viewdef(c.oid) FROM pg_class c "
    "WHERE c.relnamespace = to_regnamespace(current_schema()) AND c.relkind = 'v' ORDER BY c.oid";

constexpr const char* kOthers =
    "SELECT CASE relkind WHEN 'f' THEN 'foreign table ' ELSE 'materialized view ' END || relname FROM pg_class "
    "WHERE relnamespace = to_regnamespace(current_schema()) AND relkind IN ('f', 'm') "
    "UNION ALL SELECT 'trigger ' || g.tgname FROM pg_trigger g JOIN pg_class t ON t.oid = g.tgrelid "
    "WHERE t.relnamespace = to_regnamespace(current_schema()) AND NOT g.tgisinternal "
    "UNION ALL SELECT 'function ' || proname FROM pg_proc WHERE pronamespace = to_regnamespace(current_schema())";

std::string text(const PGresult* rows, int row, int column) { return std::string(textOf(rows, row, column)); }

/// The dialect's own text behind a declaration; empty for none.
std::string ownText(const std::string& comment) {
    const std::size_t end = comment.find(tsql::kCommentBreak);
    return end == std::string::npos ? std::string() : comment.substr(end + 1);
}

/// 'x'::character varying as 'x'.
std::string withoutCast(const std::string& expression) {
    const bool constant = expression.starts_with('\'') && expression.find("'::") != std::string::npos;
    return constant ? expression.substr(0, expression.find("'::") + 1) : expression;
}

/// The name that was declared, where a comment tells one that the database has in its own way.
std::string indexNameOf(const std::string& comment, const std::string& native, const std::string& table) {
    if (!comment.empty()) return comment;
    return native.starts_with(table + ".") ? native.substr(table.size() + 1) : native;
}

class Reader {
public:
    explicit Reader(Session& session) : session_(session) {}

    Outline read() {
        session_.catalog().clear();
        session_.catalog().refreshed();
        for (const char* query : {kColumns, kIndexes, kChecks, kViews, kOthers})
            session_.queueText(query);
        const Answer answer = session_.send();
        if (const PGresult* failure = answer.failure()) throw reported(failure, session_.address());
        readColumns(answer.results[0].get());
        readIndexes(answer.results[1].get());
        readChecks(answer.results[2].get());
        readViews(answer.results[3].get());
        for (int row = 0; row < PQntuples(answer.results[4].get()); ++row)
            outline_.others.push_back(text(answer.results[4].get(), row, 0));
        return std::move(outline_);
    }

private:
    TableOutline& table(const std::string& native) {
        const auto [place, added] = places_.emplace(native, outline_.tables.size());
        if (added) outline_.tables.emplace_back().name = session_.catalog().declaredTable(native);
        return outline_.tables[place->second];
    }

    void readColumns(const PGresult* rows) {
        for (int row = 0; row < PQntuples(rows); ++row) {
            const std::string native = text(rows, row, tableOf);
            TableOutline& owner = table(native);
            const auto& known = session_.catalog().find(native)->columns;
            const tsql::ColumnInfo& info = known[owner.columns.size()];
            ColumnOutline column{info.name, info.declaredType, info.nullable, info.identity, {}};
            if (isTrue(rows, row, isGenerated)) {
                outline_.others.push_back("expression of column " + owner.name + "." + info.name);
            } else if (PQgetisnull(rows, row, columnDefault) == 0) {
                const std::string own = ownText(text(rows, row, columnComment));
                column.defaultValue = own.empty() ? withoutCast(text(rows, row, columnDefault)) : own;
            }
            if (info.identity) {
                const std::string_view next = textOf(rows, row, nextNumber);
                std::from_chars(next.data(), next.data() + next.size(), owner.nextIdentity);
            }
            owner.columns.push_back(std::move(column));
        }
    }

    /// The rows of one index stand together.
    void readIndexes(const PGresult* rows) {
        for (int row = 0, end = 0; row < PQntuples(rows); row = end) {
            const std::string name = text(rows, row, indexName);
            while (end < PQntuples(rows) && textOf(rows, end, indexName) == name)
                ++end;
            const std::string native = text(rows, row, indexTable);
            if (name.starts_with(native + kOwnInfix)) continue;
            TableOutline& owner = table(native);
            IndexOutline index{
                indexNameOf(text(rows, row, indexComment), name, native), isTrue(rows, row, isUnique), {}, {}};
            bool code = false;  // a text behind its length is only carried along
            bool known = !isTrue(rows, row, isPartial) && textOf(rows, row, constraintKind) != "x";
            for (int part = row; part < end; ++part) {
                const std::string column = session_.catalog().declaredColumn(native, text(rows, part, indexColumn));
                known = known && !column.empty();
                const std::string_view derived = textOf(rows, part, partText);
                if (derived.starts_with("length(rtrim(") || derived.starts_with("length(translate(")) {
                    code = true;
                } else if (code || isTrue(rows, part, isIncluded)) {
                    index.included.push_back(column);
                } else {
                    index.columns.push_back({column, isTrue(rows, part, isDescending)});
                }
            }
            if (known && !index.columns.empty()) {
                add(owner, std::move(index), name, text(rows, row, constraintKind));
            } else {
                outline_.others.push_back("index " + index.name + " of " + owner.name);
            }
        }
    }

    /// A key over texts is an index with a name of its kind.
    static void add(TableOutline& owner, IndexOutline index, const std::string& native, const std::string& kind) {
        const bool primary = kind == "p" || native.find(tsql::kPrimaryKeyInfix) != std::string::npos;
        const bool unique = kind == "u" || native.find(tsql::kUniqueInfix) != std::string::npos;
        if (primary || unique) {
            owner.keys.push_back({index.name, primary, std::move(index.columns)});
        } else {
            owner.indexes.push_back(std::move(index));
        }
    }

    void readChecks(const PGresult* rows) {
        for (int row = 0; row < PQntuples(rows); ++row) {
            TableOutline& owner = table(text(rows, row, checkTable));
            const std::string name = text(rows, row, checkName);
            if (textOf(rows, row, checkKind) == "f") {
                outline_.others.push_back("foreign key " + name + " of " + owner.name);
                continue;
            }
            const std::string comment = text(rows, row, checkComment);
            const std::string own = ownText(comment);
            if (own.empty()) {
                owner.checks.push_back({name, text(rows, row, checkExpression)});
            } else {
                owner.checks.push_back({comment.substr(0, comment.find(tsql::kCommentBreak)), own});
            }
        }
    }

    void readViews(const PGresult* rows) {
        for (int row = 0; row < PQntuples(rows); ++row) {
            const std::string native = text(rows, row, 0);
            ViewOutline view = viewOf(text(rows, row, 1));
            if (view.text.empty()) view.text = "create view " + native + " as " + text(rows, row, 2);
            if (tsql::nativeName(view.name) != native) view.name = native;
            outline_.views.push_back(std::move(view));
        }
    }

    /// Out of the dialect's own text, which creates it or altered it; nothing for a comment that is none.
    static ViewOutline viewOf(const std::string& own) {
        const std::size_t verb = own.find_first_not_of(" \t\r\n");
        if (verb == std::string::npos) return {};
        tsql::Lexer words(std::string_view(own).substr(verb));
        try {
            const bool alters = words.next().isWord("alter");
            if (!words.next().isWord("view")) return {};
            ViewOutline view{words.next().name(), own};
            if (alters) view.text.replace(verb, std::string_view("alter").size(), "create");
            return view;
        } catch (const tsql::Error&) {
            return {};
        }
    }

    Session& session_;
    Outline outline_;
    std::map<std::string, std::size_t> places_;  // among the tables, by the native name
};

}  // namespace

Outline outlineOf(Session& session) { return Reader(session).read(); }

}  // namespace orvenmod::store::postgres
