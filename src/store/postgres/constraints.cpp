// The server tells the names of table, column and constraint as they are in the database. What was declared stands in
// the comments; which columns a key has, in the definitions of its index, each a column or an expression of one:
//
//   tblitem, tblitem.constraint.pk.pk_item     PK_item, tblItem; fNumber of lower(rtrim((fnumber)::text))
#include "store/postgres/constraints.h"

#include <cctype>
#include <vector>

#include "store/postgres/failures.h"
#include "store/tsql/messages.h"
#include "store/tsql/runtime.h"

namespace orvenmod::store::postgres {

namespace {

// The server's states.
constexpr std::string_view kNotNullViolation = "23502";
constexpr std::string_view kForeignKeyViolation = "23503";
constexpr std::string_view kUniqueViolation = "23505";
constexpr std::string_view kCheckViolation = "23514";

constexpr const char* kKey =
    "SELECT coalesce(obj_description(k.oid, 'pg_constraint'), obj_description(i.oid, 'pg_class'), i.relname), "
    "i.relname, "
    "coalesce(k.contype::text, ''), a.attname, pg_get_indexdef(i.oid, n::integer, false) "
    "FROM pg_class i JOIN pg_index x ON x.indexrelid = i.oid "
    "LEFT JOIN pg_constraint k ON k.conindid = i.oid AND k.contype IN ('p', 'u') "
    "CROSS JOIN LATERAL generate_series(1, x.indnkeyatts) n "
    "LEFT JOIN pg_attribute a ON a.attrelid = x.indrelid AND a.attnum = x.indkey[n - 1] AND a.attnum > 0 "
    "WHERE i.relname = $1 AND i.relnamespace = to_regnamespace(current_schema()) ORDER BY n";
enum KeyField { declaredKey, nativeKey, kindOfKey, keyColumn, keyExpression };

constexpr const char* kCheck =
    "SELECT coalesce(nullif(split_part(obj_description(oid, 'pg_constraint'), E'\\n', 1), ''), conname) FROM "
    "pg_constraint WHERE conname = $1 AND "
    "conrelid = to_regclass(quote_ident($2))";

struct Key {
    std::string name;
    std::string native;
    bool constraint = false;
    bool primary = false;
    std::vector<std::string> columns;  // native names
};

bool isNamePart(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0; }

// The column of an expression: the first word that neither is called nor names a type.
std::string columnOf(std::string_view expression) {
    for (std::size_t at = 0; at < expression.size(); ++at) {
        if (expression[at] == '"') {
            const std::size_t end = std::min(expression.find('"', at + 1), expression.size());
            return std::string(expression.substr(at + 1, end - at - 1));
        }
        if (!isNamePart(expression[at])) continue;
        std::size_t end = at;
        while (end < expression.size() && (isNamePart(expression[end]) || expression[end] == '.'))
            ++end;
        if (end >= expression.size() || expression[end] != '(') return std::string(expression.substr(at, end - at));
        at = end;
    }
    return {};
}

Key keyOf(Session& session, const std::string& index) {
    Parameters parameters;
    parameters.addText(index);
    session.queueText(kKey, parameters);
    const Answer answer = session.send();
    Key key;
    key.name = key.native = index;
    if (answer.failure() != nullptr) return key;
    const PGresult* rows = answer.results.front().get();
    for (int row = 0; row < PQntuples(rows); ++row) {
        key.name = textOf(rows, row, declaredKey);
        key.constraint = !textOf(rows, row, kindOfKey).empty();
        key.primary = textOf(rows, row, kindOfKey) == "p";
        const bool plain = PQgetisnull(rows, row, keyColumn) == 0;
        key.columns.push_back(plain ? std::string(textOf(rows, row, keyColumn))
                                    : columnOf(textOf(rows, row, keyExpression)));
    }
    // A key of texts is an index of an expression, which no constraint of the server's can be.
    for (const std::string_view infix : {tsql::kPrimaryKeyInfix, tsql::kUniqueInfix}) {
        if (index.find(infix) == std::string::npos) continue;
        key.constraint = true;
        key.primary = infix == tsql::kPrimaryKeyInfix;
    }
    return key;
}

std::string checkName(Session& session, const std::string& constraint, const std::string& table) {
    Parameters parameters;
    parameters.addText(constraint);
    parameters.addText(table);
    session.queueText(kCheck, parameters);
    const Answer answer = session.send();
    if (answer.failure() != nullptr || PQntuples(answer.results.front().get()) == 0) return constraint;
    return std::string(textOf(answer.results.front().get(), 0, 0));
}

}  // namespace

Failure constraintFailure(Session& session, const PGresult* failure, const char* statement,
                          const std::function<std::string(const std::string&)>& values) {
    const tsql::Language language = session.address().language;
    const std::string state = field(failure, PG_DIAG_SQLSTATE);
    const std::string native = field(failure, PG_DIAG_TABLE_NAME);
    const std::string constraint = field(failure, PG_DIAG_CONSTRAINT_NAME);
    const std::string table = session.catalog().declaredTable(native);
    if (state == kNotNullViolation) {
        const std::string column = session.catalog().declaredColumn(native, field(failure, PG_DIAG_COLUMN_NAME));
        return tsql::worded(language, tsql::kNullRefused, {column, table, statement});
    }
    if (state == kCheckViolation || state == kForeignKeyViolation) {
        return tsql::worded(language, tsql::kConstraintConflict,
                            {statement, state == kCheckViolation ? "CHECK" : "FOREIGN KEY",
                             checkName(session, constraint, native), table});
    }
    if (state != kUniqueViolation) return reported(failure, session.address());
    const Key key = keyOf(session, constraint);
    std::string text;
    for (const std::string& column : key.columns)
        text += (text.empty() ? "(" : ", ") + values(session.catalog().declaredColumn(native, column));
    text = text.empty() ? "(?)" : text + ")";
    if (!key.constraint) return tsql::worded(language, tsql::kDuplicateInIndex, {table, key.name, text});
    return tsql::worded(language, tsql::kDuplicateKey,
                        {key.primary ? "PRIMARY KEY" : "UNIQUE KEY", key.name, table, text});
}

}  // namespace orvenmod::store::postgres
