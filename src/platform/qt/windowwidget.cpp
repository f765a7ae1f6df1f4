#include "platform/qt/windowwidget.h"

#include <QCloseEvent>
#include <QLayout>

#include "platform/qt/text.h"
#include "platform/window.h"

namespace orvenmod::platform::qt {

QSize largestArea() { return {toPixels(kLargestInner), toPixels(kLargestInner)}; }

WindowWidget::WindowWidget(bool resizable)
    : QMainWindow(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                               Qt::WindowCloseButtonHint),
      area_(new QWidget(this)),
      resizable_(resizable) {
    if (resizable) setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(area_);
    area_->installEventFilter(this);
}

void WindowWidget::setAreaSize(QSize size) {
    size = size.boundedTo(largestArea());
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    resize(size);
    layOut();
    // What the bars take away from the area; their height may change once with the width.
    for (int round = 0; round < 2 && area_->size() != size; ++round) {
        resize(this->size() + size - area_->size());
        layOut();
    }
    if (resizable_)
        setMaximumSize(this->size() - area_->size() + largestArea());
    else
        setFixedSize(this->size());
}

// At once, also where the window isn't shown yet.
void WindowWidget::layOut() {
    layout()->invalidate();
    layout()->activate();
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    event->ignore();  // the window's loop ends first, and hides it
    if (onClose) onClose();
}

bool WindowWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == area_ && event->type() == QEvent::Resize && onResize) onResize();
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace orvenmod::platform::qt
