// The data types of the dialect: plain values, without any target's notion of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvenmod::store::tsql {

/// The kinds in order of precedence: of two operands of different kinds, the lower is converted to the higher.
enum class Kind {
    null,  ///< the bare word null
    binary,
    varbinary,
    image,
    character,  ///< char
    varchar,
    text,
    nchar,
    nvarchar,
    ntext,
    uniqueidentifier,
    bit,
    tinyint,
    smallint,
    integer,  ///< int
    bigint,
    smallmoney,
    money,
    decimal,  ///< decimal and numeric
    real,
    floating,  ///< float
    time,
    date,
    smalldatetime,
    datetime,
};

/// The longest text that is no varchar(max) or nvarchar(max): in bytes, and in characters.
inline constexpr int kMostVarchar = 8000;
inline constexpr int kMostNvarchar = 4000;

struct Type {
    Kind kind = Kind::null;
    int precision = 0;  ///< decimal (1-38), money 19, smallmoney 10
    int scale = 0;      ///< decimal (0-precision), money 4
    int length = 0;  ///< char, varchar, binary: bytes (a CJK character is two); nchar, nvarchar: characters; -1 for max

    bool operator==(const Type&) const = default;

    bool isText() const { return kind >= Kind::character && kind <= Kind::ntext; }
    bool isNationalText() const { return kind >= Kind::nchar && kind <= Kind::ntext; }
    bool isInteger() const { return kind >= Kind::bit && kind <= Kind::bigint; }
    /// decimal, money and smallmoney.
    bool isDecimal() const { return kind >= Kind::smallmoney && kind <= Kind::decimal; }
    bool isFloat() const { return kind == Kind::real || kind == Kind::floating; }
    bool isNumber() const { return kind >= Kind::bit && kind <= Kind::floating; }
    bool isDate() const { return kind >= Kind::time && kind <= Kind::datetime; }
    bool isBinary() const { return kind >= Kind::binary && kind <= Kind::image; }
    /// Whether it has values that no double tells: one has any number of up to 15 digits.
    bool isWideDecimal() const { return isDecimal() && precision > 15; }
    bool isNull() const { return kind == Kind::null; }
};

Type typeOf(Kind kind);
Type textType(Kind kind, int length);
Type decimalType(int precision, int scale);

/// Reads "varchar(10)", "decimal(18, 4)", "nvarchar(max)", "int" without regard to case; nothing for a name that
/// is no type or for a size out of its range.
std::optional<Type> parseType(std::string_view text);

/// The inverse of parseType: "varchar(10)", "decimal(18,4)", "varchar(max)". "null" for Kind::null.
std::string printType(const Type& type);

/// The bare name, as messages have it: "varchar", "int".
std::string_view typeName(Kind kind);

}  // namespace orvenmod::store::tsql
