// Makes the controls and menus of a window from its design.
#pragma once

#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/control.h"
#include "platform/qt/core.h"
#include "platform/qt/windowwidget.h"

class QLabel;

namespace orvenmod::platform::qt {

class QtMenu;

/// What a design became: the controls in its order, then the menus in theirs.
struct BuiltWindow {
    std::vector<std::unique_ptr<Control>> controls;
    std::vector<QWidget*> tabStops;
};

class WindowBuilder {
public:
    /// Throws std::logic_error for a design that contradicts itself: a doubled name, a container that is none.
    static BuiltWindow build(Core& core, const WindowDesign& design, WindowWidget& widget);

private:
    WindowBuilder(Core& core, const WindowDesign& design, WindowWidget& widget);

    void checkNames() const;
    void addControl(std::size_t place);
    QWidget* container(const ControlDesign& design);
    std::unique_ptr<Control> make(const ControlDesign& design, QWidget* parent);
    template <class Made, class... Arguments>
    std::unique_ptr<Control> made(Arguments&&... arguments);
    void nameForReaders();
    void addMenus();
    void orderTabs();

    Core& core_;
    const WindowDesign& design_;
    WindowWidget& widget_;
    std::vector<ControlDesign> designs_;  ///< with the toolbar, which may stand in the window's design alone
    std::vector<QWidget*> widgets_;       ///< by design, null for what has none
    QWidget* lastWidget_ = nullptr;
    BuiltWindow built_;
};

}  // namespace orvenmod::platform::qt
