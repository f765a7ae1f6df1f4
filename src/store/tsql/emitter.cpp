#include "store/tsql/emitter.h"

#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {
namespace {

std::string quoted(std::string_view text, char quote) {
    std::string result(1, quote);
    for (const char c : text) {
        result += c;
        if (c == quote) {
            result += c;
        }
    }
    return result + quote;
}

/// A column without a name is named by its aggregate, as the server's clients see it.
std::string resultName(const SelectItem& item) {
    return item.name.empty() && item.expression->aggregate ? item.expression->name : item.name;
}

const Select& firstSelect(const Query& query) { return query.select ? *query.select : firstSelect(*query.left); }

}  // namespace

std::string quoteName(std::string_view name) { return quoted(name, '"'); }

std::string quoteText(std::string_view text) { return quoted(text, '\''); }

std::string joined(const std::vector<std::string>& parts, const char* separator) {
    std::string result;
    for (const std::string& part : parts) {
        result += (result.empty() ? "" : separator) + part;
    }
    return result;
}

void Emitter::emit(const Statement& statement, std::string_view sql, Translation& translation) {
    translation_ = &translation;
    sql_ = sql;
    std::visit([this](const auto& specific) { emitStatement(specific); }, statement);
}

void Emitter::emitStatement(const QueryStatement& statement) {
    const Query& top = *statement.query;
    if (!firstSelect(top).into.empty()) {
        emitSelectInto(top);
        return;
    }
    addColumns(top);
    translation_->statements.push_back(deliveredRows(top));
}

void Emitter::addColumns(const Query& query) {
    const Select& first = firstSelect(query);
    translation_->kind = StatementKind::query;
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
        translation_->columns.push_back({resultName(first.items[i]), query.columns[i].type});
    }
}

void Emitter::emitStatement(const TransactionStatement& statement) {
    switch (statement.kind) {
        case TransactionStatement::Kind::begin:
            translation_->kind = StatementKind::beginTransaction;
            break;
        case TransactionStatement::Kind::commit:
            translation_->kind = StatementKind::commitTransaction;
            break;
        case TransactionStatement::Kind::rollback:
            translation_->kind = StatementKind::rollbackTransaction;
            break;
    }
}

void Emitter::startDefinition(const std::string& table) {
    translation_->kind = StatementKind::ddl;
    translation_->cacheable = false;
    translation_->table = table;
}

// Each source gets a name that no other has, since the binder has settled which one a column belongs to, and the target
// would look the name up again: of two sources t, one within the other, the inner is "t_2".
const std::string& Emitter::aliasOf(const Source& source) {
    std::string& alias = aliases_[source.id];
    if (alias.empty()) {
        alias = source.exposedName();
        for (int i = 2; !usedAliases_.insert(lowerName(alias)).second; ++i) {
            alias = source.exposedName() + "_" + std::to_string(i);
        }
    }
    return alias;
}

}  // namespace orvenmod::store::tsql
