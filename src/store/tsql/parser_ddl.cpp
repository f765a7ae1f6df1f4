// create, alter, drop.
//
// A definition says two things: what the data mean, and how a server keeps them. The second (clustered, fill factors,
// file groups, collations without regard to case) is read over, since it changes no answer; what changes one and isn't
// known here (foreign keys, computed columns, filtered indexes) is refused.
//
//   create table t(id int primary key clustered)                  as without the word
//   create table t(c varchar(10) collate Chinese_PRC_CI_AS)       likewise
//   create table t(id int references u)                           40000 'foreign keys'
#include <charconv>
#include <cstdint>

#include "store/tsql/error.h"
#include "store/tsql/parser.h"

namespace orvenmod::store::tsql {

Statement Parser::parseCreate() {
    expectWord("create");
    if (takeWord("table")) {
        return parseCreateTable();
    }
    if (takeWord("view")) {
        return parseView();
    }
    const bool unique = takeWord("unique");
    if (takeWord("clustered") || takeWord("nonclustered") || unique || peek().isWord("index")) {
        expectWord("index");
        return parseCreateIndex(unique);
    }
    if (peek().kind == Token::Kind::word) {
        throw Error(kNotSupported, {"create " + lowerName(peek().text)});
    }
    fail();
}

CreateTableStatement Parser::parseCreateTable() {
    CreateTableStatement statement;
    statement.name = takeObjectName();
    expectSymbol("(");
    do {
        if (peek().isSymbol(")")) {
            break;  // a comma behind the last column is let pass by the server
        }
        if (atTableConstraint()) {
            parseTableConstraint(statement.keys, statement.checks);
        } else {
            statement.columns.push_back(parseColumnDefinition(statement.keys, statement.checks));
        }
    } while (takeSymbol(","));
    expectSymbol(")");
    if (takeWord("on")) {
        takeName();
    }
    if (statement.columns.empty()) {
        fail();
    }
    return statement;
}

bool Parser::atTableConstraint() const {
    return peek().isWord("constraint") || peek().isWord("primary") || peek().isWord("unique") ||
           peek().isWord("check") || peek().isWord("foreign");
}

ColumnDefinition Parser::parseColumnDefinition(std::vector<KeyConstraint>& keys, std::vector<CheckConstraint>& checks) {
    ColumnDefinition column;
    column.name = takeName();
    if (peek().isWord("as")) {
        throw Error(kNotSupported, {"computed columns"});
    }
    column.type = parseTypeName(&column.declaredType);
    while (!peek().isSymbol(",") && !peek().isSymbol(")") && peek().kind != Token::Kind::end) {
        parseColumnOption(column, keys, checks);
    }
    return column;
}

std::string Parser::takeWholeNumber() {
    const std::string_view text = peek().text;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) fail();
    return std::string(take().text);
}

void Parser::parseColumnOption(ColumnDefinition& column, std::vector<KeyConstraint>& keys,
                               std::vector<CheckConstraint>& checks) {
    std::string constraint;
    if (takeWord("constraint")) {
        constraint = takeName();
    }
    if (takeWord("not")) {
        expectWord("null");
        column.notNull = true;
    } else if (takeWord("null")) {
        column.notNull = false;
    } else if (takeWord("identity")) {
        column.identity = true;
        if (takeSymbol("(")) {
            column.identitySeed = takeWholeNumber();
            expectSymbol(",");
            if (take().text != "1") {
                throw Error(kNotSupported, {"identity with an increment other than 1"});
            }
            expectSymbol(")");
        }
    } else if (takeWord("default")) {
        const std::size_t start = at_;
        column.defaultValue = parseSum();
        column.defaultText = textSince(start);
        column.withValues = peek().isWord("with") && peek(1).isWord("values");
        at_ += column.withValues ? 2 : 0;
    } else if (peek().isWord("primary") || peek().isWord("unique")) {
        KeyConstraint key;
        key.primary = take().isWord("primary");
        if (key.primary) {
            expectWord("key");
            column.notNull = true;
        }
        key.name = constraint;
        key.columns.push_back({.name = column.name});
        if (!takeWord("clustered")) {
            takeWord("nonclustered");
        }
        parseIndexOptions();
        keys.push_back(std::move(key));
    } else if (takeWord("check")) {
        checks.push_back(parseCheck(constraint));
    } else if (peek().isWord("collate")) {
        skipCollation();
    } else if (peek().isWord("references") || peek().isWord("foreign")) {
        throw Error(kNotSupported, {"foreign keys"});
    } else {
        fail();
    }
}

CheckConstraint Parser::parseCheck(const std::string& name) {
    CheckConstraint check;
    check.name = name;
    expectSymbol("(");
    const std::size_t start = at_;
    check.condition = parseCondition();
    check.text = textSince(start);
    expectSymbol(")");
    return check;
}

