#include "store/odbc/tablework.h"

#include <algorithm>
#include <utility>

#include "store/odbc/widetext.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::odbc {

namespace {

constexpr std::size_t kPiece = 64UL << 10;
constexpr std::size_t kMostVarchar = 8000;
constexpr std::size_t kMostNvarchar = 4000;

std::string cellText(const OdbcWork& work, SQLUSMALLINT column) {
    char buffer[1024] = {};
    SQLLEN length = 0;
    work.check([&] { return SQLGetData(work.statement().get(), column, SQL_C_CHAR, buffer, sizeof buffer, &length); });
    return length == SQL_NULL_DATA ? "" : buffer;
}

}  // namespace

ColumnsOfTable::ColumnsOfTable(OdbcHandle statement, std::vector<std::string> name, std::string quotedName)
    : OdbcWork(std::move(statement)),
      name_(std::move(name)),
      select_("select * from " + std::move(quotedName) + " where 1=0") {}

// Asked of the catalogue: a query that fails may end the server's transaction.
bool ColumnsOfTable::isThere() {
    constexpr SQLUSMALLINT kTableName = 3;
    const auto part = [this](std::size_t fromTheEnd) {
        return fromTheEnd < name_.size() && !name_[name_.size() - 1 - fromTheEnd].empty()
                   ? sqlText(name_[name_.size() - 1 - fromTheEnd].c_str())
                   : nullptr;
    };
    const auto length = [](const SQLCHAR* text) -> SQLSMALLINT { return text == nullptr ? 0 : SQL_NTS; };
    SQLCHAR* table = part(0);
    SQLCHAR* owner = part(1);
    SQLCHAR* database = part(2);
    check([&] {
        return SQLTables(statement().get(), database, length(database), owner, length(owner), table, length(table),
                         nullptr, 0);
    });
    bool found = false;
    // Names are patterns there, so that others may come along.
    for (;;) {
        const SQLRETURN result = await([this] { return SQLFetch(statement().get()); });
        if (result == SQL_NO_DATA) break;
        statement().check(result);
        found = found || tsql::sameName(cellText(*this, kTableName), name_.back());
    }
    SQLFreeStmt(statement().get(), SQL_CLOSE);
    return found;
}

void ColumnsOfTable::run() {
    if (!isThere()) return;
    check([this] {
        return SQLExecDirect(statement().get(), sqlText(select_.c_str()), static_cast<SQLINTEGER>(select_.size()));
    });
    SQLSMALLINT count = 0;
    check([&] { return SQLNumResultCols(statement().get(), &count); });
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        SQLCHAR name[512] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        OdbcTableWriter::Column column;
        check([&] {
            return SQLDescribeCol(statement().get(), static_cast<SQLUSMALLINT>(i), name, sizeof name, &length,
                                  &column.type, &column.size, &digits, &nullable);
        });
        column.name = reinterpret_cast<const char*>(name);
        columns_.push_back(std::move(column));
    }
}

InsertOfFields::InsertOfFields(OdbcHandle statement, std::string insert, std::vector<OdbcTableWriter::Field> fields)
    : OdbcWork(std::move(statement)), insert_(std::move(insert)), fields_(std::move(fields)) {}

void InsertOfFields::bindBinary(SQLUSMALLINT index, OdbcTableWriter::Field& field) {
    const SQLSMALLINT declared = field.column.type;
    const SQLSMALLINT type = isBinary(declared) ? declared : static_cast<SQLSMALLINT>(SQL_LONGVARBINARY);
    // Little goes without a stream: drivers differ in what they make of an empty one, or of one for a short column.
    static std::byte nothing{};
    const std::size_t size = field.bytes->size();
    const bool streamed = size > kMostVarchar;
    field.indicator = streamed ? SQL_LEN_DATA_AT_EXEC(static_cast<SQLLEN>(size)) : static_cast<SQLLEN>(size);
    if (!streamed) field.own.assign(field.bytes->begin(), field.bytes->end());
    std::byte* plain = size == 0 ? &nothing : field.own.data();
    statement().check(SQLBindParameter(statement().get(), index, SQL_PARAM_INPUT, SQL_C_BINARY, type,
                                       std::max<SQLULEN>(size, 1), 0,
                                       streamed ? static_cast<SQLPOINTER>(&field) : plain,
                                       static_cast<SQLLEN>(streamed ? 0 : size), &field.indicator));
}

