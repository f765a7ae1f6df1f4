// A list grid with what stands around it where its user arranges it: the line that narrows over it, hidden until it is
// asked for, and the line that tells counts below it.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "platform/qt/listgridview.h"

namespace orvenmod::platform::qt {

class ListGridArea : public QWidget {
    Q_OBJECT
public:
    explicit ListGridArea(QWidget* parent);

    ListGridView& view() { return *view_; }
    QLineEdit& line() { return *line_; }
    void tell(const QString& status) { status_->setText(status); }

private:
    QLineEdit* line_;
    ListGridView* view_;
    QLabel* status_;
};

}  // namespace orvenmod::platform::qt
