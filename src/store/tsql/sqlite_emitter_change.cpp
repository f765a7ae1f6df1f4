// insert, update, delete.
//
// SQLite changes one table, by a condition on its own columns. The server also changes it by a join, in which the table
// has an alias and may stand anywhere; so the join is made a query of its rows' ids first.
//
//   update tblItem set fname=u.fname from tblItem i join tblUnit u on u.fid=i.fitemid
//
//   UPDATE "tblItem" SET "fname" = "orven.new"."v1"
//     FROM (SELECT "i"."rowid" AS "id", "u"."fname" AS "v1"
//             FROM "tblItem" AS "i" JOIN "tblUnit" AS "u" ON ("u"."fid" = "i"."fitemid")) AS "orven.new"
//     WHERE "tblItem"."rowid" = "orven.new"."id"
#include "store/tsql/error.h"
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {
namespace {

const std::string& columnName(const ObjectInfo& object, int position) {
    return object.columns[static_cast<std::size_t>(position)].name;
}

}  // namespace

void SqliteEmitter::emitStatement(const InsertStatement& statement) {
    translation_->kind = StatementKind::change;
    translation_->table = statement.object->name;
    std::string text = "INSERT INTO " + quoteName(statement.object->name);
    if (statement.defaultValues) {
        if (statement.rows.size() > 1) {
            throw Error(kNotSupported, {"several rows of defaults"});
        }
        translation_->statements.push_back(text + " DEFAULT VALUES");
        return;
    }
    std::string columns;
    for (const int position : statement.positions) {
        columns += (columns.empty() ? "" : ", ") + quoteName(columnName(*statement.object, position));
    }
    text += "(" + columns + ") ";
    if (statement.query) {
        text += query(*statement.query);
    } else {
        text += "VALUES ";
        for (std::size_t i = 0; i < statement.rows.size(); ++i) {
            std::string row;
            for (const ExpressionPtr& member : statement.rows[i]) {
                row += (row.empty() ? "" : ", ") + value(*member);
            }
            text += (i == 0 ? "(" : ", (") + row + ")";
        }
    }
    translation_->statements.push_back(text);
}

void SqliteEmitter::emitStatement(const UpdateStatement& statement) {
    translation_->kind = StatementKind::change;
    translation_->table = statement.changed->object->name;
    const bool plain = statement.from.size() == 1 && statement.from[0].get() == statement.changed && !statement.top;
    if (!plain) {
        emitJoinedUpdate(statement);
        return;
    }
    std::string text = "UPDATE " + source(*statement.changed) + " SET ";
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        const Assignment& assignment = statement.assignments[i];
        text += (i == 0 ? "" : ", ") + quoteName(columnName(*statement.changed->object, assignment.position)) + " = " +
                value(*assignment.value);
    }
    if (statement.where) {
        text += " WHERE " + condition(*statement.where);
    }
    translation_->statements.push_back(text);
}

/// The new values are computed first, by the rows' ids, and then put into the table.
void SqliteEmitter::emitJoinedUpdate(const UpdateStatement& statement) {
    const ObjectInfo& object = *statement.changed->object;
    std::string rows = "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"rowid\" AS \"id\"";
    std::string sets;
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        const std::string name = "\"v" + std::to_string(i + 1) + "\"";
        rows += ", " + value(*statement.assignments[i].value) + " AS " + name;
        sets += (i == 0 ? "" : ", ") + quoteName(columnName(object, statement.assignments[i].position)) +
                " = \"orven.new\"." + name;
    }
    rows += " FROM " + sources(statement.from);
    if (statement.where) {
        rows += " WHERE " + condition(*statement.where);
    }
    if (statement.top) {
        rows += " LIMIT " + value(*statement.top);
    }
    const std::string table = quoteName(object.name);
    translation_->statements.push_back("UPDATE " + table + " SET " + sets + " FROM (" + rows +
                                       ") AS \"orven.new\" WHERE " + table + ".\"rowid\" = \"orven.new\".\"id\"");
}

void SqliteEmitter::emitStatement(const DeleteStatement& statement) {
    translation_->kind = StatementKind::change;
    const ObjectInfo& object = *statement.changed->object;
    translation_->table = object.name;
    const bool plain = statement.from.size() == 1 && statement.from[0].get() == statement.changed && !statement.top;
    const std::string where = statement.where ? " WHERE " + condition(*statement.where) : "";
    if (plain) {
        translation_->statements.push_back("DELETE FROM " + source(*statement.changed) + where);
        return;
    }
    std::string rows =
        "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"rowid\" FROM " + sources(statement.from);
    rows += where + (statement.top ? " LIMIT " + value(*statement.top) : "");
    translation_->statements.push_back("DELETE FROM " + quoteName(object.name) + " WHERE \"rowid\" IN (" + rows + ")");
}

void SqliteEmitter::emitStatement(const TruncateStatement& statement) {
    translation_->kind = StatementKind::ddl;
    translation_->cacheable = false;
    translation_->table = statement.table;
    translation_->statements.push_back("DELETE FROM " + quoteName(statement.table));
}

}  // namespace orvenmod::store::tsql
