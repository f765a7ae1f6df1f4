#include "platform/qt/previewpage.h"

#include <QPainter>
#include <cmath>
#include <utility>

#include "platform/qt/pagepainter.h"

namespace orvenmod::platform::qt {

namespace {

constexpr double kPixelsPerMillimetre = 96 / 25.4;

int pixels(double length) { return static_cast<int>(std::lround(length)); }

}  // namespace

PreviewPage::PreviewPage(std::string family, QWidget* parent) : QWidget(parent), family_(std::move(family)) {}

void PreviewPage::showPage(report::Page page, const report::Paper& paper) {
    page_ = std::move(page);
    paper_ = paper;
    resizeToPaper();
    update();
}

void PreviewPage::setZoom(double zoom) {
    zoom_ = zoom;
    resizeToPaper();
    update();
}

QSizeF PreviewPage::plainSize() const { return QSizeF(paper_.width, paper_.height) * kPixelsPerMillimetre; }

void PreviewPage::resizeToPaper() {
    const QSizeF size = plainSize() * zoom_;
    setFixedSize(pixels(size.width()) + 2 * kDesk, pixels(size.height()) + 2 * kDesk);
}

void PreviewPage::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect sheet = rect().adjusted(kDesk, kDesk, -kDesk, -kDesk);
    painter.fillRect(sheet.translated(3, 3), QColor(0, 0, 0, 60));
    painter.fillRect(sheet, Qt::white);
    painter.setClipRect(sheet);
    painter.translate(sheet.topLeft());
    paintPage(painter, kPixelsPerMillimetre * zoom_, page_, family_);
}

}  // namespace orvenmod::platform::qt
