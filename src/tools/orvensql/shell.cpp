#include "tools/orvensql/shell.h"

#include <algorithm>
#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>

namespace orvenmod::tools {

namespace {

using nlohmann::ordered_json;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string dumped(const ordered_json& json) {
    // Contents of binary columns need not be UTF-8.
    return json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

// Whether a statement gives rows, by its first word; parentheses may stand before it.
bool isQuery(std::string_view sql) {
    const auto start = sql.find_first_not_of("( \t\r\n");
    if (start == std::string_view::npos) return false;
    const std::string_view word = sql.substr(start, sql.find_first_of(" \t\r\n('\"[*;-+@", start) - start);
    constexpr std::string_view kSelect = "select";
    constexpr std::string_view kWith = "with";
    const auto same = [&word](std::string_view wanted) {
        return word.size() == wanted.size() &&
               std::equal(word.begin(), word.end(), wanted.begin(), [](char a, char b) { return (a | 0x20) == b; });
    };
    return same(kSelect) || same(kWith);
}

// A date alone or with whole seconds, whatever fraction the store keeps.
std::string_view shown(const store::Column& column, std::string_view text) {
    constexpr std::size_t kWithoutFraction = 19;
    const bool date = column.type == store::ColumnType::date && text.size() > kWithoutFraction;
    return date ? text.substr(0, kWithoutFraction) : text;
}

ordered_json rowsOf(const store::Recordset& rows) {
    ordered_json columns = ordered_json::array();
    for (const store::Column& column : rows.columns())
        columns.push_back(column.name);
    ordered_json lines = ordered_json::array();
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        ordered_json line = ordered_json::array();
        for (int i = 0; i < rows.columnCount(); ++i) {
            const store::Value value = rows.cell(row, i);
            if (value) {
                line.push_back(shown(rows.columns()[static_cast<std::size_t>(i)], *value));
            } else {
                line.push_back(nullptr);
            }
        }
        lines.push_back(std::move(line));
    }
    return {{"columns", std::move(columns)}, {"rows", std::move(lines)}};
}

ordered_json result(store::Connection& connection, std::string_view line) {
    const ordered_json ok = {{"ok", true}};
    if (line == "!begin") {
        connection.beginTrans();
        return ok;
    }
    if (line == "!commit") {
        connection.commitTrans();
        return ok;
    }
    if (line == "!rollback") {
        connection.rollbackTrans();
        return ok;
    }
    if (isQuery(line)) return rowsOf(connection.open(line));
    return {{"affected", connection.execute(line)}};
}

}  // namespace

std::string answerFor(const store::Failure& failure) {
    return dumped(
        {{"error",
          {{"number", failure.number()}, {"kind", store::kindWord(failure.kind())}, {"text", failure.text()}}}});
}

std::string answer(store::Connection& connection, const std::string& line) {
    const std::string_view statement = trimmed(line);
    if (statement.empty()) return {};
    try {
        return dumped(result(connection, statement));
    } catch (const store::Failure& failure) {
        return answerFor(failure);
    }
}

void runShell(store::Connection& connection, std::istream& input, std::ostream& output) {
    for (std::string line; std::getline(input, line);) {
        if (trimmed(line) == "!quit") break;
        const std::string text = answer(connection, line);
        if (!text.empty()) output << text << '\n' << std::flush;
    }
    connection.close();
}

}  // namespace orvenmod::tools
