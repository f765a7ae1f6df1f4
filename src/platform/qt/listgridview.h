// The table that shows a list grid: whole rows, several at a time, and tells what the user does with them.
#pragma once

#include <QTableView>
#include <functional>

#include "platform/keys.h"

namespace orvenmod::platform::qt {

/// The height of a row of any grid, in pixels.
inline constexpr int kRowHeight = 24;

/// What all our grids look like.
void dressGrid(QTableView& grid);

/// Shows the row at the top whole, where the view was scrolled or resized. Whether it has moved.
bool alignTopRow(QTableView& grid);

class ListGridView : public QTableView {
    Q_OBJECT
public:
    explicit ListGridView(QWidget* parent);

    std::function<void()> onDoubleClick;
    std::function<void(int)> onKey;
    std::function<void()> onLook;                 ///< the user goes to other rows, or acts on those that show
    std::function<bool(const QString&)> onTyped;  ///< whether somebody takes the letters
    std::function<bool(QKeyEvent&)> onOwnKey;     ///< whether the list's own keys took it
    std::function<void(MouseButton, const QPoint& global)> onMouse;

    /// Keeps the view from making a row current by itself, as it would on taking the focus.
    bool writing = false;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& text) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
};

}  // namespace orvenmod::platform::qt
