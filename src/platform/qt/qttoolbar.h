// The toolbar: buttons with a picture and a caption. It lies above the area of the other controls, as the menu bar
// does; its place and size mean nothing.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QToolBar>
#include <map>

#include "platform/controls.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"

class QToolButton;

namespace orvenmod::platform::qt {

/// Tab leads past the toolbar, from field to field; F6 leads to its buttons and back, the arrow keys from one to the
/// next.
class ToolbarWidget : public QToolBar {
    Q_OBJECT
public:
    explicit ToolbarWidget(QWidget* window);

    QToolButton* addButton(QAction* action);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool take(const QKeyEvent& key);
    void enterOrLeave();
    void step(int direction);

    QPointer<QWidget> cameFrom_;
};

class QtToolbar final : public QtControl<Toolbar> {
public:
    /// The buttons are the window's.
    QtToolbar(Core& core, const ControlDesign& design, const WindowDesign& whole, QMainWindow& window);

    bool hasButton(const std::string& key) const override;
    void setButtonVisible(const std::string& key, bool visible) override;
    bool buttonVisible(const std::string& key) const override;
    void setButtonEnabled(const std::string& key, bool enabled) override;
    bool buttonEnabled(const std::string& key) const override;

private:
    void addButton(Core& core, const ToolButtonDesign& design);
    QAction* action(const std::string& key) const;

    ToolbarWidget* bar_;
    std::map<std::string, QAction*> actions_;
};

}  // namespace orvenmod::platform::qt
