// The shape of a statement: its text with every literal replaced by the literal's kind. Statements of one shape
// (and equal fixed literals) share a translation and a prepared statement.
//
// The system writes its values into its texts, so that hardly a statement is sent twice, while its shapes are few; and
// to translate and prepare a small one costs several times what it costs to run it.
//
//   insert into t(id,n) values(9,'x')   ->   key  insert into t(id,n) values(<1>i,<1>s)
//                                            literals  9, x
//
// One pass, no allocation but the growth of key and literals, which a reused Shape keeps.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

enum class LiteralKind { integer, decimal, real, money, text, nationalText, binary };

struct Literal {
    LiteralKind kind = LiteralKind::integer;
    std::string_view text;  ///< within the statement: without quotes, N or 0x; a folded sign stands in front ("-5")
    bool doubledQuotes = false;  ///< text holds '' for '
    std::size_t offset = 0;      ///< of the literal's first byte in the statement
    int precision = 0;           ///< integer beyond int and decimal: digits
    int scale = 0;               ///< decimal: digits behind the point

    /// The value as text, with doubled quotes made single.
    std::string value() const;
    /// int, decimal(p,s), float, money, varchar(n), nvarchar(n), varbinary(n) with the literal's own size.
    Type type() const;
};

struct Shape {
    std::string key;
    std::vector<Literal> literals;

    /// Scans a statement; the literals view into it. A trailing ';' is dropped.
    /// Throws Error 105 (a quote that is not closed), 102 (a second statement behind ';', a comment, an odd character).
    void scan(std::string_view sql);
};

}  // namespace orvenmod::store::tsql
