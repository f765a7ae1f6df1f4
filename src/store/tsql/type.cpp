// The types by their names. Several names are one type ("numeric", "dec"), which is printed by the first; a size that a
// type doesn't take, or none that it can have, makes the text no type at all.
//
//   varchar          varchar(1)            decimal(18, 4)   decimal(18,4)
//   nvarchar(max)    length -1             float(24)        real
//   char(9000)       no type               int(4)           no type
#include "store/tsql/type.h"

#include <array>
#include <charconv>
#include <vector>

#include "store/text.h"

namespace orvenmod::store::tsql {
namespace {

struct Name {
    std::string_view name;
    Kind kind;
};

// The first name of a kind is the one that is printed.
constexpr std::array kNames = {
    Name{"null", Kind::null},
    Name{"bit", Kind::bit},
    Name{"tinyint", Kind::tinyint},
    Name{"smallint", Kind::smallint},
    Name{"int", Kind::integer},
    Name{"integer", Kind::integer},
    Name{"bigint", Kind::bigint},
    Name{"decimal", Kind::decimal},
    Name{"numeric", Kind::decimal},
    Name{"dec", Kind::decimal},
    Name{"money", Kind::money},
    Name{"smallmoney", Kind::smallmoney},
    Name{"float", Kind::floating},
    Name{"real", Kind::real},
    Name{"char", Kind::character},
    Name{"character", Kind::character},
    Name{"varchar", Kind::varchar},
    Name{"text", Kind::text},
    Name{"nchar", Kind::nchar},
    Name{"nvarchar", Kind::nvarchar},
    Name{"sysname", Kind::nvarchar},
    Name{"ntext", Kind::ntext},
    Name{"datetime", Kind::datetime},
    Name{"datetime2", Kind::datetime},
    Name{"smalldatetime", Kind::smalldatetime},
    Name{"date", Kind::date},
    Name{"time", Kind::time},
    Name{"image", Kind::image},
    Name{"binary", Kind::binary},
    Name{"varbinary", Kind::varbinary},
    Name{"uniqueidentifier", Kind::uniqueidentifier},
};

std::string lower(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
            result += asciiLower(c);
        }
    }
    return result;
}

/// The sizes within the brackets; -1 for max. Nothing for a text that is none.
std::optional<std::vector<int>> parseSizes(std::string_view text) {
    std::vector<int> sizes;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(','));
        text.remove_prefix(part.size() < text.size() ? part.size() + 1 : part.size());
        int value = -1;
        if (part != "max") {
            const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
            if (error != std::errc{} || end != part.data() + part.size() || value < 0) {
                return std::nullopt;
            }
        }
        sizes.push_back(value);
    }
    return sizes;
}

bool takesLength(Kind kind) {
    return kind == Kind::character || kind == Kind::varchar || kind == Kind::nchar || kind == Kind::nvarchar ||
           kind == Kind::binary || kind == Kind::varbinary;
}

std::optional<Type> withLength(Kind kind, const std::vector<int>& sizes) {
    Type type = typeOf(kind);
    type.length = sizes.empty() ? 1 : sizes[0];
    const bool national = kind == Kind::nchar || kind == Kind::nvarchar;
    const bool fixed = kind == Kind::character || kind == Kind::nchar || kind == Kind::binary;
    const int limit = national ? kMostNvarchar : kMostVarchar;
    if (sizes.size() > 1 || type.length == 0 || type.length > limit || (fixed && type.length < 0)) {
        return std::nullopt;
    }
    return type;
}

std::optional<Type> withPrecision(const std::vector<int>& sizes) {
    const int precision = sizes.empty() ? 18 : sizes[0];
    const int scale = sizes.size() < 2 ? 0 : sizes[1];
    if (sizes.size() > 2 || precision < 1 || precision > 38 || scale < 0 || scale > precision) {
        return std::nullopt;
    }
    return decimalType(precision, scale);
}

}  // namespace

Type typeOf(Kind kind) {
    Type type;
    type.kind = kind;
    if (kind == Kind::money || kind == Kind::smallmoney) {
        type.precision = kind == Kind::money ? 19 : 10;
        type.scale = 4;
    } else if (kind == Kind::text || kind == Kind::ntext || kind == Kind::image) {
        type.length = -1;
    }
    return type;
}

Type textType(Kind kind, int length) {
    Type type = typeOf(kind);
    type.length = length;
    return type;
}

Type decimalType(int precision, int scale) {
    Type type = typeOf(Kind::decimal);
    type.precision = precision;
    type.scale = scale;
    return type;
}

std::optional<Type> parseType(std::string_view text) {
    const std::string plain = lower(text);
    const std::size_t bracket = plain.find('(');
    const std::string_view name = std::string_view(plain).substr(0, bracket);
    std::vector<int> sizes;
    if (bracket != std::string::npos) {
        if (plain.back() != ')') {
            return std::nullopt;
        }
        const auto parsed = parseSizes(std::string_view(plain).substr(bracket + 1, plain.size() - bracket - 2));
        if (!parsed || parsed->empty()) {
            return std::nullopt;
        }
        sizes = *parsed;
    }
    for (const Name& known : kNames) {
        if (known.name != name) {
            continue;
        }
        if (name == "sysname") {
            return textType(Kind::nvarchar, 128);
        }
        if (takesLength(known.kind)) {
            return withLength(known.kind, sizes);
        }
        if (known.kind == Kind::decimal) {
            return withPrecision(sizes);
        }
        const bool sized = known.kind == Kind::floating || known.kind == Kind::time || name == "datetime2";
        if (!sizes.empty() && !(sized && sizes.size() == 1 && sizes[0] <= 53)) {
            return std::nullopt;
        }
        return typeOf(known.kind == Kind::floating && !sizes.empty() && sizes[0] <= 24 ? Kind::real : known.kind);
    }
    return std::nullopt;
}

std::string printType(const Type& type) {
    std::string text(typeName(type.kind));
    if (takesLength(type.kind)) {
        text += "(" + (type.length < 0 ? std::string("max") : std::to_string(type.length)) + ")";
    } else if (type.kind == Kind::decimal) {
        text += "(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    }
    return text;
}

std::string_view typeName(Kind kind) {
    for (const Name& known : kNames) {
        if (known.kind == kind) {
            return known.name;
        }
    }
    return "null";
}

}  // namespace orvenmod::store::tsql
