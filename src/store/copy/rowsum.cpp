#include "store/copy/rowsum.h"

#include <bit>
#include <charconv>

#include "store/tsql/type.h"

namespace orvenmod::store {

namespace {

using tsql::Kind;

// FNV-1a, eight bytes at a time: contents of many megabytes pass through.
constexpr std::uint64_t kStart = 14695981039346656037U;
constexpr std::uint64_t kPrime = 1099511628211U;

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * kPrime;
    return hash ^ (hash >> 29);
}

std::uint64_t mixed(std::uint64_t hash, std::string_view bytes) {
    hash = mixed(hash, bytes.size());
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        for (const char c : bytes.substr(at, sizeof word))
            word = word << 8 | static_cast<unsigned char>(c);
        hash = mixed(hash, word);
    }
    return hash;
}

std::uint64_t finished(std::uint64_t hash) {
    hash = (hash ^ (hash >> 30)) * 0xBF58476D1CE4E5B9U;
    hash = (hash ^ (hash >> 27)) * 0x94D049BB133111EBU;
    return hash ^ (hash >> 31);
}

std::string_view withoutTrailing(std::string_view text, char c) {
    const std::size_t last = text.find_last_not_of(c);
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// Without zeros behind the point.
std::string_view shortest(std::string_view decimal) {
    if (decimal.find('.') == std::string_view::npos) return decimal;
    return withoutTrailing(withoutTrailing(decimal, '0'), '.');
}

template <typename Real>
std::string_view bitsOf(std::string_view text, std::string& scratch) {
    Real value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (value == 0) value = 0;  // minus zero is zero
    scratch = std::to_string(std::bit_cast<std::uint64_t>(static_cast<double>(value)));
    return scratch;
}

}  // namespace

RowSum::RowSum(const std::vector<ColumnOutline>& columns) {
    for (const ColumnOutline& column : columns)
        forms_.push_back(formOf(column.type));
}

RowSum::Form RowSum::formOf(const std::string& type) {
    const auto known = tsql::parseType(type);
    if (!known) return Form::exact;
    if (known->isDecimal()) return Form::decimal;
    if (known->kind == Kind::real) return Form::singleReal;
    if (known->isFloat()) return Form::real;
    if (known->kind == Kind::character || known->kind == Kind::nchar) return Form::padded;
    return known->kind == Kind::uniqueidentifier ? Form::identifier : Form::exact;
}

std::string_view RowSum::uniform(std::string_view value, Form form, std::string& scratch) {
    switch (form) {
        case Form::exact:
            return value;
        case Form::decimal:
            return shortest(value);
        case Form::real:
            return bitsOf<double>(value, scratch);
        case Form::singleReal:
            return bitsOf<float>(value, scratch);
        case Form::padded:
            return withoutTrailing(value, ' ');
        case Form::identifier:
            scratch = value;
            for (char& c : scratch)
                c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            return scratch;
    }
    return value;
}

void RowSum::add(const Recordset& rows) {
    std::string scratch;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        std::uint64_t hash = kStart;
        for (std::size_t i = 0; i < forms_.size(); ++i) {
            const Value value = rows.cell(row, static_cast<int>(i));
            constexpr std::uint64_t kNull = 1;
            constexpr std::uint64_t kPresent = 2;
            hash = mixed(hash, value ? kPresent : kNull);
            if (value) hash = mixed(hash, uniform(*value, forms_[i], scratch));
        }
        sum_ += finished(hash);
    }
    rows_ += static_cast<std::int64_t>(rows.rowCount());
}

}  // namespace orvenmod::store
