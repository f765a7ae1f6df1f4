#include "platform/qt/simplecontrols.h"

#include <QImageReader>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <iterator>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kFrameInset = 10;
constexpr int kFrameGap = 4;
constexpr float kFrameStrength = 0.25F;

// Of dots alone: a drawing may name further files, which its reader opens and waits for.
constexpr const char* kPictures[] = {"bmp", "gif", "ico", "jpeg", "png"};

}  // namespace

void FrameWidget::paintEvent(QPaintEvent*) {
    if (title().isEmpty()) return;
    QPainter painter(this);
    const int textHeight = fontMetrics().height();
    const QRect text(kFrameInset, 0, fontMetrics().size(Qt::TextShowMnemonic, title()).width(), textHeight);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(QRegion(rect()) - text.adjusted(-kFrameGap, 0, kFrameGap, 0));
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(kFrameStrength);
    painter.setPen(line);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, textHeight / 2 + 0.5, -0.5, -0.5), 3, 3);
    painter.setClipping(false);
    style()->drawItemText(&painter, text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, palette(),
                          isEnabled(), title(), QPalette::WindowText);
}

void ButtonWidget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

PictureWidget::PictureWidget(QWidget* parent) : QFrame(parent) { setFrameStyle(QFrame::StyledPanel | QFrame::Sunken); }

void PictureWidget::setPixmap(const QPixmap& picture) {
    picture_ = picture;
    update();
}

void PictureWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect inner = contentsRect();
    painter.fillRect(inner, palette().base());
    if (!picture_.isNull()) {
        QRect place(QPoint(), picture_.size().scaled(inner.size(), Qt::KeepAspectRatio));
        place.moveCenter(inner.center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(place, picture_);
    }
    painter.end();
    QFrame::paintEvent(event);
}

QtFrame::QtFrame(const ControlDesign& design, QWidget* parent)
    : QtControl(design, new FrameWidget(parent)), frame_(static_cast<FrameWidget*>(body_.widget())) {
    setCaption(std::string(design.caption));
}

std::string QtFrame::caption() const { return fromQt(frame_->title()); }

void QtFrame::setCaption(const std::string& caption) {
    frame_->setTitle(toQt(caption));
    frame_->setAccessibleName(spokenCaption(toQt(caption)));
}

QtLabel::QtLabel(const ControlDesign& design, QWidget* parent)
    : QtControl(design, new QLabel(parent)), label_(static_cast<QLabel*>(body_.widget())) {
    label_->setTextFormat(Qt::PlainText);
    label_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setCaption(std::string(design.caption));
}

std::string QtLabel::caption() const { return fromQt(label_->text()); }

void QtLabel::setCaption(const std::string& caption) {
    label_->setText(toQt(caption));
    label_->setAccessibleName(spokenCaption(toQt(caption)));
}

QtButton::QtButton(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, new ButtonWidget(parent)), button_(static_cast<ButtonWidget*>(body_.widget())) {
    setCaption(std::string(design.caption));
    QObject::connect(button_, &QPushButton::clicked, button_,
                     [this, &core] { core.command([this] { click.raise(); }); });
}

std::string QtButton::caption() const { return fromQt(button_->text()); }

void QtButton::setCaption(const std::string& caption) {
    button_->setText(toQt(caption));
    button_->setAccessibleName(spokenCaption(toQt(caption)));
}

QtPicture::QtPicture(const ControlDesign& design, QWidget* parent)
    : QtControl(design, new PictureWidget(parent)), picture_(static_cast<PictureWidget*>(body_.widget())) {}

bool QtPicture::show(const std::string& path) {
    QImageReader reader(toQt(path));
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const bool known = std::find(std::begin(kPictures), std::end(kPictures), reader.format()) != std::end(kPictures);
    const QImage image = known ? reader.read() : QImage();
    picture_->setPixmap(image.isNull() ? QPixmap() : QPixmap::fromImage(image));
    return !image.isNull();
}

void QtPicture::clear() { picture_->setPixmap(QPixmap()); }

bool QtPicture::empty() const { return picture_->pixmap().isNull(); }

}  // namespace orvenmod::platform::qt
