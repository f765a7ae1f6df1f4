#include "platform/qt/qttoolbar.h"

#include <QAction>
#include <QKeyEvent>
#include <QShortcut>
#include <QToolButton>
#include <stdexcept>

#include "platform/qt/icons.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

ToolbarWidget::ToolbarWidget(QWidget* window) : QToolBar(window) {
    auto* way = new QShortcut(Qt::Key_F6, window);
    connect(way, &QShortcut::activated, this, &ToolbarWidget::enterOrLeave);
}

void ToolbarWidget::enterOrLeave() {
    QWidget* focus = window()->focusWidget();
    if (focus != nullptr && isAncestorOf(focus)) {
        if (cameFrom_ != nullptr) cameFrom_->setFocus(Qt::OtherFocusReason);
        return;
    }
    cameFrom_ = focus;
    step(1);
}

QToolButton* ToolbarWidget::addButton(QAction* action) {
    addAction(action);
    auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
    button->setFocusPolicy(Qt::NoFocus);
    button->installEventFilter(this);
    return button;
}

// The buttons have uses of their own for the arrow keys.
bool ToolbarWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && take(*static_cast<QKeyEvent*>(event))) return true;
    return QToolBar::eventFilter(watched, event);
}

bool ToolbarWidget::take(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Left:
            step(-1);
            return true;
        case Qt::Key_Right:
            step(1);
            return true;
        case Qt::Key_Escape:
            enterOrLeave();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* button = qobject_cast<QToolButton*>(window()->focusWidget())) button->click();
            return true;
        default:
            return false;
    }
}

void ToolbarWidget::step(int direction) {
    QList<QWidget*> stops;
    for (QAction* action : actions()) {
        QWidget* button = widgetForAction(action);
        if (!action->isSeparator() && button != nullptr && button->isVisible() && button->isEnabled()) stops << button;
    }
    if (stops.isEmpty()) return;
    const qsizetype here = stops.indexOf(window()->focusWidget());
    const qsizetype next = here < 0 ? 0 : (here + direction + stops.size()) % stops.size();
    stops[next]->setFocus(Qt::TabFocusReason);
}

QtToolbar::QtToolbar(Core& core, const ControlDesign& design, const WindowDesign& whole, QMainWindow& window)
    : QtControl(design, new ToolbarWidget(&window)), bar_(static_cast<ToolbarWidget*>(body_.widget())) {
    bar_->setMovable(false);
    bar_->setFloatable(false);
    bar_->setContextMenuPolicy(Qt::PreventContextMenu);
    bar_->setAccessibleName(design.accessibleName.empty() ? QStringLiteral("工具栏") : toQt(design.accessibleName));
    bar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    window.addToolBar(Qt::TopToolBarArea, bar_);
    bar_->setVisible(design.visible);
    for (const ToolButtonDesign& button : whole.toolButtons) {
        addButton(core, button);
        // A menu of the same caption does the same, and has the key.
        for (const MenuDesign& menu : whole.menus) {
            if (menu.shortcut.empty() || menu.caption != button.caption) continue;
            QAction* added = actions_.at(std::string(button.key));
            added->setToolTip(QStringLiteral("%1 (%2)").arg(added->toolTip(), toQt(menu.shortcut)));
        }
    }
}

void QtToolbar::addButton(Core& core, const ToolButtonDesign& design) {
    if (design.separatorBefore) bar_->addSeparator();
    const std::string key(design.key);
    auto* added = new QAction(icon(design.icon), toQt(design.caption), bar_);
    added->setObjectName(toQt(design.key));
    added->setToolTip(spokenCaption(toQt(design.caption)));
    actions_[key] = added;
    QToolButton* button = bar_->addButton(added);
    button->setObjectName(toQt(design.key));
    button->setAccessibleName(spokenCaption(toQt(design.caption)));
    QObject::connect(added, &QAction::triggered, bar_,
                     [this, &core, key] { core.command([this, &key] { buttonClick.raise(key); }); });
}

bool QtToolbar::hasButton(const std::string& key) const { return actions_.count(key) > 0; }

void QtToolbar::setButtonVisible(const std::string& key, bool visible) { action(key)->setVisible(visible); }

bool QtToolbar::buttonVisible(const std::string& key) const { return action(key)->isVisible(); }

void QtToolbar::setButtonEnabled(const std::string& key, bool enabled) { action(key)->setEnabled(enabled); }

bool QtToolbar::buttonEnabled(const std::string& key) const { return action(key)->isEnabled(); }

QAction* QtToolbar::action(const std::string& key) const {
    const auto found = actions_.find(key);
    if (found == actions_.end()) throw std::runtime_error("找不到元素：" + key);
    return found->second;
}

}  // namespace orvenmod::platform::qt
