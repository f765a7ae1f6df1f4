#include "frame/scaling.h"

#include <string>

#include "frame/conversion.h"

namespace orvenmod {

namespace {

using platform::Control;
using platform::ControlKind;

constexpr float kRightMargin = 80;  // kept against the edge, on top of the recorded distance
constexpr float kEditHeight = 315;

bool hasPosition(const Control& control) {
    switch (control.kind()) {
        case ControlKind::menu:
        case ControlKind::imageList:
        case ControlKind::toolbar:
        case ControlKind::fileDialog:
            return false;
        default:
            return control.name() != "stb1";
    }
}

// The fields of a bill's head stay as wide as drawn.
bool keepsWidth(const std::string& name) {
    return name == "txtChecker" || name == "txtBiller" || name == "txtBillNo" || name == "thdate";
}

// An inner size passes through a 16-bit field, so that a window beyond 32767 twips fails to be laid out.
float innerUnits(float units) { return toInt16(double{units}); }

float fraction(float part, float whole) {
    if (whole == 0) throw ConversionFailure(ConversionFailure::kDivisionByZero, "除数为零");
    return part / whole;
}

ControlPos recorded(const Control& control, float width, float height) {
    ControlPos position;
    position.sngLeft = fraction(control.left(), width);
    position.sngWidth = fraction(control.width(), width);
    position.sngTop = fraction(control.top(), height);
    if (control.kind() == ControlKind::combo) return position;
    position.sngHeight = fraction(control.height(), height);
    if (control.kind() == ControlKind::edit) return position;
    position.sngRight = width - control.left() - control.width();
    position.sngBottom = height - control.top() - control.height();
    return position;
}

void place(Control& control, const ControlPos& position, float width, float height) {
    const std::string tag = trim(control.tag());
    const auto tagged = [&tag](char letter) { return tag.find(letter) != std::string::npos; };
    if (!tagged('l')) control.setLeft(width * position.sngLeft);
    if (!tagged('t')) control.setTop(height * position.sngTop);
    if (!keepsWidth(control.name())) control.setWidth(width * position.sngWidth);
    if (tagged('r')) control.setLeft(width - position.sngRight - control.width() - kRightMargin);
    control.setHeight(control.kind() == ControlKind::edit ? kEditHeight : height * position.sngHeight);
}

}  // namespace

void GetSourcePos(const platform::Window& window, std::vector<ControlPos>& positions) {
    const float width = innerUnits(window.innerWidth());
    const float height = innerUnits(window.innerHeight());
    const auto& controls = window.controls();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (hasPosition(*controls[i])) positions.at(i) = recorded(*controls[i], width, height);
    }
}

void SetNewPos(const platform::Window& window, const std::vector<ControlPos>& positions) {
    const float width = innerUnits(window.innerWidth());
    const float height = innerUnits(window.innerHeight());
    const auto& controls = window.controls();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (hasPosition(*controls[i])) place(*controls[i], positions.at(i), width, height);
    }
}

}  // namespace orvenmod
