#include "store/tsql/fakecatalog.h"

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {

FakeCatalog::FakeCatalog() {
    add(tableOf("t(id int, n int, c varchar(10), f float, d datetime, m decimal(18|4))"));
    add(tableOf("u(id int, c varchar(10))"));
    ObjectInfo view = tableOf("v(id int, c varchar(10))");
    view.kind = ObjectInfo::Kind::view;
    add(view);
}

void FakeCatalog::add(ObjectInfo object) {
    std::string name = lowerName(object.name);
    objects_[std::move(name)] = std::move(object);
}

const ObjectInfo* FakeCatalog::find(std::string_view name) const {
    const auto found = objects_.find(lowerName(name));
    return found == objects_.end() ? nullptr : &found->second;
}

// A comma within a type is written as '|'.
ObjectInfo tableOf(const std::string& text) {
    ObjectInfo table;
    const std::size_t bracket = text.find('(');
    table.name = text.substr(0, bracket);
    std::string columns = text.substr(bracket + 1, text.size() - bracket - 2) + ",";
    while (!columns.empty()) {
        std::string column = columns.substr(0, columns.find(','));
        columns.erase(0, column.size() + 1);
        column.erase(0, column.find_first_not_of(' '));
        const std::size_t blank = column.find(' ');
        std::string type = column.substr(blank + 1);
        for (char& c : type) {
            c = c == '|' ? ',' : c;
        }
        table.columns.push_back({column.substr(0, blank), *parseType(type), true, false, false, type});
    }
    return table;
}

Translation translated(const std::string& sql) {
    static const FakeCatalog catalog;
    return translateForSqlite(sql, catalog);
}

std::string emitted(const std::string& sql) { return translated(sql).statements.at(0); }

int failureOf(const std::string& sql) {
    try {
        translated(sql);
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

std::string failureTextOf(const std::string& sql) {
    try {
        translated(sql);
        return "";
    } catch (const Error& error) {
        std::string text;
        for (const std::string& argument : error.arguments()) {
            text += (text.empty() ? "" : "|") + argument;
        }
        return text;
    }
}

}  // namespace orvenmod::store::tsql
