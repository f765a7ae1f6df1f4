// Pictures of windows as they stand on the screen.
#pragma once

#include <QString>

class QWidget;

namespace orvenmod::platform::qt {

/// The window with the menus, lists and boxes over it. Throws std::runtime_error where the file can't be written.
void saveSnapshot(QWidget& window, const QString& path);

}  // namespace orvenmod::platform::qt
