// Changes by a join. PostgreSQL joins the table that is changed to others by a condition in the where clause, so that
// an inner join is written so; and a row that another session has changed meanwhile is looked at again.
//
//   update tblItem set fname=u.fname from tblItem i join tblUnit u on u.fid=i.fitemid
//   UPDATE "tblitem" AS "i" SET "fname" = "u"."fname" FROM "tblunit" AS "u" WHERE ("u"."fid" = "i"."fitemid")
//
// Where the table stands in an outer join, or with top, the rows are found first, by their places:
//
//   DELETE FROM "tblitem" WHERE "ctid" = ANY (ARRAY(SELECT "i"."ctid" FROM .. LIMIT $1::integer))
#include "store/tsql/postgres_emitter.h"
#include "store/tsql/postgresnames.h"

namespace orvenmod::store::tsql {
namespace {

struct Joined {
    std::vector<const Source*> others;
    std::vector<const Expression*> conditions;
};

bool contains(const Source& source, const Source* searched) {
    if (source.kind != Source::Kind::join) {
        return &source == searched;
    }
    return contains(*source.left, searched) || contains(*source.right, searched);
}

/// Takes inner joins apart down to the table that is changed; false where it stands in an outer one.
bool takeApart(const Source& source, const Source* changed, Joined& parts) {
    if (!contains(source, changed)) {
        parts.others.push_back(&source);
        return true;
    }
    if (source.kind != Source::Kind::join) {
        return true;
    }
    if (source.join != JoinKind::inner && source.join != JoinKind::cross) {
        return false;
    }
    if (source.on) {
        parts.conditions.push_back(source.on.get());
    }
    return takeApart(*source.left, changed, parts) && takeApart(*source.right, changed, parts);
}

bool takeApart(const std::vector<SourcePtr>& from, const Source* changed, Joined& parts) {
    for (const SourcePtr& source : from) {
        if (!takeApart(*source, changed, parts)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string PostgresEmitter::joinedBy(const std::vector<const Source*>& others,
                                      std::vector<const Expression*> conditions, const Expression* where,
                                      const char* word) {
    std::string text;
    for (const Source* other : others) {
        text += (text.empty() ? word : ", ") + source(*other);
    }
    if (where != nullptr) {
        conditions.push_back(where);
    }
    std::vector<std::string> texts;
    for (const Expression* condition : conditions) {
        texts.push_back(this->condition(*condition));
    }
    return texts.empty() ? text : text + " WHERE " + joined(texts, " AND ");
}

void PostgresEmitter::emitJoinedUpdate(const UpdateStatement& statement) {
    const ObjectInfo& object = *statement.changed->object;
    Joined parts;
    const bool native = !statement.top && takeApart(statement.from, statement.changed, parts);
    std::string rows = "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"ctid\" AS \"id\"";
    std::vector<std::string> sets;
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        const Assignment& assignment = statement.assignments[i];
        const std::string name = "\"v" + std::to_string(i + 1) + "\"";
        const std::string value = this->value(*assignment.value);
        rows += ", " + value + " AS " + name;
        sets.push_back(columnName(object.columns[static_cast<std::size_t>(assignment.position)]) + " = " +
                       (native ? value : "\"orven.new\"." + name));
    }
    if (native) {
        add("UPDATE " + source(*statement.changed) + " SET " + joined(sets) +
            joinedBy(parts.others, parts.conditions, statement.where.get(), " FROM "));
        return;
    }
    rows += " FROM " + sources(statement.from);
    if (statement.where) {
        rows += " WHERE " + condition(*statement.where);
    }
    if (statement.top) {
        rows += " LIMIT " + value(*statement.top);
    }
    const std::string table = tableName(object);
    add("UPDATE " + table + " SET " + joined(sets) + " FROM (" + rows + ") AS \"orven.new\" WHERE " + table +
        ".\"ctid\" = \"orven.new\".\"id\"");
}

void PostgresEmitter::emitJoinedDelete(const DeleteStatement& statement) {
    Joined parts;
    if (!statement.top && takeApart(statement.from, statement.changed, parts)) {
        add("DELETE FROM " + source(*statement.changed) +
            joinedBy(parts.others, parts.conditions, statement.where.get(), " USING "));
        return;
    }
    std::string rows = "SELECT " + quoteName(aliasOf(*statement.changed)) + ".\"ctid\" FROM " + sources(statement.from);
    if (statement.where) {
        rows += " WHERE " + condition(*statement.where);
    }
    if (statement.top) {
        rows += " LIMIT " + value(*statement.top);
    }
    add("DELETE FROM " + tableName(*statement.changed->object) + " WHERE \"ctid\" = ANY (ARRAY(" + rows + "))");
}

void PostgresEmitter::emitStatement(const TruncateStatement& statement) {
    startDefinition(statement.table);
    add("TRUNCATE TABLE " + quoteName(nativeName(statement.table)));
}

}  // namespace orvenmod::store::tsql
