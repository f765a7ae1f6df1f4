// One call of a run-time function, made on the embedded store and on the server: the same text, or the same failure.
//
//   expectSame("ts_left", {text("abc"), integer(-1)})
//
//   ts_left('abc', -1)                            536 left
//   orven.ts_left('abc'::text, (-1)::bigint)      536 left
#pragma once

#include <libpq-fe.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "store/sqlite/runtime.h"
#include "support/postgresserver.h"

namespace orvenmod::store::postgres {

/// A value of one of the dialect's types, by its stored text; binary contents by their digits.
struct Value {
    std::string type;
    std::string text;
    bool isNull = false;
};

Value text(std::string text);
Value integer(std::int64_t value);
Value decimal(std::string text);
Value floating(std::string text);
Value moment(std::string text);
Value timeOfDay(std::string text);
Value nullOf(std::string type);

class BothStores {
public:
    BothStores();

    /// The value as a text, "null", or "fails" with number and arguments.
    std::string embedded(const std::string& expression);
    std::string server(const std::string& expression);

    void expectSame(const std::string& name, const std::vector<Value>& arguments);
    /// The call, and once with each of its arguments null.
    void expectSameWithNulls(const std::string& name, const std::vector<Value>& arguments);
    /// A conversion; one that the binder refuses by its types isn't made.
    void expectSameConversion(const Value& value, const std::string& to, int style = 0);
    void expectSameAttempt(const Value& value, const std::string& to);
    void expectSameAssignment(const Value& value, const std::string& to);

private:
    void compare(const std::string& embeddedCall, const std::string& serverCall);

    test::ServerDatabase database_;
    std::unique_ptr<PGconn, decltype(&PQfinish)> session_;
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> file_;
    sqlite::Runtime runtime_;
};

/// The stores of all cases of a process; made with the first.
BothStores& bothStores();

}  // namespace orvenmod::store::postgres
