// What windows and boxes have in common, whoever owns the QApplication.
#pragma once

#include <QSize>

class QWidget;

namespace orvenmod::platform::qt {

/// What a desktop's title bar and borders take at most; before a window shows nobody knows its frame.
inline constexpr QSize kFrameAllowance(8, 36);

/// The font, and that a host's application doesn't end with it.
void dressWindow(QWidget& window);

/// The same for a box or a dialog, modal to the whole application.
void dressBox(QWidget& box);

/// Puts a window that is about to show in the middle of the one behind it, or of the screen.
void centre(QWidget& window, const QWidget* behind);

}  // namespace orvenmod::platform::qt
