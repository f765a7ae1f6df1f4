#include "platform/qt/pagepainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <algorithm>

#include "platform/qt/application.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

// A page is drawn in tenths of a millimetre, so that letters, which have whole sizes, come out at any scale.
constexpr double kUnits = 10;
constexpr double kUnitsPerPoint = kUnits * 25.4 / 72;
constexpr double kLeastShrink = 0.6;
constexpr std::size_t kLongestText = 600;  // no cell shows more bytes

QRectF rectOf(const report::Box& box) {
    return {box.left * kUnits, box.top * kUnits, box.width * kUnits, box.height * kUnits};
}

Qt::Alignment alignmentOf(report::TextAlignment alignment) {
    switch (alignment) {
        case report::TextAlignment::left:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case report::TextAlignment::centre:
            return Qt::AlignCenter;
        case report::TextAlignment::right:
            return Qt::AlignRight | Qt::AlignVCenter;
    }
    return Qt::AlignLeft;
}

void paintText(QPainter& painter, const report::PlacedText& placed, QFont font) {
    QString text = toQt(std::string_view(placed.text).substr(0, kLongestText));
    const QRectF box = rectOf(placed.box);
    const double size = placed.points * kUnitsPerPoint;
    font.setBold(placed.bold);
    font.setPixelSize(std::max(1, static_cast<int>(size)));
    const double wide = QFontMetricsF(font).horizontalAdvance(text);
    if (wide > box.width()) {
        font.setPixelSize(std::max(1, static_cast<int>(size * std::max(kLeastShrink, box.width() / wide))));
        const QFontMetricsF metrics(font);
        if (metrics.horizontalAdvance(text) > box.width())
            text = metrics.elidedText(text, Qt::ElideRight, std::max(box.width(), 1.0));
    }
    painter.setFont(font);
    painter.drawText(box, static_cast<int>(alignmentOf(placed.alignment)) | Qt::TextSingleLine, text);
}

}  // namespace

void paintPage(QPainter& painter, double unitsPerMillimetre, const report::Page& page, const std::string& family) {
    painter.save();
    painter.scale(unitsPerMillimetre / kUnits, unitsPerMillimetre / kUnits);
    for (const report::Box& box : page.shaded)
        painter.fillRect(rectOf(box), QColor(0xEE, 0xF1, 0xF5));
    painter.setPen(QPen(QColor(0x80, 0x86, 0x90), 1.5));
    for (const report::Box& box : page.frames)
        painter.drawRect(rectOf(box));
    painter.setPen(Qt::black);
    QFont font = windowFont();
    if (!family.empty()) font.setFamily(toQt(family));
    for (const report::PlacedText& text : page.texts)
        paintText(painter, text, font);
    painter.restore();
}

}  // namespace orvenmod::platform::qt
