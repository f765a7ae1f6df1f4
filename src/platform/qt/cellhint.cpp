#include "platform/qt/cellhint.h"

#include <QAccessible>
#include <QToolTip>
#include <algorithm>

namespace orvenmod::platform::qt {

namespace {

constexpr int kMargin = 4;
constexpr int kGap = 2;

}  // namespace

CellHint::CellHint(QWidget* window) : QLabel(window) {
    setObjectName(QStringLiteral("cellHint"));
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setPalette(QToolTip::palette());
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setMargin(kMargin);
    hide();
}

void CellHint::tell(const QString& text, const QWidget& field) {
    setText(text);
    adjustSize();
    place(field);
    raise();
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void CellHint::place(const QWidget& field) {
    const QWidget& window = *parentWidget();
    const QRect cell(field.mapTo(&window, QPoint()), field.size());
    const bool fits = cell.bottom() + kGap + height() <= window.height();
    const int y = fits ? cell.bottom() + kGap : cell.top() - kGap - height();
    move(std::max(0, std::min(cell.left(), window.width() - width())), y);
}

}  // namespace orvenmod::platform::qt
