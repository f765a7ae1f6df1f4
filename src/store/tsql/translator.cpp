#include "store/tsql/translator.h"

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/parser.h"
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

Translation translateForSqlite(std::string_view sql, const Catalog& catalog) {
    Parser parser(sql);
    Statement statement = parser.parse();
    Binder binder(catalog, parser.literals());
    binder.bind(statement);
    Translation translation;
    SqliteEmitter emitter(parser.literals());
    emitter.emit(statement, sql, translation);
    for (const int literal : binder.fixedLiterals()) {
        translation.fixedLiterals.push_back(
            {literal, std::string(parser.literals()[static_cast<std::size_t>(literal)].text)});
    }
    return translation;
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
