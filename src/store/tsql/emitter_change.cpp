// insert, and the update and delete of one table. Changes by a join are the target's own.
//
//   insert into t(a,b) values(1,'x')      INSERT INTO "t"("a", "b") VALUES(?1, ?2)
#include "store/tsql/emitter.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

const ColumnInfo& columnAt(const ObjectInfo& object, int position) {
    return object.columns[static_cast<std::size_t>(position)];
}

}  // namespace

void Emitter::emitStatement(const InsertStatement& statement) {
    translation_->kind = StatementKind::change;
    translation_->table = statement.object->name;
    std::string text = "INSERT INTO " + tableName(*statement.object);
    if (statement.defaultValues) {
        if (statement.rows.size() > 1) {
            throw Error(kNotSupported, {"several rows of defaults"});
        }
        translation_->statements.push_back(text + " DEFAULT VALUES");
        return;
    }
    std::string columns;
    for (const int position : statement.positions) {
        columns += (columns.empty() ? "" : ", ") + columnName(columnAt(*statement.object, position));
    }
    text += "(" + columns + ") ";
    if (statement.query) {
        text += deliveredRows(*statement.query);
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

void Emitter::emitStatement(const UpdateStatement& statement) {
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
        text += (i == 0 ? "" : ", ") + columnName(columnAt(*statement.changed->object, assignment.position)) + " = " +
                value(*assignment.value);
    }
    if (statement.where) {
        text += " WHERE " + condition(*statement.where);
    }
    translation_->statements.push_back(text);
}

void Emitter::emitStatement(const DeleteStatement& statement) {
    translation_->kind = StatementKind::change;
    const ObjectInfo& object = *statement.changed->object;
    translation_->table = object.name;
    const bool plain = statement.from.size() == 1 && statement.from[0].get() == statement.changed && !statement.top;
    if (plain) {
        const std::string where = statement.where ? " WHERE " + condition(*statement.where) : "";
        translation_->statements.push_back("DELETE FROM " + source(*statement.changed) + where);
        return;
    }
    emitJoinedDelete(statement);
}

}  // namespace orvenmod::store::tsql
