// The small pictures of toolbars and trees.
#pragma once

#include <QIcon>
#include <string_view>

namespace orvenmod::platform::qt {

/// The picture of that name, without regard to case; empty where there is none.
QIcon icon(std::string_view name);

}  // namespace orvenmod::platform::qt
