// Reads what SQLite keeps of a definition only as its text: constraints by name, checks, the columns of an index over
// expressions.
//
//   CREATE TABLE "t"("a" int NOT NULL, CONSTRAINT "k" PRIMARY KEY("a" DESC), CHECK ("a" > 0))
//
//   k   primary   a, descending
//       check     "a" > 0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/outline.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::sqlite {

struct ConstraintText {
    enum class Kind { primary, unique, check, foreign };

    Kind kind = Kind::check;
    std::string name;              ///< "" for none
    std::vector<KeyPart> columns;  ///< of a key
    std::string condition;         ///< of a check
};

/// The constraints of a "CREATE TABLE" text, those of columns too.
std::vector<ConstraintText> constraintsOf(std::string_view createTable);

/// Where in a "CREATE TABLE" text the last column ends, in front of the table's own constraints. 0 for a text that
/// isn't just a name and a bracket.
std::size_t endOfColumns(std::string_view createTable);

/// A column of an index, and whether it stands there as it is compared: a text that doesn't is only carried along. In
/// front of a code stand its length and whether it has other signs than digits.
struct IndexPart {
    KeyPart key;
    bool compared = false;
    bool derived = false;  ///< something of a code that the index carries
};

/// The columns of a "CREATE INDEX" text, in their order.
std::vector<IndexPart> indexPartsOf(std::string_view createIndex);

/// What of a "CREATE INDEX" text serves codes; nothing for one that carries none.
std::optional<tsql::CodeIndex> codeIndexOf(std::string_view createIndex);

}  // namespace orvenmod::store::sqlite
