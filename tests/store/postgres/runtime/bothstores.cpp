#include "store/postgres/runtime/bothstores.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <stdexcept>

#include "store/postgres/runtime/runtime.h"
#include "store/sqlite/functions.h"
#include "store/tsql/error.h"
#include "store/tsql/type.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::Kind;
using tsql::Type;

// In front of a number, so that it isn't taken for a text.
constexpr char kDecimal = '\x01';
constexpr char kFloat = '\x02';

// Results are told in one form, whatever type the server gives them.
constexpr const char* kShown = R"(
CREATE FUNCTION public.shown(v text) RETURNS text LANGUAGE sql RETURN v;
CREATE FUNCTION public.shown(v smallint) RETURNS text LANGUAGE sql RETURN v::text;
CREATE FUNCTION public.shown(v integer) RETURNS text LANGUAGE sql RETURN v::text;
CREATE FUNCTION public.shown(v bigint) RETURNS text LANGUAGE sql RETURN v::text;
CREATE FUNCTION public.shown(v boolean) RETURNS text LANGUAGE sql RETURN v::integer::text;
CREATE FUNCTION public.shown(v numeric) RETURNS text LANGUAGE sql RETURN chr(1) || v;
CREATE FUNCTION public.shown(v double precision) RETURNS text LANGUAGE sql RETURN chr(2) || v;
CREATE FUNCTION public.shown(v timestamp) RETURNS text LANGUAGE sql
    RETURN regexp_replace(to_char(v, 'YYYY-MM-DD HH24:MI:SS.MS'), '[.]000$', '');
CREATE FUNCTION public.shown(v time) RETURNS text LANGUAGE sql
    RETURN regexp_replace(to_char(v, 'HH24:MI:SS.MS'), '[.]000$', '');
CREATE FUNCTION public.shown(v bytea) RETURNS text LANGUAGE sql RETURN 'x' || encode(v, 'hex');
)";

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c;
        if (c == '\'') result += c;
    }
    return result + "'";
}

std::string hex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string result;
    for (const char c : bytes) {
        result += kDigits[static_cast<unsigned char>(c) >> 4];
        result += kDigits[static_cast<unsigned char>(c) & 15];
    }
    return result;
}

Type typeOfName(const std::string& name) { return tsql::parseType(name).value(); }

std::string embeddedLiteral(const Value& value) {
    if (value.isNull) return "NULL";
    const Type type = typeOfName(value.type);
    if (type.isBinary()) return "x'" + value.text + "'";
    if (!type.isNumber()) return quoted(value.text);
    return type.isFloat() && value.text.find_first_of(".e") == std::string::npos ? value.text + ".0" : value.text;
}

// Names the functions that convert to the type.
std::string resultName(const Type& type) {
    if (type.isInteger()) return "bigint";
    if (type.isDecimal()) return "numeric";
    if (type.isFloat()) return "float";
    if (type.isBinary()) return "binary";
    if (type.kind == Kind::time) return "time";
    if (type.isDate()) return "datetime";
    return type.kind == Kind::uniqueidentifier ? "guid" : "text";
}

std::string nativeType(const Type& type) {
    if (type.kind == Kind::bigint) return "bigint";
    if (type.kind == Kind::integer) return "integer";
    if (type.isInteger()) return "smallint";
    if (type.isDecimal()) return "numeric";
    if (type.isFloat()) return "double precision";
    if (type.isBinary()) return "bytea";
    if (type.kind == Kind::time) return "time";
    return type.isDate() ? "timestamp" : "text";
}

std::string serverLiteral(const Value& value) {
    const Type valueType = typeOfName(value.type);
    const std::string type = nativeType(valueType);
    if (value.isNull) return "NULL::" + type;
    return quoted((valueType.isBinary() ? "\\x" : "") + value.text) + "::" + type;
}

// The embedded store keeps a decimal as a double, which has a sign also where it is zero.
constexpr int kDecimalDigits = 14;
constexpr int kFloatDigits = 17;

std::string sameNumber(const std::string& text, int digits) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, digits < kFloatDigits && value == 0 ? 0.0 : value);
    return buffer;
}

std::string failure(const std::string& number, const std::string& arguments) {
    return "fails " + number + " (" + arguments + ")";
}

}  // namespace

Value text(std::string text) { return {"varchar(max)", std::move(text)}; }
Value integer(std::int64_t value) { return {"bigint", std::to_string(value)}; }
Value decimal(std::string text) { return {"decimal(38,10)", std::move(text)}; }
Value floating(std::string text) { return {"float", std::move(text)}; }
Value moment(std::string text) { return {"datetime", std::move(text)}; }
Value timeOfDay(std::string text) { return {"time", std::move(text)}; }
Value nullOf(std::string type) { return {std::move(type), "", true}; }

BothStores& bothStores() {
    static BothStores stores;
    return stores;
}

BothStores::BothStores() : session_(nullptr, &PQfinish), file_(nullptr, &sqlite3_close) {
    sqlite3* file = nullptr;
    sqlite3_open(":memory:", &file);
    file_.reset(file);
    sqlite::registerFunctions(file, runtime_);

    // No function counts on the session's search path.
    const auto& server = test::PostgresServer::shared();
    session_.reset(PQconnectdb(("host='" + server.host() + "' user=" + test::PostgresServer::kOwner + " dbname='" +
                                database_.name() +
                                "' client_encoding=UTF8 options='-c client_min_messages=warning -c search_path='")
                                   .c_str()));
    for (const std::string& sql : {runtimeSql(), std::string(kShown)}) {
        const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(session_.get(), sql.c_str()), &PQclear);
        if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) throw std::runtime_error(PQerrorMessage(session_.get()));
    }
}

