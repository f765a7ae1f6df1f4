// The text beside a cell that refuses what was typed. It stays until the cell is typed in again or left; the desktop's
// own tooltips go with the next click.
#pragma once

#include <QLabel>
#include <QLineEdit>

namespace orvenmod::platform::qt {

class CellHint : public QLabel {
    Q_OBJECT
public:
    explicit CellHint(QWidget* window);

    /// Shows the text below the cell's field, or above it where there is no room; at the end where the typed text is.
    void tell(const QString& text, const QLineEdit& field);
    void place(const QLineEdit& field);
};

}  // namespace orvenmod::platform::qt
