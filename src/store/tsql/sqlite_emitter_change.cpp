// Changes by a join.
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
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

/// The new values are computed first, by the rows' ids, and then put into the table.
void SqliteEmitter::emitJoinedUpdate(const UpdateStatement& statement) {
    const ObjectInfo& object = *statement.changed->object;
    std::string rows = "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"rowid\" AS \"id\"";
    std::string sets;
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        const std::string name = "\"v" + std::to_string(i + 1) + "\"";
        rows += ", " + value(*statement.assignments[i].value) + " AS " + name;
        sets += (i == 0 ? "" : ", ") +
                columnName(object.columns[static_cast<std::size_t>(statement.assignments[i].position)]) +
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

void SqliteEmitter::emitJoinedDelete(const DeleteStatement& statement) {
    const std::string where = statement.where ? " WHERE " + condition(*statement.where) : "";
    std::string rows =
        "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"rowid\" FROM " + sources(statement.from);
    rows += where + (statement.top ? " LIMIT " + value(*statement.top) : "");
    translation_->statements.push_back("DELETE FROM " + quoteName(statement.changed->object->name) +
                                       " WHERE \"rowid\" IN (" + rows + ")");
}

void SqliteEmitter::emitStatement(const TruncateStatement& statement) {
    startDefinition(statement.table);
    add("DELETE FROM " + quoteName(statement.table));
}

}  // namespace orvenmod::store::tsql
