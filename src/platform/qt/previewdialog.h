// The modal print preview: one page at a time, so that a long report shows at once; paging, zoom, page set-up, print.
#pragma once

#include <QDialog>
#include <QPrinter>
#include <memory>

#include "platform/report/reportpages.h"

class QAction;
class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;
class QToolBar;

namespace orvenmod::platform::qt {

class Core;
class PreviewPage;

class PreviewDialog final : public QDialog {
    Q_OBJECT
public:
    /// The data outlives the dialog.
    PreviewDialog(Core& core, const report::ReportData& gathered);
    ~PreviewDialog() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fillToolbar(QToolBar& bar);
    QAction* addAction(QToolBar& bar, const char* name, const QString& caption, void (PreviewDialog::*action)());
    void layOut();
    void goTo(int page);
    void applyZoom();
    void firstPage() { goTo(1); }
    void previousPage();
    void nextPage();
    void lastPage();
    void setUpPage();
    void printPages();

    Core& core_;
    const report::ReportData& data_;
    QPrinter printer_{QPrinter::HighResolution};
    std::unique_ptr<report::ReportPages> pages_;
    QScrollArea* area_;
    PreviewPage* page_;
    QSpinBox* number_;
    QLabel* count_;
    QComboBox* zoom_;
    QAction* first_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* next_ = nullptr;
    QAction* last_ = nullptr;
};

}  // namespace orvenmod::platform::qt
