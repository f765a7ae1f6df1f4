#include "store/tsql/resultcolumns.h"

namespace orvenmod::store::tsql {

namespace {

ColumnType columnType(const Type& type) {
    if (type.isInteger()) return ColumnType::integer;
    if (type.isDecimal()) return ColumnType::decimal;
    if (type.isFloat()) return ColumnType::real;
    if (type.isDate()) return ColumnType::date;
    if (type.isBinary()) return ColumnType::binary;
    return ColumnType::text;
}

}  // namespace

Recordset emptyRecordset(const std::vector<ResultColumn>& columns) {
    std::vector<Column> result;
    result.reserve(columns.size());
    for (const ResultColumn& column : columns)
        result.push_back({column.name, columnType(column.type)});
    return Recordset(std::move(result));
}

}  // namespace orvenmod::store::tsql
