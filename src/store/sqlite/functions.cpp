#include "store/sqlite/functions.h"

#include <cmath>

#include "store/sqlite/functioncall.h"
#include "store/tsql/sqlite_decimal.h"
#include "store/tsql/textorder.h"

namespace orvenmod::store::sqlite {

bool FunctionCall::anyNull() const {
    for (int i = 0; i < count_; ++i) {
        if (isNull(i)) return true;
    }
    return false;
}

std::string_view FunctionCall::text(int i) const { return isNull(i) ? std::string_view("") : textOf(values_[i]); }

tsql::Datum FunctionCall::number(int i) const {
    tsql::Datum value = decimalOf(values_[i]);
    // What another program stored counts as the number that it begins with, as in SQLite's own arithmetic.
    const bool foreign = value.kind == tsql::Datum::Kind::text || value.kind == tsql::Datum::Kind::blob;
    if (foreign) {
        value.kind = tsql::Datum::Kind::real;
        value.real = real(i);
    }
    return value;
}

const tsql::Type& FunctionCall::type(int i) {
    if (const void* known = sqlite3_get_auxdata(context_, i)) return *static_cast<const tsql::Type*>(known);
    const auto parsed = tsql::parseType(text(i));
    static const tsql::Type kUnknown{};
    auto type = std::make_unique<tsql::Type>(parsed.value_or(kUnknown));
    const auto drop = [](void* gone) { delete static_cast<tsql::Type*>(gone); };
    sqlite3_set_auxdata(context_, i, type.release(), drop);
    // SQLite keeps auxiliary data only for constants, and may have dropped it at once.
    const void* kept = sqlite3_get_auxdata(context_, i);
    if (kept != nullptr) return *static_cast<const tsql::Type*>(kept);
    transient_ = parsed.value_or(kUnknown);
    return transient_;
}

tsql::DatePart FunctionCall::datePart(int i) const {
    const auto part = tsql::datePartOf(text(i));
    if (!part) throw tsql::Error(tsql::kUnknownOption, {std::string(text(i)), "datepart"});
    return *part;
}

tsql::DateTime FunctionCall::date(int i) const {
    const std::string_view stored = text(i);
    if (const auto date = tsql::readStored(stored)) return *date;
    return tsql::readDate(stored, tsql::Kind::datetime);
}

void FunctionCall::give(double value) {
    if (!std::isfinite(value)) throw tsql::Error(tsql::kArithmeticOverflow, {"expression", "float"});
    sqlite3_result_double(context_, value);
}

void FunctionCall::give(std::string_view text) {
    sqlite3_result_text64(context_, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

void FunctionCall::give(const tsql::Datum& value) {
    switch (value.kind) {
        case tsql::Datum::Kind::null:
            return giveNull();
        case tsql::Datum::Kind::integer:
            return give(value.integer);
        case tsql::Datum::Kind::real:
            return give(value.real);
        case tsql::Datum::Kind::text:
            return give(std::string_view(value.text));
        case tsql::Datum::Kind::decimal:
            return give(std::string_view(value.text + tsql::kDecimalMark));
        case tsql::Datum::Kind::blob:
            return sqlite3_result_blob64(context_, value.text.data(), value.text.size(), SQLITE_TRANSIENT);
    }
}

void FunctionCall::fail(const tsql::Error& error) noexcept {
    try {
        runtime().error = error;
        sqlite3_result_error(context_, error.what(), -1);
    } catch (const std::bad_alloc&) {
        failForMemory();
    }
}

namespace {

// Of ts_order. SQLite hands over sizes and no closing zero.
int compareTexts(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return tsql::compareTexts({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                              {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

}  // namespace

void registerFunctions(sqlite3* database, Runtime& runtime) {
    checkRegistered(sqlite3_create_collation_v2(database, "ts_order", SQLITE_UTF8, nullptr, compareTexts, nullptr));
    registerConversions(database, runtime);
    registerTextFunctions(database, runtime);
    registerNumberFunctions(database, runtime);
    registerDateFunctions(database, runtime);
    registerAggregates(database, runtime);
}

}  // namespace orvenmod::store::sqlite
