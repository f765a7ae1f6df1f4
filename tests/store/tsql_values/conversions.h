// Short forms for the tests of conversions: a value and the names of its type and the target's.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "store/tsql/error.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql::test {

inline Datum text(const std::string& value) {
    Datum datum;
    datum.kind = Datum::Kind::text;
    datum.text = value;
    return datum;
}
inline Datum integer(std::int64_t value) {
    Datum datum;
    datum.kind = Datum::Kind::integer;
    datum.integer = value;
    return datum;
}
inline Datum real(double value) {
    Datum datum;
    datum.kind = Datum::Kind::real;
    datum.real = value;
    return datum;
}

inline Datum converted(const Datum& value, const std::string& from, const std::string& to,
                       const ConvertMode& mode = {}) {
    return convert(value, *parseType(from), *parseType(to), mode);
}

inline std::int64_t toInteger(const std::string& value, const std::string& to) {
    return converted(text(value), "varchar(max)", to).integer;
}
inline double toNumber(const std::string& value, const std::string& to) {
    const Datum result = converted(text(value), "varchar(max)", to);
    return result.kind == Datum::Kind::integer ? static_cast<double>(result.integer) : result.real;
}
inline std::string toText(const Datum& value, const std::string& from, const std::string& to, int style = 0) {
    ConvertMode mode;
    mode.style = style;
    return converted(value, from, to, mode).text;
}
inline std::string toDate(const std::string& value, const std::string& to = "datetime", int style = 0) {
    ConvertMode mode;
    mode.style = style;
    return converted(text(value), "varchar(max)", to, mode).text;
}

/// The number of the Error that `work` throws, 0 for none.
template <typename Work>
int failureOf(Work work) {
    try {
        work();
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

inline int refused(const Datum& value, const std::string& from, const std::string& to, bool assignment = false) {
    ConvertMode mode;
    mode.assignment = assignment;
    return failureOf([&] { converted(value, from, to, mode); });
}
inline int refused(const std::string& value, const std::string& to, bool assignment = false) {
    return refused(text(value), "varchar(max)", to, assignment);
}

}  // namespace orvenmod::store::tsql::test
