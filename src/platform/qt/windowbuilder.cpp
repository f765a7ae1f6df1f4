// A design names its controls in the order of the focus, and a container may stand behind what lies in it: it is made
// when the first of its contents asks for it. Everything that counts places (names for readers, order of the focus)
// waits until all are made.
#include "platform/qt/windowbuilder.h"

#include <QLabel>
#include <QMenuBar>
#include <algorithm>
#include <stdexcept>

#include "platform/qt/inputcontrols.h"
#include "platform/qt/qtentrygrid.h"
#include "platform/qt/qtfiledialog.h"
#include "platform/qt/qtlistgrid.h"
#include "platform/qt/qtmenu.h"
#include "platform/qt/qttabs.h"
#include "platform/qt/qttoolbar.h"
#include "platform/qt/qttree.h"
#include "platform/qt/simplecontrols.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

BuiltWindow WindowBuilder::build(Core& core, const WindowDesign& design, WindowWidget& widget) {
    WindowBuilder builder(core, design, widget);
    builder.checkNames();
    for (std::size_t place = 0; place < builder.designs_.size(); ++place)
        builder.addControl(place);
    builder.nameForReaders();
    builder.addMenus();
    builder.orderTabs();
    return std::move(builder.built_);
}

WindowBuilder::WindowBuilder(Core& core, const WindowDesign& design, WindowWidget& widget)
    : core_(core), design_(design), widget_(widget), designs_(design.controls) {
    const auto isToolbar = [&design](const ControlDesign& each) { return each.name == design.toolbar; };
    if (!design.toolbar.empty() && std::none_of(designs_.begin(), designs_.end(), isToolbar)) {
        designs_.push_back({ControlKind::toolbar, design.toolbar});
    }
    widgets_.resize(designs_.size());
    built_.controls.resize(designs_.size());
}

void WindowBuilder::checkNames() const {
    std::map<std::pair<std::string_view, int>, int> seen;
    const auto check = [&seen](std::string_view name, int index) {
        if (++seen[{name, index}] > 1) throw std::logic_error("the name is taken: " + std::string(name));
    };
    for (const ControlDesign& each : designs_)
        check(each.name, each.index);
    for (const MenuDesign& each : design_.menus) {
        if (each.caption != "-" || !each.name.empty()) check(each.name, -1);
    }
}

void WindowBuilder::addControl(std::size_t place) {
    if (built_.controls[place] != nullptr) return;  // made already, as a container
    const ControlDesign& design = designs_[place];
    QWidget* parent = container(design);
    lastWidget_ = nullptr;
    built_.controls[place] = make(design, parent);
    widgets_[place] = lastWidget_;
}

QWidget* WindowBuilder::container(const ControlDesign& design) {
    if (design.parent.empty()) return widget_.area();
    const auto isParent = [&design](const ControlDesign& each) { return each.name == design.parent; };
    const auto found = std::find_if(designs_.begin(), designs_.end(), isParent);
    if (found == designs_.end()) throw std::logic_error("no such container: " + std::string(design.parent));
    const auto place = static_cast<std::size_t>(found - designs_.begin());
    if (found->kind != ControlKind::frame && found->kind != ControlKind::tabs)
        throw std::logic_error("no container: " + std::string(design.parent));
    addControl(place);
    if (auto* tabs = dynamic_cast<QtTabs*>(built_.controls[place].get())) return tabs->page(design.page);
    return widgets_[place];
}

template <class Made, class... Arguments>
std::unique_ptr<Control> WindowBuilder::made(Arguments&&... arguments) {
    auto control = std::make_unique<Made>(std::forward<Arguments>(arguments)...);
    lastWidget_ = control->widget();
    return control;
}

std::unique_ptr<Control> WindowBuilder::make(const ControlDesign& design, QWidget* parent) {
    switch (design.kind) {
        case ControlKind::frame:
            return made<QtFrame>(design, parent);
        case ControlKind::label:
            return made<QtLabel>(design, parent);
        case ControlKind::button:
            return made<QtButton>(core_, design, parent);
        case ControlKind::edit:
            return made<QtEdit>(core_, design, parent);
        case ControlKind::combo:
            return made<QtCombo>(core_, design, parent);
        case ControlKind::datePicker:
            return made<QtDatePicker>(design, parent);
        case ControlKind::tree:
            return made<QtTree>(core_, design, parent);
        case ControlKind::listGrid:
            return made<QtListGrid>(core_, design, parent);
        case ControlKind::entryGrid:
            return made<QtEntryGrid>(core_, design, parent);
        case ControlKind::tabs:
            return made<QtTabs>(design, parent);
        case ControlKind::picture:
            return made<QtPicture>(design, parent);
        case ControlKind::toolbar:
            return made<QtToolbar>(core_, design, design_, widget_);
        case ControlKind::fileDialog:
            return made<QtFileDialog>(core_, design);
        case ControlKind::imageList:
        case ControlKind::dataControl:
            return made<QtControl<Control>>(design, nullptr);
        case ControlKind::menu:
            break;
    }
    throw std::logic_error("menus are drawn apart from the controls: " + std::string(design.name));
}

// A field is called as its design says, or as the label before it, whose mnemonic then leads to it.
void WindowBuilder::nameForReaders() {
    for (std::size_t place = 0; place < designs_.size(); ++place) {
        QWidget* widget = widgets_[place];
        if (widget == nullptr) continue;
        const ControlDesign& design = designs_[place];
        if (!design.accessibleName.empty()) widget->setAccessibleName(toQt(design.accessibleName));
        if (place == 0 || designs_[place - 1].parent != design.parent || !takesFocus(design.kind)) continue;
        auto* label = qobject_cast<QLabel*>(widgets_[place - 1]);
        if (label == nullptr || design.kind == ControlKind::button) continue;
        label->setBuddy(widget);
        if (widget->accessibleName().isEmpty()) widget->setAccessibleName(label->accessibleName());
    }
}

void WindowBuilder::addMenus() {
    std::map<std::string_view, QtMenu*> menus;
    for (const MenuDesign& design : design_.menus) {
        QMenu* holder = nullptr;
        if (!design.parent.empty()) {
            const auto found = menus.find(design.parent);
            if (found == menus.end() || found->second->menu() == nullptr)
                throw std::logic_error("no such menu: " + std::string(design.parent));
            holder = found->second->menu();
        }
        const bool hasEntries = std::any_of(
            design_.menus.begin(), design_.menus.end(),
            [&design](const MenuDesign& each) { return !design.name.empty() && each.parent == design.name; });
        auto menu = std::make_unique<QtMenu>(core_, design, widget_.menuBar(), holder, hasEntries);
        menus[design.name] = menu.get();
        built_.controls.push_back(std::move(menu));
    }
    if (design_.menus.empty()) widget_.menuBar()->hide();
}

void WindowBuilder::orderTabs() {
    for (std::size_t place = 0; place < designs_.size(); ++place) {
        if (!takesFocus(designs_[place].kind) || widgets_[place] == nullptr) continue;
        const auto* tabs = dynamic_cast<const QtTabs*>(built_.controls[place].get());
        QWidget* stop = tabs != nullptr ? tabs->focusPart() : widgets_[place];
        built_.tabStops.push_back(stop);
    }
    const std::vector<QWidget*>& chain = built_.tabStops;
    for (std::size_t place = 1; place < chain.size(); ++place)
        QWidget::setTabOrder(chain[place - 1], chain[place]);
}

}  // namespace orvenmod::platform::qt
