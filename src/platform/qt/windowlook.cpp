#include "platform/qt/windowlook.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "platform/qt/application.h"

namespace orvenmod::platform::qt {

void dressWindow(QWidget& window) {
    window.setFont(windowFont());
    window.setAttribute(Qt::WA_QuitOnClose, false);
}

void dressBox(QWidget& box) {
    dressWindow(box);
    box.setWindowModality(Qt::ApplicationModal);
}

void centre(QWidget& window, const QWidget* behind) {
    const QScreen* screen = behind != nullptr ? behind->screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    const QRect free = screen->availableGeometry();
    const QPoint middle = behind != nullptr ? behind->frameGeometry().center() : free.center();
    QRect place(QPoint(), window.size() + kFrameAllowance);
    place.moveCenter(middle);
    const int x = std::clamp(place.x(), free.x(), std::max(free.x(), free.right() - place.width() + 1));
    const int y = std::clamp(place.y(), free.y(), std::max(free.y(), free.bottom() - place.height() + 1));
    window.move(x, y);
}

}  // namespace orvenmod::platform::qt
