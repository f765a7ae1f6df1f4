#include "platform/qt/controlbody.h"

#include <algorithm>
#include <stdexcept>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

ControlBody::ControlBody(const ControlDesign& design, QWidget* widget)
    : name_(design.name),
      index_(design.index),
      kind_(design.kind),
      tag_(design.tag),
      widget_(widget),
      focusPart_(widget),
      left_(design.left),
      top_(design.top),
      width_(design.width),
      height_(design.height),
      visible_(design.visible),
      enabled_(design.enabled) {
    if (widget_ == nullptr) return;
    widget_->setObjectName(objectNameOf(design));
    widget_->setEnabled(enabled_);
    widget_->setVisible(visible_);
    place();
}

void ControlBody::setLeft(float twips) {
    left_ = twips;
    place();
}

void ControlBody::setTop(float twips) {
    top_ = twips;
    place();
}

void ControlBody::setWidth(float twips) {
    width_ = twips;
    place();
}

void ControlBody::setHeight(float twips) {
    if (fixedHeight_) return;
    height_ = twips;
    place();
}

void ControlBody::fixHeight(int pixels) {
    height_ = toTwips(pixels);
    fixedHeight_ = true;
    place();
}

void ControlBody::setVisible(bool visible) {
    visible_ = visible;
    if (widget_ != nullptr) widget_->setVisible(visible);
}

void ControlBody::setEnabled(bool enabled) {
    enabled_ = enabled;
    if (widget_ != nullptr) widget_->setEnabled(enabled);
}

void ControlBody::setFocus() {
    if (widget_ == nullptr || !widget_->isEnabled() || !widget_->isVisibleTo(widget_->window()))
        throw std::runtime_error("无效的过程调用或参数");
    // An edit marks its text for the Tab key alone: what is typed next takes its place.
    focusPart_->setFocus(kind_ == ControlKind::edit ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

bool ControlBody::hasFocus() const {
    if (widget_ == nullptr) return false;
    // By window, so that the window under a box keeps telling where its user was.
    const QWidget* focus = widget_->window()->focusWidget();
    if (focus == nullptr) return false;
    if (focus == focusPart_) return true;
    const bool container = kind_ == ControlKind::frame || kind_ == ControlKind::tabs;
    return !container && widget_->isAncestorOf(focus);
}

// Edges are rounded, not sizes, so that controls that touch in twips touch in pixels.
void ControlBody::place() {
    if (widget_ == nullptr || kind_ == ControlKind::toolbar) return;
    const int x = toPixels(left_);
    const int y = toPixels(top_);
    const int wide = std::max(0, toPixels(left_ + width_) - x);
    const int high = fixedHeight_ ? toPixels(height_) : std::max(0, toPixels(top_ + height_) - y);
    widget_->setGeometry(x, y, wide, high);
}

QString objectNameOf(const ControlDesign& design) {
    const QString name = toQt(design.name);
    return design.index < 0 ? name : QStringLiteral("%1(%2)").arg(name).arg(design.index);
}

}  // namespace orvenmod::platform::qt
