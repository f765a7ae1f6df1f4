// Sees to it that the process has a QApplication fit for the component's windows.
#pragma once

#include <QFont>

namespace orvenmod::platform::qt {

/// Makes the QApplication where there is none, with our style, palette and texts; a host's own stays as it is. Throws
/// std::runtime_error where there is no display, and as requireApplication.
void ensureApplication();

/// Throws std::runtime_error where there is none fit for windows: it is gone, has none, or is another thread's.
void requireApplication();

/// While one lives, the texts of Qt's own dialogs are Chinese, in a host's QApplication too.
class ChineseWhileShown {
public:
    ChineseWhileShown();
    ~ChineseWhileShown();
    ChineseWhileShown(const ChineseWhileShown&) = delete;
    ChineseWhileShown& operator=(const ChineseWhileShown&) = delete;
};

/// The font of all windows: one that has Chinese.
QFont windowFont();

}  // namespace orvenmod::platform::qt
