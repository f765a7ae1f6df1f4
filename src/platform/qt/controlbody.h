// What every control has, whatever its kind: name, place, tag, visibility, focus. A control without a widget (a menu, a
// file dialog) just keeps the values.
#pragma once

#include <QWidget>
#include <string>

#include "platform/control.h"

namespace orvenmod::platform::qt {

class ControlBody {
public:
    /// `widget` may be null; it belongs to the window.
    ControlBody(const ControlDesign& design, QWidget* widget);

    const std::string& name() const { return name_; }
    int index() const { return index_; }
    ControlKind kind() const { return kind_; }
    QWidget* widget() const { return widget_; }

    float left() const { return left_; }
    float top() const { return top_; }
    float width() const { return width_; }
    float height() const { return height_; }
    void setLeft(float twips);
    void setTop(float twips);
    void setWidth(float twips);
    void setHeight(float twips);
    /// From now on the height is this and setHeight does nothing.
    void fixHeight(int pixels);

    bool visible() const { return visible_; }
    void setVisible(bool visible);
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);

    const std::string& tag() const { return tag_; }
    void setTag(const std::string& tag) { tag_ = tag; }

    void setFocus();
    bool hasFocus() const;
    /// The part of the widget that takes the focus, where it isn't the whole.
    void setFocusPart(QWidget* part) { focusPart_ = part; }
    QWidget* focusPart() const { return focusPart_; }

private:
    void place();

    std::string name_;
    int index_;
    ControlKind kind_;
    std::string tag_;
    QWidget* widget_;
    QWidget* focusPart_;
    float left_, top_, width_, height_;
    bool fixedHeight_ = false;
    bool visible_;
    bool enabled_;
};

/// A control's name as robots find it: "vsf1", "txt(0)".
QString objectNameOf(const ControlDesign& design);

/// The interface of a kind, with the common operations done by the body.
template <class Interface>
class QtControl : public Interface {
public:
    QtControl(const ControlDesign& design, QWidget* widget) : body_(design, widget) {}

    const std::string& name() const override { return body_.name(); }
    int index() const override { return body_.index(); }
    ControlKind kind() const override { return body_.kind(); }
    float left() const override { return body_.left(); }
    float top() const override { return body_.top(); }
    float width() const override { return body_.width(); }
    float height() const override { return body_.height(); }
    void setLeft(float twips) override { body_.setLeft(twips); }
    void setTop(float twips) override { body_.setTop(twips); }
    void setWidth(float twips) override { body_.setWidth(twips); }
    void setHeight(float twips) override { body_.setHeight(twips); }
    bool visible() const override { return body_.visible(); }
    void setVisible(bool visible) override { body_.setVisible(visible); }
    bool enabled() const override { return body_.enabled(); }
    void setEnabled(bool enabled) override { body_.setEnabled(enabled); }
    const std::string& tag() const override { return body_.tag(); }
    void setTag(const std::string& tag) override { body_.setTag(tag); }
    void setFocus() override { body_.setFocus(); }
    bool hasFocus() const override { return body_.hasFocus(); }

    /// Null for a control that shows nothing.
    QWidget* widget() const { return body_.widget(); }
    QWidget* focusPart() const { return body_.focusPart(); }

protected:
    ControlBody body_;
};

}  // namespace orvenmod::platform::qt
