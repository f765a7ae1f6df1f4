#include "platform/qt/style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include "platform/qt/icons.h"

namespace orvenmod::platform::qt {

Style::Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returned) const {
    if (hint == SH_ComboBox_Popup) return 0;  // else setListRows would have no effect
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    if (hint == SH_ItemView_ActivateItemOnSingleClick) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

QIcon Style::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
    switch (picture) {
        case SP_MessageBoxQuestion:
            return icon("question");
        case SP_MessageBoxInformation:
            return icon("information");
        case SP_MessageBoxWarning:
            return icon("warning");
        case SP_MessageBoxCritical:
            return icon("critical");
        default:
            return QProxyStyle::standardIcon(picture, option, widget);
    }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_ToolBarIconSize) return 20;
    if (metric == PM_SmallIconSize) return 16;
    if (metric == PM_TabBarTabVSpace) return 6;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    const WithSharedPalette palette(palettes_, option);
    const auto* heading = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element == PE_IndicatorHeaderArrow && heading != nullptr) {
        // Fusion's arrow points down where the values go up.
        QStyleOptionHeader turned(*heading);
        const bool up = heading->sortIndicator == QStyleOptionHeader::SortDown;
        turned.sortIndicator = up ? QStyleOptionHeader::SortUp : QStyleOptionHeader::SortDown;
        return QProxyStyle::drawPrimitive(element, &turned, painter, widget);
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    // Fusion frames lists, trees and grids the same with and without the focus.
    if (element != PE_Frame || !option->state.testFlag(State_HasFocus)) return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    const WithSharedPalette palette(palettes_, option);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    const WithSharedPalette palette(palettes_, option);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace orvenmod::platform::qt
