// Texts with a piece of theirs replaced.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::platform {

/// The text with every occurrence of `what` replaced, from the left; as it stands where `what` is empty.
std::string replaceAll(std::string text, std::string_view what, std::string_view by);

}  // namespace orvenmod::platform
