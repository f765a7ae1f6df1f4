// Queries.
//
//   ordered      query [order by ..]
//   query        intersection { (union [all] | except) intersection }
//   intersection term { intersect term }
//   term         select .. | ( query )
//
// An order by belongs to the whole of a union, which is why no select reads one.
#include "store/tsql/error.h"
#include "store/tsql/parser.h"

namespace orvenmod::store::tsql {

QueryPtr Parser::parseQuery() {
    QueryPtr left = parseIntersection();
    while (peek().isWord("union") || peek().isWord("except")) {
        auto query = std::make_unique<Query>();
        query->op = take().isWord("union") ? SetOperator::unite : SetOperator::except;
        query->all = takeWord("all");
        if (query->all && query->op == SetOperator::except) {
            throw Error(kNotSupported, {"except all"});
        }
        query->left = std::move(left);
        query->right = parseIntersection();
        left = std::move(query);
    }
    return left;
}

QueryPtr Parser::parseOrderedQuery() {
    QueryPtr query = parseQuery();
    query->orderBy = parseOrderBy();
    return query;
}

QueryPtr Parser::parseIntersection() {
    QueryPtr left = parseQueryTerm();
    while (takeWord("intersect")) {
        auto query = std::make_unique<Query>();
        query->op = SetOperator::intersect;
        query->left = std::move(left);
        query->right = parseQueryTerm();
        left = std::move(query);
    }
    return left;
}

QueryPtr Parser::parseQueryTerm() {
    if (++depth_ > kDeepest) {
        throw Error(kNotSupported, {"a statement nested this deep"});
    }
    QueryPtr query;
    if (takeSymbol("(")) {
        query = parseQuery();
        expectSymbol(")");
    } else {
        query = parseSelect();
    }
    --depth_;
    return query;
}

QueryPtr Parser::parseSelect() {
    expectWord("select");
    auto query = std::make_unique<Query>();
    query->select = std::make_unique<Select>();
    Select& select = *query->select;
    select.distinct = takeWord("distinct");
    if (!select.distinct) {
        takeWord("all");
    }
    select.top = parseTop(&select);
    do {
        select.items.push_back(parseSelectItem());
    } while (takeSymbol(","));
    if (takeWord("into")) {
        select.into = takeObjectName();
    }
    if (takeWord("from")) {
        select.from = parseFrom();
    }
    if (takeWord("where")) {
        select.where = parseCondition();
    }
    if (takeWord("group")) {
        expectWord("by");
        do {
            select.groupBy.push_back(parseSum());
        } while (takeSymbol(","));
        if (peek().isWord("with")) {
            throw Error(kNotSupported, {"group by with"});
        }
    }
    if (takeWord("having")) {
        select.having = parseCondition();
    }
    return query;
}

/// `select` is null where percent and ties have no place (update, delete).
ExpressionPtr Parser::parseTop(Select* select) {
    if (!takeWord("top")) {
        return nullptr;
    }
    ExpressionPtr count;
    if (takeSymbol("(")) {
        count = parseSum();
        expectSymbol(")");
    } else if (peek().kind == Token::Kind::literal) {
        count = parsePrimary();
    } else {
        fail();
    }
    if (select != nullptr && takeWord("percent")) {
        select->topPercent = true;
    }
    if (select != nullptr && peek().isWord("with") && peek(1).isWord("ties")) {
        at_ += 2;
        select->topWithTies = true;
    }
    return count;
}

SelectItem Parser::parseSelectItem() {
    SelectItem item;
    if (takeSymbol("*")) {
        return item;
    }
    // name.* and owner.name.*
    for (std::size_t ahead = 1; peek(ahead).isSymbol(".") && isName(); ahead += 2) {
        if (peek(ahead + 1).isSymbol("*")) {
            item.qualifier = peek(ahead - 1).name();
            at_ += ahead + 2;
            return item;
        }
    }
    // select n = id, 'n' = id: the name in front.
    const bool textAlias = peek().kind == Token::Kind::literal && peek(1).isSymbol("=");
    if (((isName() && peek(1).isSymbol("=")) || textAlias) && !peek(2).isSymbol("=")) {
        item.name = textAlias ? take().literal.value() : takeName();
        take();
        item.expression = parseSum();
        return item;
    }
    item.expression = parseSum();
    if (const auto alias = takeAlias()) {
        item.name = *alias;
    } else if (item.expression->kind == ExpressionKind::column) {
        item.name = item.expression->name;
    }
    return item;
}

std::vector<OrderItem> Parser::parseOrderBy() {
    std::vector<OrderItem> items;
    if (!takeWord("order")) {
        return items;
    }
    expectWord("by");
    do {
        OrderItem item;
        item.expression = parseSum();
        item.descending = takeWord("desc");
        if (!item.descending) {
            takeWord("asc");
        }
        items.push_back(std::move(item));
    } while (takeSymbol(","));
    if (peek().isWord("offset")) {
        throw Error(kNotSupported, {"offset"});
    }
    return items;
}

std::vector<SourcePtr> Parser::parseFrom() {
    std::vector<SourcePtr> sources;
    do {
        sources.push_back(parseJoined());
    } while (takeSymbol(","));
    return sources;
}

SourcePtr Parser::parseJoined() {
    SourcePtr left = parseSource();
    while (const auto kind = takeJoin()) {
        auto join = std::make_unique<Source>();
        join->kind = Source::Kind::join;
        join->join = *kind;
        join->left = std::move(left);
        // a join b join c on .. on .. nests to the right.
        join->right = *kind == JoinKind::cross ? parseSource() : parseJoined();
        if (*kind != JoinKind::cross) {
            expectWord("on");
            join->on = parseCondition();
        }
        left = std::move(join);
        // Another condition belongs to the join that this one stands within.
        if (*kind != JoinKind::cross && peek().isWord("on")) {
            return left;
        }
    }
    return left;
}

std::optional<JoinKind> Parser::takeJoin() {
    static constexpr std::pair<std::string_view, JoinKind> kKinds[] = {
        {"left", JoinKind::left}, {"right", JoinKind::right}, {"full", JoinKind::full}};
    for (const auto& [word, kind] : kKinds) {
        if (takeWord(word)) {
            takeWord("outer");
            expectWord("join");
            return kind;
        }
    }
    if (takeWord("cross")) {
        if (peek().isWord("apply")) {
            throw Error(kNotSupported, {"cross apply"});
        }
        expectWord("join");
        return JoinKind::cross;
    }
    if (takeWord("inner")) {
        expectWord("join");
        return JoinKind::inner;
    }
    return takeWord("join") ? std::optional(JoinKind::inner) : std::nullopt;
}

SourcePtr Parser::parseSource() {
    auto source = std::make_unique<Source>();
    if (!takeSymbol("(")) {
        source->name = takeObjectName();
        if (peek().isSymbol("(") && !peek(1).isWord("nolock")) {
            throw Error(kNotSupported, {"a table function"});
        }
        parseSourceAlias(*source);
        return source;
    }
    std::size_t inner = 0;
    while (peek(inner).isSymbol("(")) {
        ++inner;
    }
    if (peek(inner).isWord("select")) {
        // ((select ..) union ..) a, but also ((select ..) a join ..): the first reading that holds is taken.
        const std::size_t start = at_;
        try {
            source->kind = Source::Kind::derived;
            source->query = parseOrderedQuery();
            expectSymbol(")");
            parseSourceAlias(*source);
            if (source->alias.empty()) {
                fail();
            }
            return source;
        } catch (const Error&) {
            if (inner == 0) {
                throw;
            }
            at_ = start;
        }
    }
    source = parseJoined();
    expectSymbol(")");
    return source;
}

void Parser::parseSourceAlias(Source& source) {
    skipHints();
    if (takeWord("as") || isName()) {
        source.alias = takeName();
    }
    if (source.kind == Source::Kind::derived && takeSymbol("(")) {
        do {
            source.columnAliases.push_back(takeName());
        } while (takeSymbol(","));
        expectSymbol(")");
    }
    skipHints();
}

/// with (nolock), (nolock): hints on locks mean nothing to a store with one writer and snapshots.
void Parser::skipHints() {
    const bool announced = peek().isWord("with") && peek(1).isSymbol("(");
    if (!announced && !(peek().isSymbol("(") && peek(1).isWord("nolock"))) {
        return;
    }
    at_ += announced ? 2 : 1;
    do {
        if (takeWord("index")) {
            throw Error(kNotSupported, {"index hints"});
        }
        if (peek().kind != Token::Kind::word) {
            fail();
        }
        take();
    } while (takeSymbol(","));
    expectSymbol(")");
}

}  // namespace orvenmod::store::tsql
