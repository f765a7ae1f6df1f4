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
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setMargin(kMargin);
    hide();
}

void CellHint::tell(const QString& text, const QLineEdit& field) {
    setText(text);
    adjustSize();
    place(field);
    raise();
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void CellHint::place(const QLineEdit& field) {
    const QWidget& window = *parentWidget();
    const QRect cell(field.mapTo(&window, QPoint()), field.size());
    const bool fits = cell.bottom() + kGap + height() <= window.height();
    const int y = fits ? cell.bottom() + kGap : cell.top() - kGap - height();
    const int x = field.alignment().testFlag(Qt::AlignRight) ? cell.right() + 1 - width() : cell.left();
    move(std::max(0, std::min(x, window.width() - width())), y);
}

}  // namespace orvenmod::platform::qt
