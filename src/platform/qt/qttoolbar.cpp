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

// The buttons pass on the keys that they have no use for.
void ToolbarWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            step(-1);
            return;
        case Qt::Key_Right:
            step(1);
            return;
        case Qt::Key_Escape:
            enterOrLeave();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* button = qobject_cast<QToolButton*>(window()->focusWidget())) button->click();
            return;
        default:
            QToolBar::keyPressEvent(event);
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

QtToolbar::QtToolbar(Core& core, const ControlDesign& design, const std::vector<ToolButtonDesign>& buttons,
                     QMainWindow& window)
    : QtControl(design, new ToolbarWidget(&window)), bar_(static_cast<ToolbarWidget*>(body_.widget())) {
    bar_->setMovable(false);
    bar_->setFloatable(false);
    bar_->setContextMenuPolicy(Qt::PreventContextMenu);
    bar_->setAccessibleName(design.accessibleName.empty() ? QStringLiteral("工具栏") : toQt(design.accessibleName));
    bar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    window.addToolBar(Qt::TopToolBarArea, bar_);
    bar_->setVisible(design.visible);
    for (const ToolButtonDesign& button : buttons)
        addButton(core, button);
}

void QtToolbar::addButton(Core& core, const ToolButtonDesign& design) {
    if (design.separatorBefore) bar_->addSeparator();
    const std::string key(design.key);
    QAction* added = bar_->addAction(icon(design.icon), toQt(design.caption));
    added->setObjectName(toQt(design.key));
    added->setToolTip(spokenCaption(toQt(design.caption)));
    actions_[key] = added;
    if (QWidget* button = bar_->widgetForAction(added)) {
        button->setObjectName(toQt(design.key));
        button->setFocusPolicy(Qt::NoFocus);
        button->setAccessibleName(spokenCaption(toQt(design.caption)));
    }
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
