// Statements as whole texts with named places: "drop view {view}".
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace orvenmod {

/// The text with each "{name}" replaced by its value. Values are taken as they stand: what looks like a place in them
/// stays. Throws std::logic_error for a place without a value.
std::string filled(std::string_view text, std::initializer_list<std::pair<std::string_view, std::string_view>> values);

}  // namespace orvenmod
