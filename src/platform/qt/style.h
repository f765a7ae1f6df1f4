// Fusion, with the few changes that make the windows comfortable: drop-downs as lists, pictures of our own in boxes, a
// clear frame around the control in focus.
#pragma once

#include <QProxyStyle>

#include "platform/qt/sharedpalette.h"

namespace orvenmod::platform::qt {

class Style : public QProxyStyle {
    Q_OBJECT
public:
    Style();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

private:
    mutable SharedPalettes palettes_;
};

}  // namespace orvenmod::platform::qt
