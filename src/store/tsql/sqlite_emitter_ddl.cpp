// Definitions: one statement of the dialect becomes several of SQLite's, which run as a unit.
//
// A key over a text can't be SQLite's own constraint, which tells 'x' from 'X '. It becomes a unique index over the
// compared form, whose name keeps the constraint's, so that a doubled key is reported by it (sqlite/sqlitefailure.cpp):
//
//   create table t10(fid varchar(10) not null primary key, fnote text)
//
//   CREATE TABLE "t10"("fid" varchar(10) NOT NULL, "fnote" text)
//   CREATE UNIQUE INDEX "t10.constraint.pk.PK__t10__fid" ON "t10"(rtrim("fid") COLLATE NOCASE)
//
// Columns keep the type as it was written, by which the catalog knows it again; SQLite itself only takes an affinity
// from it.
#include <algorithm>

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/runtime.h"
#include "store/tsql/sqlite_emitter.h"
#include "store/tsql/viewtext.h"

namespace orvenmod::store::tsql {
namespace {

/// A key that SQLite's own constraint keeps as the server does. Texts need an index of their compared form, and
/// the name "integer" would make the column the row's id, which takes null for "the next number".
bool isPlainKey(const KeyConstraint& key, const std::vector<ColumnInfo>& columns) {
    return std::none_of(key.columns.begin(), key.columns.end(), [&](const IndexColumn& column) {
        const ColumnInfo* info = findColumn(columns, column.name);
        return info->type.isText() || info->identity || sameName(info->declaredType, "integer");
    });
}

/// A type as SQLite reads it: sizes must be numbers there, but a quoted word may say anything.
std::string nativeType(const std::string& declared) {
    const std::size_t size = declared.find('(');
    const bool max = size != std::string::npos && declared.find_first_of("mM", size) != std::string::npos;
    return max ? quoteName(declared) : declared;
}

}  // namespace

std::string SqliteEmitter::indexColumns(const std::vector<IndexColumn>& columns,
                                        const std::vector<ColumnInfo>& known) const {
    std::string text;
    for (const IndexColumn& column : columns) {
        const ColumnInfo* info = findColumn(known, column.name);
        const std::string name = quoteName(info->name);
        text += (text.empty() ? "" : ", ") + (info->type.isText() ? "rtrim(" + name + ") COLLATE NOCASE" : name);
        text += column.descending ? " DESC" : "";
    }
    return "(" + text + ")";
}

/// The value that a column takes where none is given, in a form that SQLite takes for a default.
std::string SqliteEmitter::storedDefault(const ColumnDefinition& column) {
    const Expression& expression = *column.defaultValue;
    // Anything but a constant stands in brackets.
    const bool constant =
        expression.kind == ExpressionKind::literal || expression.kind == ExpressionKind::null ||
        (expression.kind == ExpressionKind::conversion && expression.operands[0]->kind == ExpressionKind::literal);
    const std::string text = value(expression);
    return constant ? text : "(" + text + " " + keptViewText(column.defaultText) + ")";
}

std::string SqliteEmitter::columnDefinition(const ColumnDefinition& column, const std::vector<KeyConstraint>& keys) {
    // Only the row's id counts by itself, and only so written it never gives a number again.
    if (column.identity) {
        return quoteName(column.name) + " INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL";
    }
    std::string text = quoteName(column.name) + " " + nativeType(column.declaredType) +
                       (column.notNull || isPrimary(keys, column.name) ? " NOT NULL" : "");
    return column.defaultValue ? text + " DEFAULT " + storedDefault(column) : text;
}

void SqliteEmitter::addKeyIndex(const std::string& table, const KeyConstraint& key,
                                const std::vector<ColumnInfo>& columns) {
    translation_->statements.push_back("CREATE UNIQUE INDEX " + quoteName(keptKeyName(table, key)) + " ON " +
                                       quoteName(table) + indexColumns(key.columns, columns));
}

void SqliteEmitter::emitStatement(const CreateTableStatement& statement) {
    startDefinition(statement.name);
    stored_ = inline_ = bareColumns_ = true;
    const std::vector<ColumnInfo> columns = infoOf(statement.columns);
    const bool hasIdentity =
        std::any_of(columns.begin(), columns.end(), [](const ColumnInfo& column) { return column.identity; });
    std::string text;
    for (const ColumnDefinition& column : statement.columns) {
        text += (text.empty() ? "" : ", ") + columnDefinition(column, statement.keys);
    }
    std::vector<const KeyConstraint*> indexed;
    for (const KeyConstraint& key : statement.keys) {
        if (key.columns.size() == 1 && findColumn(columns, key.columns[0].name)->identity) {
            continue;  // the column is the row's id already
        }
        // A table has one primary key, and the identity column has become it.
        if (!isPlainKey(key, columns) || (key.primary && hasIdentity)) {
            indexed.push_back(&key);
            continue;
        }
        text += ", CONSTRAINT " + quoteName(keyName(statement.name, key)) + (key.primary ? " PRIMARY KEY" : " UNIQUE") +
                indexColumns(key.columns, columns);
    }
    for (const CheckConstraint& check : statement.checks) {
        text += check.name.empty() ? ", " : ", CONSTRAINT " + quoteName(check.name) + " ";
        text += "CHECK (" + condition(*check.condition) + " " + keptViewText(check.text) + ")";
    }
    translation_->statements.push_back("CREATE TABLE " + quoteName(statement.name) + "(" + text + ")");
    for (const KeyConstraint* key : indexed) {
        addKeyIndex(statement.name, *key, columns);
    }
    addTableExtras(statement, columns);
}

/// The index on the item's id where there is no key, and the first number of an identity column.
void SqliteEmitter::addTableExtras(const CreateTableStatement& statement, const std::vector<ColumnInfo>& columns) {
    const std::string name = itemIdIndex(statement, columns);
    if (!name.empty()) {
        add("CREATE INDEX " + quoteName(name) + " ON " + quoteName(statement.name) +
            indexColumns({{.name = std::string(kItemId)}}, columns));
    }
    for (const ColumnDefinition& column : statement.columns) {
        if (column.identity && column.identitySeed != "1") {
            translation_->statements.push_back("INSERT INTO sqlite_sequence(name, seq) VALUES(" +
                                               quoteText(statement.name) + ", " + column.identitySeed + " - 1)");
        }
    }
}

void SqliteEmitter::emitStatement(const AlterTableStatement& statement) {
    startDefinition(statement.object->name);
    stored_ = inline_ = bareColumns_ = true;
    const std::string table = quoteName(statement.object->name);
    std::vector<ColumnInfo> columns = statement.object->columns;
    for (const ColumnDefinition& column : statement.columns) {
        const std::string definition = columnDefinition(column, {});
        // SQLite adds a column without touching the rows, so that the default must be a constant.
        if (column.defaultValue && definition.ends_with(")")) {
            throw Error(kNotSupported, {"alter table add with a default that is computed"});
        }
        translation_->statements.push_back("ALTER TABLE " + table + " ADD COLUMN " + definition);
        if (!column.notNull && !column.defaultValue && !column.identity) {
            translation_->addedColumns.push_back(definition);
        }
        if (column.defaultValue && !column.notNull && !column.withValues) {
            // The rows that are there keep null; SQLite would show them the default.
            translation_->statements.push_back("UPDATE " + table + " SET " + quoteName(column.name) + " = NULL");
        }
    }
    for (const ColumnInfo& added : infoOf(statement.columns)) {
        columns.push_back(added);
    }
    for (const KeyConstraint& key : statement.keys) {
        addKeyIndex(statement.object->name, key, columns);
    }
    for (const std::string& name : statement.dropColumns) {
        dropColumn(*statement.object, findColumn(columns, name)->name);
    }
    for (const std::string& name : statement.dropConstraints) {
        dropConstraint(statement, name);
    }
    if (translation_->addedColumns.size() != translation_->statements.size()) {
        translation_->addedColumns.clear();
    }
}

void SqliteEmitter::dropColumn(const ObjectInfo& table, const std::string& column) {
    // The store's own index goes with its column.
    const std::string own = table.name + ".orven." + column;
    if (std::find(table.indexes.begin(), table.indexes.end(), own) != table.indexes.end()) {
        translation_->statements.push_back("DROP INDEX " + quoteName(own));
    }
    // Without it SQLite refuses while any view of the database, also another table's, doesn't hold.
    translation_->statements.push_back("PRAGMA legacy_alter_table = ON");
    translation_->statements.push_back("ALTER TABLE " + quoteName(table.name) + " DROP COLUMN " + quoteName(column));
    translation_->statements.push_back("PRAGMA legacy_alter_table = OFF");
}

void SqliteEmitter::dropConstraint(const AlterTableStatement& statement, const std::string& name) {
    for (const std::string_view infix : {kPrimaryKeyInfix, kUniqueInfix}) {
        for (const std::string& index : statement.object->indexes) {
            if (sameName(index, statement.object->name + std::string(infix) + name)) {
                translation_->statements.push_back("DROP INDEX " + quoteName(index));
                return;
            }
        }
    }
    throw Error(kNotAConstraint, {name});
}

void SqliteEmitter::emitStatement(const CreateIndexStatement& statement) {
    startDefinition(statement.object->name);
    std::string columns = indexColumns(statement.columns, statement.object->columns);
    // Behind the key, so that the index answers without the row. In a unique one they would be part of the key.
    if (!statement.unique && !statement.included.empty()) {
        columns.pop_back();
        for (const IndexColumn& column : statement.included) {
            const std::string name = quoteName(findColumn(statement.object->columns, column.name)->name);
            columns += ", " + (isCodeIndex(statement) ? codeKeys(name) : name);
        }
        columns += ")";
    }
    translation_->statements.push_back(std::string("CREATE ") + (statement.unique ? "UNIQUE " : "") + "INDEX " +
                                       quoteName(statement.object->name + "." + statement.name) + " ON " +
                                       quoteName(statement.object->name) + columns);
}

void SqliteEmitter::emitStatement(const CreateViewStatement& statement) {
    startDefinition(statement.name);
    stored_ = inline_ = true;
    Names names;
    for (const ColumnInfo& column : statement.query->columns) {
        names.push_back(column.name);
    }
    if (statement.alter) {
        // SQLite has no other way to change one.
        translation_->statements.push_back("DROP VIEW " + quoteName(statement.name));
    }
    translation_->statements.push_back("CREATE VIEW " + quoteName(statement.name) + " AS " + keptViewText(sql_) + " " +
                                       query(*statement.query, &names));
    // SQLite keeps a view that passes its limits and fails every reader; read once, it is refused now.
    translation_->statements.push_back("SELECT * FROM " + quoteName(statement.name) + " LIMIT 0");
}

void SqliteEmitter::emitStatement(const DropStatement& statement) {
    translation_->kind = StatementKind::ddl;
    translation_->cacheable = false;
    for (const DropName& name : statement.names) {
        switch (statement.kind) {
            case DropStatement::Kind::table:
                translation_->statements.push_back("DROP TABLE " + quoteName(name.name));
                break;
            case DropStatement::Kind::view:
                translation_->statements.push_back("DROP VIEW " + quoteName(name.name));
                break;
            case DropStatement::Kind::index:
                translation_->statements.push_back("DROP INDEX " + quoteName(name.table + "." + name.name));
                break;
        }
        translation_->table = name.name;
    }
}

void SqliteEmitter::emitSelectInto(const Query& top) {
    if (!top.select) {
        throw Error(kNotSupported, {"select into of a union"});
    }
    startDefinition(top.select->into);
    inline_ = true;
    std::string columns;
    Names names;
    for (std::size_t i = 0; i < top.columns.size(); ++i) {
        const std::string& name = top.columns[i].name;
        if (name.empty()) {
            throw Error(kEmptyName);
        }
        columns += (columns.empty() ? "" : ", ") + quoteName(name) + " " + nativeType(printType(top.columns[i].type));
        names.push_back(name);
    }
    const std::string table = quoteName(top.select->into);
    translation_->statements.push_back("CREATE TABLE " + table + "(" + columns + ")");
    translation_->statements.push_back("INSERT INTO " + table + " " + query(top, &names));
}

}  // namespace orvenmod::store::tsql