void Parser::parseTableConstraint(std::vector<KeyConstraint>& keys, std::vector<CheckConstraint>& checks) {
    std::string name;
    if (takeWord("constraint")) {
        name = takeName();
    }
    if (takeWord("check")) {
        checks.push_back(parseCheck(name));
        return;
    }
    if (peek().isWord("foreign")) {
        throw Error(kNotSupported, {"foreign keys"});
    }
    KeyConstraint key;
    key.name = name;
    key.primary = takeWord("primary");
    expectWord(key.primary ? "key" : "unique");
    if (!takeWord("clustered")) {
        takeWord("nonclustered");
    }
    key.columns = parseIndexColumns();
    parseIndexOptions();
    keys.push_back(std::move(key));
}

std::vector<IndexColumn> Parser::parseIndexColumns() {
    std::vector<IndexColumn> columns;
    expectSymbol("(");
    do {
        IndexColumn column;
        column.name = takeName();
        column.descending = takeWord("desc");
        if (!column.descending) {
            takeWord("asc");
        }
        columns.push_back(std::move(column));
    } while (takeSymbol(","));
    expectSymbol(")");
    return columns;
}

/// include (..), with (fillfactor = 80, ..), on filegroup: how an index is kept, not what it means. The columns that it
/// includes.
std::vector<IndexColumn> Parser::parseIndexOptions() {
    std::vector<IndexColumn> included;
    if (takeWord("include")) {
        included = parseIndexColumns();
    }
    if (peek().isWord("with") && peek(1).isSymbol("(")) {
        at_ += 2;
        while (!peek().isSymbol(")")) {
            if (peek().kind == Token::Kind::end) {
                fail();
            }
            take();
        }
        take();
    }
    if (takeWord("on")) {
        takeName();
    }
    return included;
}

CreateIndexStatement Parser::parseCreateIndex(bool unique) {
    CreateIndexStatement statement;
    statement.unique = unique;
    statement.name = takeName();
    expectWord("on");
    statement.table = takeObjectName();
    statement.columns = parseIndexColumns();
    if (peek().isWord("where")) {
        throw Error(kNotSupported, {"filtered indexes"});
    }
    statement.included = parseIndexOptions();
    return statement;
}

CreateViewStatement Parser::parseView() {
    CreateViewStatement statement;
    statement.name = takeObjectName();
    if (takeSymbol("(")) {
        do {
            statement.columnAliases.push_back(takeName());
        } while (takeSymbol(","));
        expectSymbol(")");
    }
    if (peek().isWord("with")) {
        throw Error(kNotSupported, {"view options"});
    }
    expectWord("as");
    statement.query = parseOrderedQuery();
    return statement;
}

Statement Parser::parseAlter() {
    expectWord("alter");
    if (takeWord("table")) {
        return parseAlterTable();
    }
    if (takeWord("view")) {
        CreateViewStatement view = parseView();
        view.alter = true;
        return view;
    }
    if (peek().kind == Token::Kind::word) {
        throw Error(kNotSupported, {"alter " + lowerName(peek().text)});
    }
    fail();
}

AlterTableStatement Parser::parseAlterTable() {
    AlterTableStatement statement;
    statement.name = takeObjectName();
    if (takeWord("add")) {
        std::vector<CheckConstraint> checks;
        do {
            if (atTableConstraint()) {
                parseTableConstraint(statement.keys, checks);
            } else {
                statement.columns.push_back(parseColumnDefinition(statement.keys, checks));
            }
        } while (takeSymbol(","));
        if (!checks.empty()) {
            throw Error(kNotSupported, {"alter table add check"});
        }
        return statement;
    }
    if (peek().isWord("alter") || peek().isWord("with") || peek().isWord("nocheck") || peek().isWord("check")) {
        throw Error(kNotSupported, {"alter table " + lowerName(peek().text)});
    }
    expectWord("drop");
    bool column = false;
    do {
        if (takeWord("column")) {
            column = true;
        } else if (takeWord("constraint")) {
            column = false;
        }
        (column ? statement.dropColumns : statement.dropConstraints).push_back(takeName());
    } while (takeSymbol(","));
    return statement;
}

DropStatement Parser::parseDrop() {
    expectWord("drop");
    DropStatement statement;
    if (takeWord("table")) {
        statement.kind = DropStatement::Kind::table;
    } else if (takeWord("view")) {
        statement.kind = DropStatement::Kind::view;
    } else if (takeWord("index")) {
        statement.kind = DropStatement::Kind::index;
    } else if (peek().kind == Token::Kind::word) {
        throw Error(kNotSupported, {"drop " + lowerName(peek().text)});
    } else {
        fail();
    }
    if (peek().isWord("if") && peek(1).isWord("exists")) {
        at_ += 2;
        statement.ifExists = true;
    }
    do {
        DropName name;
        if (statement.kind != DropStatement::Kind::index) {
            name.name = takeObjectName();
        } else {
            // t.i as older scripts have it, or i on t.
            name.name = takeName();
            while (takeSymbol(".")) {
                name.table = std::exchange(name.name, takeName());
            }
            if (takeWord("on")) {
                name.table = takeObjectName();
            } else if (name.table.empty()) {
                fail();
            }
        }
        statement.names.push_back(std::move(name));
    } while (takeSymbol(","));
    return statement;
}

}  // namespace orvenmod::store::tsql
