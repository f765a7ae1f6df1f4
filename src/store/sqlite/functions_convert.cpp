// Conversions of values that a statement computes or reads; literals are converted when they are bound.
//
//   ts_cast('12 ', 'varchar(10)', 'int')                      12
//   ts_store('12345678901', 'varchar(20)', 'varchar(10)',
//            't', 'c')                                        2628 with t and c, where ts_cast would cut
//   ts_try('x', 'varchar(1)', 'int')                          null
#include "store/sqlite/functioncall.h"
#include "store/tsql/functions.h"
#include "store/tsql/values.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Datum;

// A value that has the type already: the usual case of a conversion that only guards.
bool plainly(const Datum& value, const tsql::Type& from, const tsql::Type& to) {
    return from == to && value.kind == Datum::Kind::text && to.isText() && to.length <= 0;
}

void cast(FunctionCall& call) {
    const Datum value = call.datum(0, call.type(1));
    if (plainly(value, call.type(1), call.type(2))) return call.giveArgument(0);
    call.give(tsql::convert(value, call.type(1), call.type(2)));
}

tsql::ConvertMode styled(std::int64_t style) {
    tsql::ConvertMode mode;
    mode.style = static_cast<int>(style);
    return mode;
}

void convertStyled(FunctionCall& call) {
    call.give(tsql::convert(call.datum(0, call.type(1)), call.type(1), call.type(2), styled(call.integer(3))));
}

void store(FunctionCall& call) {
    if (call.isNull(0)) return call.giveNull();
    tsql::ConvertMode mode;
    mode.assignment = true;
    mode.table = call.text(3);
    mode.column = call.text(4);
    call.give(tsql::convert(call.datum(0, call.type(1)), call.type(1), call.type(2), mode));
}

void tryConvert(FunctionCall& call) {
    try {
        const auto mode = styled(call.count() == 4 ? call.integer(3) : 0);
        call.give(tsql::convert(call.datum(0, call.type(1)), call.type(1), call.type(2), mode));
    } catch (const tsql::Error& error) {
        // A conversion that the types never allow is no matter of the value.
        if (error.number() == tsql::kNoExplicitConversion) throw;
        call.giveNull();
    }
}

void raise(FunctionCall& call) {
    std::vector<std::string> arguments;
    for (int i = 1; i < call.count(); ++i)
        arguments.emplace_back(call.text(i));
    throw tsql::Error(static_cast<int>(call.integer(0)), std::move(arguments));
}

void dataLength(FunctionCall& call) { call.give(tsql::dataLength(call.datum(0), call.type(1))); }

constexpr FunctionEntry kEntries[] = {
    strict<cast>("ts_cast", 3),
    strict<convertStyled>("ts_convert", 4),
    open<store>("ts_store", 5),
    strict<tryConvert>("ts_try", 3),
    strict<tryConvert>("ts_try", 4),
    open<raise>("ts_fail", -1, Results::varying),
    strict<dataLength>("ts_datalength", 2),
};

}  // namespace

void registerConversions(sqlite3* database, Runtime& runtime) { registerEntries(database, runtime, kEntries); }

}  // namespace orvenmod::store::sqlite
