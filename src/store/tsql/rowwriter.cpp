#include "store/tsql/rowwriter.h"

#include <algorithm>
#include <utility>

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {

namespace {

std::string_view withoutOwner(std::string_view table) {
    constexpr std::string_view kOwner = "dbo.";
    const bool owned = table.size() > kOwner.size() && sameName(table.substr(0, kOwner.size()), kOwner);
    return owned ? table.substr(kOwner.size()) : table;
}

}  // namespace

const ObjectInfo& tableNamed(const Catalog& catalog, std::string_view name) {
    const ObjectInfo* object = catalog.find(withoutOwner(name));
    if (object == nullptr || object->kind != ObjectInfo::Kind::table) throw Error(kUnknownObject, {std::string(name)});
    return *object;
}

const ColumnInfo& columnNamed(const ObjectInfo& table, std::string_view name) {
    const auto& columns = table.columns;
    const auto column =
        std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return sameName(c.name, name); });
    if (column == columns.end()) throw Error(kUnknownColumn, {std::string(name)});
    return *column;
}

Datum storedValue(std::string_view text, const ObjectInfo& table, const ColumnInfo& column) {
    Datum value;
    value.kind = Datum::Kind::text;
    value.text = text;
    ConvertMode mode;
    mode.assignment = true;
    mode.table = table.name;
    mode.column = column.name;
    return convert(value, textType(Kind::varchar, -1), column.type, mode);
}

RowWriter::RowWriter(const Catalog& catalog, std::string_view table) : table_(tableNamed(catalog, table)) {}

void RowWriter::addNew() {
    fields_.clear();
    begun_ = true;
}

RowWriter::Field& RowWriter::field(std::string_view name) {
    checkOpen();
    if (!begun_) throw worded(language(), kNoRowBegun, {});
    const ColumnInfo* column = nullptr;
    try {
        column = &columnNamed(table_, name);
    } catch (const Error& error) {
        throw worded(language(), error);
    }
    const auto index = static_cast<std::size_t>(column - table_.columns.data());
    const auto known = std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) { return f.column == index; });
    if (known != fields_.end()) return *known = {index, std::nullopt, std::nullopt};
    return fields_.emplace_back(Field{index, std::nullopt, std::nullopt});
}

void RowWriter::set(std::string_view name, std::string_view text) { field(name).text = std::string(text); }
void RowWriter::setNull(std::string_view name) { field(name); }
void RowWriter::setBinary(std::string_view name, std::span<const std::byte> bytes) { field(name).bytes = bytes; }

Datum RowWriter::valueOf(const Field& field) const {
    return field.text ? storedValue(*field.text, table_, columnOf(field)) : Datum();
}

std::string RowWriter::newValue(std::string_view column) const {
    for (const Field& field : fields_) {
        if (sameName(columnOf(field).name, column)) return field.text.value_or("NULL");
    }
    return "NULL";
}

void RowWriter::update() {
    checkOpen();
    if (!std::exchange(begun_, false)) throw worded(language(), kNoRowBegun, {});
    try {
        store();
    } catch (const Error& error) {
        throw worded(language(), error);
    }
}

}  // namespace orvenmod::store::tsql
