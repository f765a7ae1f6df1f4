#include "samplefiles.h"

#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <stdexcept>

namespace orvenmod::sample {

namespace {

QLinearGradient shine(const QColor& colour) {
    QLinearGradient gradient(0, -16, 0, 16);
    gradient.setColorAt(0, colour.lighter(150));
    gradient.setColorAt(0.4, colour);
    gradient.setColorAt(1, colour.darker(180));
    return gradient;
}

// Lies along the x axis, its middle at the origin.
void drawPen(QPainter& painter) {
    painter.setBrush(shine(QColor(28, 60, 120)));
    painter.drawRoundedRect(-200, -14, 330, 28, 10, 10);
    painter.setBrush(shine(QColor(50, 54, 62)));
    painter.drawRect(90, -14, 60, 28);
    painter.setBrush(shine(QColor(170, 174, 180)));
    painter.drawPolygon(QPolygon() << QPoint(150, -13) << QPoint(196, -3) << QPoint(196, 3) << QPoint(150, 13));
    painter.drawRect(-214, -7, 14, 14);
    painter.drawRoundedRect(-196, -22, 110, 7, 3, 3);
}

[[noreturn]] void fail(const QString& path) { throw std::runtime_error("can't write " + path.toStdString()); }

}  // namespace

void drawPhoto(const QString& path) {
    QImage photo(640, 420, QImage::Format_RGB32);
    QPainter painter(&photo);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient table(0, 0, 0, photo.height());
    table.setColorAt(0, QColor(248, 247, 243));
    table.setColorAt(1, QColor(214, 210, 200));
    painter.fillRect(photo.rect(), table);
    painter.setPen(Qt::NoPen);
    painter.translate(photo.width() / 2, photo.height() / 2);
    painter.rotate(-24);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawRoundedRect(-196, 8, 386, 26, 13, 13);
    drawPen(painter);
    painter.end();
    if (!photo.save(path, "JPG", 88)) fail(path);
}

void writeDocument(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) fail(path);
}

}  // namespace orvenmod::sample
