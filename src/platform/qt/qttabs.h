// Tabs: a tab bar over pages that all fill the control, so that a child's place counts from the control's own corner.
// Ctrl+PageDown and Ctrl+PageUp turn the pages from anywhere in the window and lead to the page's first control.
#pragma once

#include <QTabBar>
#include <vector>

#include "platform/controls.h"
#include "platform/qt/controlbody.h"

namespace orvenmod::platform::qt {

class TabsWidget : public QWidget {
    Q_OBJECT
public:
    explicit TabsWidget(QWidget* parent);
    QWidget* addPage(const QString& caption);
    QTabBar* bar() const { return bar_; }
    const std::vector<QWidget*>& pages() const { return pages_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showPage(int index);
    void turn(int step);
    /// The first of the open page that takes the focus; the bar where none does.
    QWidget* firstStop() const;

    QTabBar* bar_;
    std::vector<QWidget*> pages_;
};

class QtTabs final : public QtControl<Tabs> {
public:
    QtTabs(const ControlDesign& design, QWidget* parent);
    int tab() const override;
    void setTab(int index) override;
    std::string tabCaption(int index) const override;
    void setTabCaption(int index, const std::string& caption) override;
    void setTabEnabled(int index, bool enabled) override;
    bool tabEnabled(int index) const override;

    /// Throws std::out_of_range for a page that isn't.
    QWidget* page(int index) const;

private:
    void check(int index) const;

    TabsWidget* tabs_;
};

}  // namespace orvenmod::platform::qt
