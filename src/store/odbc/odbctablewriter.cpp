#include "store/odbc/odbctablewriter.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "store/odbc/odbcconnection.h"
#include "store/odbc/tablework.h"
#include "store/odbc/widetext.h"
#include "store/tsql/lexer.h"
#include "store/tsql/objectname.h"

namespace orvenmod::store::odbc {

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

const OdbcTableWriter::Column& OdbcTableWriter::column(std::string_view name) const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [&](const Column& c) { return tsql::sameName(c.name, name); });
    if (found == columns_.end()) throw connection_.failure(tsql::kUnknownColumn, {std::string(name)});
    return *found;
}

OdbcTableWriter::Field& OdbcTableWriter::field(std::string_view name) {
    if (!begun_) throw connection_.failure(tsql::kNoRowBegun);
    Field fresh;
    fresh.column = column(name);
    const auto known = std::find_if(fields_.begin(), fields_.end(),
                                    [&](const Field& f) { return f.column.name == fresh.column.name; });
    if (known != fields_.end()) return *known = std::move(fresh);
    return fields_.emplace_back(std::move(fresh));
}

void OdbcTableWriter::set(std::string_view name, std::string_view text) {
    Field& changed = field(name);
    changed.text = std::string(text);
    if (!isAscii(text)) changed.wide = wideText(text);
}

void OdbcTableWriter::setNull(std::string_view name) { field(name); }
void OdbcTableWriter::setBinary(std::string_view name, std::span<const std::byte> bytes) { field(name).bytes = bytes; }

std::string OdbcTableWriter::insertText(const std::vector<Column>& columns) const {
    if (columns.empty()) return "insert into " + quotedName_ + " default values";
    std::string names;
    std::string places;
    for (const Column& column : columns) {
        names += (names.empty() ? "" : ",") + tsql::bracketed(column.name);
        places += places.empty() ? "?" : ",?";
    }
    return "insert into " + quotedName_ + "(" + names + ") values(" + places + ")";
}

void OdbcTableWriter::update() {
    if (!std::exchange(begun_, false)) throw connection_.failure(tsql::kNoRowBegun);
    std::vector<Column> columns;
    for (const Field& field : fields_) {
        if (field.text) connection_.checkText(*field.text, characterSetOf(field.column.type));
        columns.push_back(field.column);
    }
    std::string insert = insertText(columns);
    connection_.run(std::make_shared<InsertOfFields>(connection_.statement(), std::move(insert), std::move(fields_)));
    fields_.clear();
}

}  // namespace orvenmod::store::odbc
