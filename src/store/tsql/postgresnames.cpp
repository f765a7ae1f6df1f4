#include "store/tsql/postgresnames.h"

#include <cstdint>
#include <cstdio>

#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {
namespace {

constexpr std::size_t kMostBytes = 63;

std::string hashOf(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", hash);
    return digits;
}

std::string sized(const std::string& name, const Type& type) {
    return name + "(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
}

}  // namespace

std::string nativeName(std::string_view declared) {
    std::string name = lowerName(declared);
    if (name.size() <= kMostBytes) {
        return name;
    }
    const std::string suffix = "_" + hashOf(name);
    std::size_t kept = kMostBytes - suffix.size();
    while ((name[kept] & 0xC0) == 0x80) {
        --kept;
    }
    return name.substr(0, kept) + suffix;
}

std::string nativeColumnType(const Type& type) {
    switch (type.kind) {
        case Kind::decimal:
        case Kind::money:
        case Kind::smallmoney:
            return sized("numeric", type);
        case Kind::varchar:
        case Kind::nvarchar:
            return type.length > 0 ? "varchar(" + std::to_string(type.length) + ")" : "text";
        case Kind::date:
            return "date";
        case Kind::smalldatetime:
            return "timestamp(0)";
        case Kind::datetime:
            return "timestamp(3)";
        default:
            return nativeType(type);
    }
}

std::string nativeType(const Type& type) {
    switch (type.kind) {
        case Kind::bit:
        case Kind::tinyint:
        case Kind::smallint:
            return "smallint";
        case Kind::integer:
            return "integer";
        case Kind::bigint:
            return "bigint";
        case Kind::decimal:
        case Kind::money:
        case Kind::smallmoney:
            return "numeric";
        case Kind::real:
            return "real";
        case Kind::floating:
            return "double precision";
        case Kind::time:
            return "time";
        case Kind::date:
        case Kind::smalldatetime:
        case Kind::datetime:
            return "timestamp";
        case Kind::binary:
        case Kind::varbinary:
        case Kind::image:
            return "bytea";
        default:
            return "text";
    }
}

}  // namespace orvenmod::store::tsql
