// Values and their conversions, by the server's rules. The representation is the one that stores keep:
// integers and bits as integer, decimals and money as integer where whole, as real where the shortest text that reads
// back as the double is the value, else by their digits; floats as real, texts as UTF-8 text,
// dates as text YYYY-MM-DD HH:MM:SS (.fff only when not zero), times as HH:MM:SS(.fff), binary contents as blob.
#pragma once

#include <cstdint>
#include <string>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

struct Datum {
    enum class Kind { null, integer, real, text, blob, decimal };

    Kind kind = Kind::null;
    std::int64_t integer = 0;
    double real = 0;
    std::string text;  ///< text, blob, or the digits of a decimal that no double has
};

/// How a conversion treats what does not fit, and for which column.
struct ConvertMode {
    bool assignment = false;  ///< a text too long fails with 2628 instead of being cut
    std::string table;
    std::string column;
    int style = 0;  ///< convert's third argument
};

/// Converts a value of type `from` to type `to`; null stays null.
/// Throws Error: 245, 8114, 241, 242, 248, 244, 220, 232, 8115, 2628, 529 ...
Datum convert(const Datum& value, const Type& from, const Type& to, const ConvertMode& mode = {});

}  // namespace orvenmod::store::tsql