void InsertOfFields::bindText(SQLUSMALLINT index, OdbcTableWriter::Field& field) {
    // Wide characters reach every column; what a column of the code page hasn't, was refused before.
    if (!field.wide.empty()) {
        const std::size_t bytes = field.wide.size() * sizeof(char16_t);
        const bool large = field.wide.size() > kMostNvarchar;
        field.indicator = static_cast<SQLLEN>(bytes);
        statement().check(SQLBindParameter(statement().get(), index, SQL_PARAM_INPUT, SQL_C_WCHAR,
                                           static_cast<SQLSMALLINT>(large ? SQL_WLONGVARCHAR : SQL_WVARCHAR),
                                           field.wide.size(), 0, field.wide.data(), static_cast<SQLLEN>(bytes),
                                           &field.indicator));
        return;
    }
    const SQLSMALLINT type = isBinary(field.column.type) ? field.column.type : static_cast<SQLSMALLINT>(SQL_VARCHAR);
    const std::size_t size = field.text->size();
    field.indicator = static_cast<SQLLEN>(size);
    statement().check(SQLBindParameter(statement().get(), index, SQL_PARAM_INPUT, SQL_C_CHAR,
                                       size > kMostVarchar ? static_cast<SQLSMALLINT>(SQL_LONGVARCHAR) : type,
                                       std::max<SQLULEN>(size, 1), 0, field.text->data(), static_cast<SQLLEN>(size),
                                       &field.indicator));
}

// Texts go as texts, whatever the column: the server converts them by its own rules.
void InsertOfFields::bind(SQLUSMALLINT index, OdbcTableWriter::Field& field) {
    if (field.bytes) return bindBinary(index, field);
    if (field.text) return bindText(index, field);
    const SQLSMALLINT type = isBinary(field.column.type) ? field.column.type : static_cast<SQLSMALLINT>(SQL_VARCHAR);
    field.indicator = SQL_NULL_DATA;
    statement().check(SQLBindParameter(statement().get(), index, SQL_PARAM_INPUT, SQL_C_CHAR, type,
                                       std::max<SQLULEN>(field.column.size, 1), 0, nullptr, 0, &field.indicator));
}

// Sends the contents of each binary field that the driver asks for, piece by piece.
void InsertOfFields::stream() {
    for (;;) {
        SQLPOINTER wanted = nullptr;
        const SQLRETURN result = await([&] { return SQLParamData(statement().get(), &wanted); });
        if (result != SQL_NEED_DATA) {
            if (result != SQL_NO_DATA) statement().check(result);
            return;
        }
        const std::span<const std::byte> bytes = *static_cast<OdbcTableWriter::Field*>(wanted)->bytes;
        for (std::size_t at = 0; at < bytes.size(); at += kPiece) {
            const std::size_t count = std::min(kPiece, bytes.size() - at);
            takePiece(bytes.subspan(at, count));
            check([&] { return SQLPutData(statement().get(), piece_.data(), static_cast<SQLLEN>(count)); });
        }
    }
}

void InsertOfFields::takePiece(std::span<const std::byte> bytes) {
    const std::lock_guard lock(mutex_);
    if (givenUp_) throw Failure(FailureKind::other, 0, "");  // to nobody
    piece_.assign(bytes.begin(), bytes.end());
}

void InsertOfFields::giveUp() {
    const std::lock_guard lock(mutex_);
    givenUp_ = true;
}

void InsertOfFields::run() {
    SQLUSMALLINT index = 0;
    for (OdbcTableWriter::Field& field : fields_)
        bind(++index, field);
    const SQLRETURN result = await([this] {
        return SQLExecDirect(statement().get(), sqlText(insert_.c_str()), static_cast<SQLINTEGER>(insert_.size()));
    });
    if (result == SQL_NEED_DATA) {
        stream();
    } else if (result != SQL_NO_DATA) {
        statement().check(result);
    }
}

}  // namespace orvenmod::store::odbc
