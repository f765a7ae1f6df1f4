#include "platform/qt/qtmenu.h"

#include <QCursor>
#include <QMenu>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

ControlDesign controlOf(const MenuDesign& design) {
    ControlDesign control{ControlKind::menu, design.name};
    control.visible = design.visible;
    control.enabled = design.enabled;
    return control;
}

}  // namespace

QtMenu::QtMenu(Core& core, const MenuDesign& design, QMenuBar* bar, QMenu* holder, bool hasEntries)
    : QtControl(controlOf(design), nullptr), core_(core), bar_(bar) {
    if (hasEntries) {
        menu_ = new QMenu(bar);
        menu_->setObjectName(toQt(design.name));
        menu_->setToolTipsVisible(true);
        action_ = menu_->menuAction();
    } else {
        action_ = new QAction(bar);
    }
    action_->setObjectName(toQt(design.name));
    if (design.caption == "-")
        action_->setSeparator(true);
    else
        action_->setText(toQt(design.caption));
    if (!design.shortcut.empty())
        action_->setShortcut(QKeySequence::fromString(toQt(design.shortcut), QKeySequence::PortableText));
    action_->setEnabled(design.enabled);
    action_->setVisible(design.visible);
    if (design.checkable || design.checked) setChecked(design.checked);
    if (holder != nullptr)
        holder->addAction(action_);
    else
        bar->addAction(action_);
    QObject::connect(action_, &QAction::triggered, action_, [this] { chosen(); });
}

std::string QtMenu::caption() const { return action_->isSeparator() ? "-" : fromQt(action_->text()); }

void QtMenu::setCaption(const std::string& caption) { action_->setText(toQt(caption)); }

void QtMenu::setChecked(bool checked) {
    checked_ = checked;
    action_->setCheckable(true);
    action_->setChecked(checked);
}

void QtMenu::popUp() {
    if (menu_ == nullptr) return;
    const QWidget* focus = bar_->window()->focusWidget();
    QPoint place = QCursor::pos();
    if (core_.popUpPlace)
        place = *core_.popUpPlace;
    else if (focus != nullptr && !bar_->window()->geometry().contains(place))
        place = focus->mapToGlobal(focus->rect().center());
    menu_->exec(place);
}

bool QtMenu::visible() const { return action_->isVisible(); }

void QtMenu::setVisible(bool visible) {
    body_.setVisible(visible);
    action_->setVisible(visible);
}

bool QtMenu::enabled() const { return action_->isEnabled(); }

void QtMenu::setEnabled(bool enabled) {
    body_.setEnabled(enabled);
    action_->setEnabled(enabled);
}

// The mark is the logic's to set; Qt has just toggled it by itself.
void QtMenu::chosen() {
    if (action_->isCheckable()) action_->setChecked(checked_);
    core_.command([this] { click.raise(); });
}

}  // namespace orvenmod::platform::qt
