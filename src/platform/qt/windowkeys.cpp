#include "platform/qt/windowkeys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <algorithm>

#include "platform/qt/entrygridview.h"

namespace orvenmod::platform::qt {

WindowKeys::WindowKeys(QMainWindow& window) : window_(window) { QApplication::instance()->installEventFilter(this); }

bool WindowKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool asks = event->type() == QEvent::ShortcutOverride;
    if (!asks && event->type() != QEvent::KeyPress) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != &window_) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (QPushButton* button = buttonOf(key)) {
        event->accept();  // as a key of the control, so that no menu is asked
        if (asks) return true;
        // A press that an open cell refuses is over: the click would come a moment later, when the cell may be free.
        if (!takeOverIn(window_)) return true;
        button->setFocus(Qt::ShortcutFocusReason);
        button->animateClick();
        return true;
    }
    if (!asks || !isMenuKey(key)) return false;
    event->ignore();
    return true;
}

// Of a menu that is off, too: Qt then gives the key back to the control.
bool WindowKeys::isMenuKey(const QKeyEvent& key) const {
    const QKeySequence pressed(key.keyCombination());
    const QList<QAction*> actions = window_.menuBar()->findChildren<QAction*>();
    return std::ranges::any_of(actions, [&](const QAction* action) { return action->shortcut() == pressed; });
}

QPushButton* WindowKeys::buttonOf(const QKeyEvent& key) const {
    if (key.modifiers() != Qt::AltModifier) return nullptr;
    const QKeySequence pressed(key.keyCombination());
    const QList<QPushButton*> buttons = window_.findChildren<QPushButton*>();
    const auto found = std::ranges::find_if(buttons, [&](const QPushButton* button) {
        return button->isVisible() && button->isEnabled() && button->shortcut() == pressed;
    });
    return found == buttons.end() ? nullptr : *found;
}

}  // namespace orvenmod::platform::qt
