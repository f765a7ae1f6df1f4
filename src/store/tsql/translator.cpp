#include "store/tsql/translator.h"

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/parser.h"
#include "store/tsql/postgres_emitter.h"
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

namespace {

template <typename TargetEmitter>
Translation translated(std::string_view sql, const Catalog& catalog) {
    Parser parser(sql);
    Statement statement = parser.parse();
    Binder binder(catalog, parser.literals());
    binder.bind(statement);
    Translation translation;
    TargetEmitter emitter(parser.literals());
    emitter.emit(statement, sql, translation);
    for (const int literal : binder.fixedLiterals()) {
        translation.fixedLiterals.push_back(
            {literal, std::string(parser.literals()[static_cast<std::size_t>(literal)].text)});
    }
    return translation;
}

}  // namespace

Translation translateForSqlite(std::string_view sql, const Catalog& catalog) {
    return translated<SqliteEmitter>(sql, catalog);
}

Translation translateForPostgres(std::string_view sql, const Catalog& catalog) {
    return translated<PostgresEmitter>(sql, catalog);
}

std::vector<ColumnInfo> viewColumns(std::string_view viewText, const Catalog& catalog) {
    Parser parser(viewText);
    Statement statement = parser.parse();
    auto* view = std::get_if<CreateViewStatement>(&statement);
    if (view == nullptr) {
        throw Error(kSyntaxNear, {"view"});
    }
    Binder binder(catalog, parser.literals());
    binder.bindView(*view);
    return view->query->columns;
}

}  // namespace orvenmod::store::tsql
