#include "platform/qt/qttoolbar.h"

#include <QAction>
#include <stdexcept>

#include "platform/qt/icons.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

QtToolbar::QtToolbar(Core& core, const ControlDesign& design, const std::vector<ToolButtonDesign>& buttons,
                     QMainWindow& window)
    : QtControl(design, new QToolBar(&window)), bar_(static_cast<QToolBar*>(body_.widget())) {
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
        button->setFocusPolicy(Qt::TabFocus);
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
