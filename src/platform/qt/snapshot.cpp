#include "platform/qt/snapshot.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QWidget>
#include <stdexcept>
#include <vector>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

bool liesOver(const QWidget& above, const QWidget& window) {
    if (&above == &window || !above.isVisible()) return false;
    if (above.windowType() == Qt::Popup) return true;
    for (const QWidget* owner = above.parentWidget(); owner != nullptr; owner = owner->parentWidget()) {
        if (owner == &window) return true;
    }
    return false;
}

}  // namespace

void saveSnapshot(QWidget& window, const QString& path) {
    std::vector<QWidget*> shown{&window};
    QRect whole = window.geometry();
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (!liesOver(*each, window)) continue;
        shown.push_back(each);
        whole |= each->geometry();
    }
    const qreal ratio = window.devicePixelRatioF();
    QPixmap picture(whole.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    for (QWidget* each : shown) {
        const QRect place = each->geometry().translated(-whole.topLeft());
        painter.drawPixmap(place.topLeft(), each->grab());
        // There is no window frame in a picture; a box still needs an edge.
        if (each == &window) continue;
        painter.setPen(each->palette().color(QPalette::Dark));
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
    painter.end();
    if (!picture.save(path)) throw std::runtime_error("can't write the picture " + fromQt(path));
}

}  // namespace orvenmod::platform::qt
