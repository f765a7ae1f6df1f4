// The widget of a window: a menu bar, perhaps a toolbar and, under them, the area in which the controls lie.
#pragma once

#include <QMainWindow>
#include <functional>

#include "platform/qt/windowkeys.h"

namespace orvenmod::platform::qt {

/// The largest that a window's area may grow, in pixels.
QSize largestArea();

class WindowWidget : public QMainWindow {
    Q_OBJECT
public:
    explicit WindowWidget(bool resizable);

    QWidget* area() const { return area_; }
    /// Sizes the window so that the area gets this size, as far as an area may grow; a window of fixed size keeps it
    /// from then on.
    void setAreaSize(QSize size);

    std::function<void()> onClose;
    std::function<void()> onResize;  ///< the area has another size

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QMenu* createPopupMenu() override { return nullptr; }

private:
    void layOut();

    QWidget* area_;
    bool resizable_;
    WindowKeys keys_{*this};
};

}  // namespace orvenmod::platform::qt
