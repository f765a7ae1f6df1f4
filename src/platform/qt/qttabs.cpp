#include "platform/qt/qttabs.h"

#include <QApplication>
#include <QShortcut>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>
#include <algorithm>
#include <stdexcept>

#include "platform/qt/entrygridview.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

TabsWidget::TabsWidget(QWidget* parent) : QWidget(parent), bar_(new QTabBar(this)) {
    bar_->setObjectName(QStringLiteral("tabs"));
    bar_->setDrawBase(false);
    bar_->setExpanding(false);
    connect(bar_, &QTabBar::currentChanged, this, &TabsWidget::showPage);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageDown, this), &QShortcut::activated, this, [this] { turn(1); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageUp, this), &QShortcut::activated, this, [this] { turn(-1); });
}

QWidget* TabsWidget::addPage(const QString& caption) {
    auto* page = new QWidget(this);
    page->setVisible(pages_.empty());
    pages_.push_back(page);
    bar_->addTab(caption);
    bar_->adjustSize();
    bar_->raise();
    return page;
}

void TabsWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    bar_->setGeometry(0, 0, std::min(width(), bar_->sizeHint().width()), bar_->sizeHint().height());
    for (QWidget* page : pages_)
        page->setGeometry(rect());
}

void TabsWidget::paintEvent(QPaintEvent*) {
    QStyleOptionTabWidgetFrame option;
    option.initFrom(this);
    option.rect = rect().adjusted(0, bar_->height() - 1, 0, 0);
    option.tabBarSize = bar_->size();
    option.tabBarRect = bar_->geometry();
    option.selectedTabRect = bar_->tabRect(bar_->currentIndex());
    option.shape = QTabBar::RoundedNorth;
    option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    QStylePainter painter(this);
    painter.drawPrimitive(QStyle::PE_FrameTabWidget, option);
}

// What had the keyboard on the page that goes hands it to the page that comes.
void TabsWidget::showPage(int index) {
    const QWidget* focus = QApplication::focusWidget();
    const bool handsOver = focus != nullptr && focus != bar_ && isAncestorOf(focus);
    for (std::size_t page = 0; page < pages_.size(); ++page)
        pages_[page]->setVisible(static_cast<int>(page) == index);
    bar_->raise();
    update();
    if (handsOver) firstStop()->setFocus(Qt::OtherFocusReason);
}

void TabsWidget::turn(int step) {
    if (!takeOverIn(*window())) return;
    const int count = bar_->count();
    for (int tried = 1; tried < count; ++tried) {
        const int index = (bar_->currentIndex() + count + step * tried) % count;
        if (!bar_->isTabEnabled(index)) continue;
        bar_->setCurrentIndex(index);
        firstStop()->setFocus(Qt::ShortcutFocusReason);
        return;
    }
}

QWidget* TabsWidget::firstStop() const {
    const QWidget* page = pages_[static_cast<std::size_t>(bar_->currentIndex())];
    for (QWidget* stop = bar_->nextInFocusChain(); stop != bar_; stop = stop->nextInFocusChain()) {
        const bool tabbed = (stop->focusPolicy() & Qt::TabFocus) != 0;
        if (tabbed && stop->isEnabled() && stop->isVisible() && page->isAncestorOf(stop)) return stop;
    }
    return bar_;
}

QtTabs::QtTabs(const ControlDesign& design, QWidget* parent)
    : QtControl(design, new TabsWidget(parent)), tabs_(static_cast<TabsWidget*>(body_.widget())) {
    for (const std::string_view caption : design.pages)
        tabs_->addPage(toQt(caption));
    // The pages came after the place was set.
    for (QWidget* page : tabs_->pages())
        page->setGeometry(tabs_->rect());
    tabs_->bar()->resize(tabs_->bar()->sizeHint());
    tabs_->bar()->setAccessibleName(tabs_->bar()->count() > 0 ? spokenCaption(tabs_->bar()->tabText(0)) : QString());
    body_.setFocusPart(tabs_->bar());
}

int QtTabs::tab() const { return tabs_->bar()->currentIndex(); }

void QtTabs::setTab(int index) {
    check(index);
    tabs_->bar()->setCurrentIndex(index);
}

std::string QtTabs::tabCaption(int index) const {
    check(index);
    return fromQt(tabs_->bar()->tabText(index));
}

void QtTabs::setTabCaption(int index, const std::string& caption) {
    check(index);
    tabs_->bar()->setTabText(index, toQt(caption));
    tabs_->bar()->resize(tabs_->bar()->sizeHint());
}

void QtTabs::setTabEnabled(int index, bool enabled) {
    check(index);
    const int current = tab();
    tabs_->bar()->setTabEnabled(index, enabled);
    if (tab() != current) tabs_->bar()->setCurrentIndex(current);  // the bar leaves a tab that is switched off
}

bool QtTabs::tabEnabled(int index) const {
    check(index);
    return tabs_->bar()->isTabEnabled(index);
}

QWidget* QtTabs::page(int index) const {
    check(index);
    return tabs_->pages()[static_cast<std::size_t>(index)];
}

void QtTabs::check(int index) const {
    if (index < 0 || index >= tabs_->bar()->count()) throw std::out_of_range("no such tab: " + std::to_string(index));
}

}  // namespace orvenmod::platform::qt
