// insert, update, delete.
//
// Words may be left out here (into, from), and a bracket or a second "from" says something else than the first; which
// form it is shows a word or two further on. So a form is found by looking ahead, never by trying one and going back.
// What makes no difference later (into, hints, the table before the name of a column that is set) is read over.
//
//   insert t(select a from u)                 the rows of a query, no columns named
//   insert into t(t.a) values(2),(default)    column a, rows {2} and {none}
//   delete t from t join u on t.a=u.a         target t, joined with u
#include "store/tsql/error.h"
#include "store/tsql/parser.h"

namespace orvenmod::store::tsql {

InsertStatement Parser::parseInsert() {
    expectWord("insert");
    takeWord("into");
    InsertStatement statement;
    statement.table = takeObjectName();
    skipHints();
    // insert into t (select ..) and insert into t (id, c): only the word behind the bracket tells.
    const bool queryInBrackets = peek().isSymbol("(") && (peek(1).isWord("select") || peek(1).isSymbol("("));
    if (!queryInBrackets && takeSymbol("(")) {
        do {
            statement.columns.push_back(takeName());
            while (takeSymbol(".")) {
                statement.columns.back() = takeName();
            }
        } while (takeSymbol(","));
        expectSymbol(")");
    }
    if (takeWord("default")) {
        expectWord("values");
        statement.defaultValues = true;
        return statement;
    }
    if (!takeWord("values")) {
        if (!peek().isWord("select") && !peek().isSymbol("(")) {
            if (peek().isWord("exec") || peek().isWord("execute")) {
                throw Error(kNotSupported, {"insert ... exec"});
            }
            fail();
        }
        statement.query = parseOrderedQuery();
        return statement;
    }
    do {
        expectSymbol("(");
        std::vector<ExpressionPtr>& row = statement.rows.emplace_back();
        do {
            // The word default is no value, since the column has it: left out, see the binder.
            row.push_back(takeWord("default") ? nullptr : parseSum());
        } while (takeSymbol(","));
        expectSymbol(")");
    } while (takeSymbol(","));
    return statement;
}

UpdateStatement Parser::parseUpdate() {
    expectWord("update");
    UpdateStatement statement;
    statement.top = parseTop(nullptr);
    statement.target = takeObjectName();
    skipHints();
    expectWord("set");
    do {
        Assignment assignment;
        assignment.column = takeName();
        while (takeSymbol(".")) {
            assignment.column = takeName();
        }
        expectSymbol("=");
        assignment.value = takeWord("default") ? nullptr : parseSum();
        statement.assignments.push_back(std::move(assignment));
    } while (takeSymbol(","));
    if (takeWord("from")) {
        statement.joined = true;
        statement.from = parseFrom();
    }
    if (takeWord("where")) {
        statement.where = parseCondition();
    }
    return statement;
}

DeleteStatement Parser::parseDelete() {
    expectWord("delete");
    DeleteStatement statement;
    statement.top = parseTop(nullptr);
    takeWord("from");
    statement.target = takeObjectName();
    skipHints();
    if (takeWord("from")) {
        statement.joined = true;
        statement.from = parseFrom();
    }
    if (takeWord("where")) {
        statement.where = parseCondition();
    }
    return statement;
}

}  // namespace orvenmod::store::tsql
