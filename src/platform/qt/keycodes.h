// Qt's keys as the logic's key codes: those of the system's own desktop.
#pragma once

class QKeyEvent;

namespace orvenmod::platform::qt {

/// 0 for a key that has no code.
int keyCodeOf(const QKeyEvent& event);

/// The Qt::Key of a code; 0 for none.
int keyOfCode(int code);

}  // namespace orvenmod::platform::qt
