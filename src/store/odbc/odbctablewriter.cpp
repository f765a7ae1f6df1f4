#include "store/odbc/odbctablewriter.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "store/odbc/odbcconnection.h"
#include "store/odbc/tablework.h"
#include "store/tsql/lexer.h"
#include "store/tsql/objectname.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

OdbcConnection::CharacterSet setOf(SQLSMALLINT type) {
    const bool wide = type == SQL_WCHAR || type == SQL_WVARCHAR || type == SQL_WLONGVARCHAR;
    return wide ? OdbcConnection::CharacterSet::wide : OdbcConnection::CharacterSet::codePage;
}

std::u16string wideText(std::string_view text) {
    std::u16string result;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = tsql::nextCharacter(text, at);
        if (character < 0x10000) {
            result += static_cast<char16_t>(character);
        } else {
            result += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            result += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return result;
}

}  // namespace

OdbcTableWriter::OdbcTableWriter(OdbcConnection& connection, std::string_view table)
    : connection_(connection), name_(tsql::objectNameParts(table)) {
    for (const std::string& part : name_)
        quotedName_ += (quotedName_.empty() ? "" : ".") + (part.empty() ? part : tsql::bracketed(part));
    if (!name_.empty()) readColumns();
    if (columns_.empty()) throw connection_.failure(tsql::kUnknownObject, {std::string(table)});
}

void OdbcTableWriter::readColumns() {
    const auto work = std::make_shared<ColumnsOfTable>(connection_.statement(), name_, quotedName_);
    connection_.run(work);
    columns_ = std::move(work->columns());
}

void OdbcTableWriter::addNew() {
    fields_.clear();
    begun_ = true;
}

OdbcTableWriter::Field& OdbcTableWriter::field(std::string_view name) {
    if (!begun_) throw connection_.failure(tsql::kNoRowBegun);
    const auto column =
        std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) { return tsql::sameName(c.name, name); });
    if (column == columns_.end()) throw connection_.failure(tsql::kUnknownColumn, {std::string(name)});
    const auto known =
        std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) { return f.column.name == column->name; });
    Field fresh;
    fresh.column = *column;
    if (known != fields_.end()) return *known = std::move(fresh);
    return fields_.emplace_back(std::move(fresh));
}

void OdbcTableWriter::set(std::string_view name, std::string_view text) {
    Field& changed = field(name);
    changed.text = std::string(text);
    const bool plain = std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    if (!plain) changed.wide = wideText(text);
}

void OdbcTableWriter::setNull(std::string_view name) { field(name); }
void OdbcTableWriter::setBinary(std::string_view name, std::span<const std::byte> bytes) { field(name).bytes = bytes; }

std::string OdbcTableWriter::insertText() const {
    if (fields_.empty()) return "insert into " + quotedName_ + " default values";
    std::string names;
    std::string places;
    for (const Field& field : fields_) {
        names += (names.empty() ? "" : ",") + tsql::bracketed(field.column.name);
        places += places.empty() ? "?" : ",?";
    }
    return "insert into " + quotedName_ + "(" + names + ") values(" + places + ")";
}

void OdbcTableWriter::update() {
    if (!std::exchange(begun_, false)) throw connection_.failure(tsql::kNoRowBegun);
    for (const Field& field : fields_) {
        if (field.text) connection_.checkText(*field.text, setOf(field.column.type));
    }
    std::string insert = insertText();
    connection_.run(std::make_shared<InsertOfFields>(connection_.statement(), std::move(insert), std::move(fields_)));
    fields_.clear();
}

}  // namespace orvenmod::store::odbc
