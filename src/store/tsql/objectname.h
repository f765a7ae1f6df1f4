// The name of a table as a statement has it, for what takes one without a statement.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store::tsql {

/// The parts of name, owner.name, database..name, each bare or in brackets; none where the text is no name.
std::vector<std::string> objectNameParts(std::string_view text);

/// The name in brackets, so that it may be a word of the language.
std::string bracketed(std::string_view name);

}  // namespace orvenmod::store::tsql