std::string BothStores::embedded(const std::string& expression) {
    runtime_.startStatement();
    sqlite3_stmt* prepared = nullptr;
    const std::string sql = "SELECT " + expression;
    if (sqlite3_prepare_v2(file_.get(), sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK)
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(file_.get()));
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared, &sqlite3_finalize);
    if (sqlite3_step(prepared) != SQLITE_ROW) {
        if (!runtime_.error) throw std::runtime_error(sql + ": " + sqlite3_errmsg(file_.get()));
        std::string arguments;
        for (const std::string& argument : runtime_.error->arguments())
            arguments += (arguments.empty() ? "" : "|") + argument;
        return failure(std::to_string(runtime_.error->number()), arguments);
    }
    const auto* content = static_cast<const char*>(sqlite3_column_blob(prepared, 0));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(prepared, 0));
    switch (sqlite3_column_type(prepared, 0)) {
        case SQLITE_NULL:
            return "null";
        case SQLITE_FLOAT: {
            char buffer[32];
            const double value = sqlite3_column_double(prepared, 0);
            return kFloat + std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
        }
        case SQLITE_BLOB:
            return "x" + hex({content, size});
        default:
            return {reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)),
                    static_cast<std::size_t>(sqlite3_column_bytes(prepared, 0))};
    }
}

std::string BothStores::server(const std::string& expression) {
    const std::string sql = "SELECT public.shown(" + expression + ")";
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(session_.get(), sql.c_str()), &PQclear);
    if (PQresultStatus(result.get()) != PGRES_TUPLES_OK) {
        const auto field = [&result](int code) {
            const char* text = PQresultErrorField(result.get(), code);
            return std::string(text == nullptr ? "" : text);
        };
        if (field(PG_DIAG_SQLSTATE) != "OV000") return "fails natively: " + field(PG_DIAG_MESSAGE_PRIMARY);
        std::string arguments = field(PG_DIAG_MESSAGE_DETAIL);
        for (char& c : arguments)
            c = c == '\x1f' ? '|' : c;
        return failure(field(PG_DIAG_MESSAGE_PRIMARY), arguments);
    }
    return PQgetisnull(result.get(), 0, 0) != 0 ? "null" : PQgetvalue(result.get(), 0, 0);
}

void BothStores::compare(const std::string& embeddedCall, const std::string& serverCall) {
    std::string expected = embedded(embeddedCall);
    std::string actual = server(serverCall);
    // A decimal of the embedded store is a double or, where it is whole, an integer.
    const bool number = !actual.empty() && (actual[0] == kDecimal || actual[0] == kFloat);
    if (number && !expected.starts_with("fails") && expected != "null") {
        const int digits = actual[0] == kDecimal ? kDecimalDigits : kFloatDigits;
        actual = sameNumber(actual.substr(1), digits);
        expected = sameNumber(expected[0] == kFloat ? expected.substr(1) : expected, digits);
    }
    EXPECT_EQ(actual, expected) << serverCall;
}

void BothStores::expectSameWithNulls(const std::string& name, const std::vector<Value>& arguments) {
    expectSame(name, arguments);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::vector<Value> changed = arguments;
        changed[i] = nullOf(arguments[i].type);
        expectSame(name, changed);
    }
}

void BothStores::expectSame(const std::string& name, const std::vector<Value>& arguments) {
    std::string embeddedCall = name + "(";
    std::string serverCall = "orven." + name + "(";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        embeddedCall += (i == 0 ? "" : ", ") + embeddedLiteral(arguments[i]);
        serverCall += (i == 0 ? "" : ", ") + serverLiteral(arguments[i]);
    }
    compare(embeddedCall + ")", serverCall + ")");
}

namespace {

bool isAllowed(const std::string& from, const std::string& to) {
    try {
        tsql::checkExplicit(typeOfName(from), typeOfName(to));
        return true;
    } catch (const tsql::Error&) {
        return false;
    }
}

std::string typeArguments(const Value& value, const std::string& to) {
    return ", " + quoted(value.type) + ", " + quoted(to);
}

}  // namespace

void BothStores::expectSameConversion(const Value& value, const std::string& to, int style) {
    if (!isAllowed(value.type, to)) return;
    const std::string types = typeArguments(value, to) + ", " + std::to_string(style) + ")";
    compare("ts_convert(" + embeddedLiteral(value) + types,
            "orven.ts_" + resultName(typeOfName(to)) + "(" + serverLiteral(value) + types);
}

void BothStores::expectSameAttempt(const Value& value, const std::string& to) {
    if (!isAllowed(value.type, to)) return;
    const std::string types = typeArguments(value, to) + ")";
    compare("ts_try(" + embeddedLiteral(value) + types,
            "orven.ts_try_" + resultName(typeOfName(to)) + "(" + serverLiteral(value) + types);
}

void BothStores::expectSameAssignment(const Value& value, const std::string& to) {
    if (!isAllowed(value.type, to)) return;
    const std::string types = typeArguments(value, to) + ", 'tblItem', 'fName')";
    compare("ts_store(" + embeddedLiteral(value) + types,
            "orven.ts_store_" + resultName(typeOfName(to)) + "(" + serverLiteral(value) + types);
}

}  // namespace orvenmod::store::postgres
