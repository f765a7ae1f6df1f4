// Sees to it that the process has a QApplication fit for the component's windows.
#pragma once

#include <QFont>

namespace orvenmod::platform::qt {

/// Makes the QApplication where there is none, with our style and palette; into a host's own only the Chinese texts are
/// installed. Throws std::logic_error where the process has a QCoreApplication without windows, std::runtime_error
/// where there is no display.
void ensureApplication();

/// The font of all windows: one that has Chinese.
QFont windowFont();

}  // namespace orvenmod::platform::qt
