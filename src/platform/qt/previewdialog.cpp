#include "platform/qt/previewdialog.h"

#include <QAction>
#include <QComboBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "platform/qt/core.h"
#include "platform/qt/previewpage.h"
#include "platform/qt/printing.h"
#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"

namespace orvenmod::platform::qt {

namespace {

// What the zoom box holds where it is no percentage.
constexpr int kWholePage = 0;
constexpr int kPageWidth = -1;
constexpr int kFrame = 4;

struct PaperChoice {
    QPageSize::PageSizeId id;
    const char* name;
};

// Those that a template may name.
constexpr std::array kPapers = {PaperChoice{QPageSize::A3, "A3"}, PaperChoice{QPageSize::A4, "A4"},
                                PaperChoice{QPageSize::A5, "A5"}, PaperChoice{QPageSize::B5, "B5"},
                                PaperChoice{QPageSize::Letter, "Letter"}};

/// "A3 纵向", "A3 横向", ...
QStringList paperNames() {
    QStringList names;
    for (const PaperChoice& paper : kPapers) {
        for (const char* way : {"纵向", "横向"})
            names << QStringLiteral("%1 %2").arg(QLatin1String(paper.name), QString::fromUtf8(way));
    }
    return names;
}

}  // namespace

PreviewDialog::PreviewDialog(Core& core, const report::ReportData& gathered)
    : QDialog(core.front()),
      core_(core),
      data_(gathered),
      area_(new QScrollArea(this)),
      page_(new PreviewPage(gathered.page.family, area_)),
      number_(new QSpinBox(this)),
      count_(new QLabel(this)),
      zoom_(new QComboBox(this)) {
    dressBox(*this);
    setObjectName(QStringLiteral("preview"));
    setWindowTitle(gathered.title.empty() ? QStringLiteral("打印预览")
                                          : toQt(gathered.title) + QStringLiteral(" - 打印预览"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* bar = new QToolBar(this);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    fillToolbar(*bar);
    page_->setObjectName(QStringLiteral("page"));
    area_->setWidget(page_);
    area_->setAlignment(Qt::AlignCenter);
    area_->setBackgroundRole(QPalette::Mid);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(area_);
    resize(1000, 720);
    centre(*this, core.front());
    preparePrinter(printer_, gathered);
    layOut();
}

PreviewDialog::~PreviewDialog() = default;

QAction* PreviewDialog::addAction(QToolBar& bar, const char* name, const QString& caption,
                                  void (PreviewDialog::*action)()) {
    QAction* added = bar.addAction(caption);
    added->setObjectName(QLatin1String(name));
    connect(added, &QAction::triggered, this, [this, action] { core_.guard([this, action] { (this->*action)(); }); });
    return added;
}

void PreviewDialog::fillToolbar(QToolBar& bar) {
    addAction(bar, "Print", QStringLiteral("打印(&P)"), &PreviewDialog::printPages)->setShortcut(QKeySequence::Print);
    addAction(bar, "PageSetup", QStringLiteral("页面设置(&S)"), &PreviewDialog::setUpPage);
    bar.addSeparator();
    first_ = addAction(bar, "First", QStringLiteral("首页"), &PreviewDialog::firstPage);
    previous_ = addAction(bar, "Previous", QStringLiteral("上一页"), &PreviewDialog::previousPage);
    number_->setObjectName(QStringLiteral("PageNumber"));
    number_->setAccessibleName(QStringLiteral("页码"));
    number_->setKeyboardTracking(false);
    connect(number_, &QSpinBox::valueChanged, this, &PreviewDialog::goTo);
    bar.addWidget(number_);
    count_->setObjectName(QStringLiteral("PageCount"));
    bar.addWidget(count_);
    next_ = addAction(bar, "Next", QStringLiteral("下一页"), &PreviewDialog::nextPage);
    last_ = addAction(bar, "Last", QStringLiteral("末页"), &PreviewDialog::lastPage);
    bar.addSeparator();
    zoom_->setObjectName(QStringLiteral("Zoom"));
    zoom_->setAccessibleName(QStringLiteral("显示比例"));
    zoom_->addItem(QStringLiteral("整页"), kWholePage);
    zoom_->addItem(QStringLiteral("页宽"), kPageWidth);
    for (const int percent : {50, 75, 100, 150, 200, 400})
        zoom_->addItem(QStringLiteral("%1%").arg(percent), percent);
    zoom_->setCurrentIndex(1);
    connect(zoom_, &QComboBox::currentIndexChanged, this, &PreviewDialog::applyZoom);
    bar.addWidget(zoom_);
    bar.addSeparator();
    QAction* close = bar.addAction(QStringLiteral("关闭(&C)"), this, &QDialog::reject);
    close->setObjectName(QStringLiteral("Close"));
}

void PreviewDialog::layOut() {
    pages_ = std::make_unique<report::ReportPages>(data_, paperOf(printer_), printedDate());
    const int count = static_cast<int>(pages_->count());
    count_->setText(QStringLiteral(" / 共 %1 页 ").arg(count));
    number_->setRange(1, count);
    goTo(number_->value());
    applyZoom();
}

void PreviewDialog::goTo(int page) {
    if (!pages_) return;
    const int count = static_cast<int>(pages_->count());
    const int chosen = std::clamp(page, 1, count);
    if (number_->value() != chosen) return number_->setValue(chosen);  // comes back here
    page_->showPage(pages_->page(static_cast<std::size_t>(chosen - 1)), paperOf(printer_));
    area_->verticalScrollBar()->setValue(0);
    for (QAction* back : {first_, previous_})
        back->setEnabled(chosen > 1);
    for (QAction* on : {next_, last_})
        on->setEnabled(chosen < count);
}

void PreviewDialog::previousPage() { goTo(number_->value() - 1); }

void PreviewDialog::nextPage() { goTo(number_->value() + 1); }

void PreviewDialog::lastPage() { goTo(number_->maximum()); }

void PreviewDialog::applyZoom() {
    const int chosen = zoom_->currentData().toInt();
    if (chosen > 0) return page_->setZoom(chosen / 100.0);
    const QSizeF plain = page_->plainSize();
    const int bar = area_->verticalScrollBar()->sizeHint().width();
    const int around = kFrame + 2 * PreviewPage::kDesk;
    const double wide = (area_->width() - bar - around) / plain.width();
    const double high = (area_->height() - around) / plain.height();
    page_->setZoom(std::max(0.1, chosen == kPageWidth ? wide : std::min(wide, high)));
}

// Qt's own page set-up knows only printers of the system and does nothing where there is none.
void PreviewDialog::setUpPage() {
    QStringList names = paperNames();
    const QPageLayout layout = printer_.pageLayout();
    const auto* const paper = std::ranges::find(kPapers, layout.pageSize().id(), &PaperChoice::id);
    auto current = static_cast<qsizetype>(2 * (paper - kPapers.begin()));
    if (paper == kPapers.end()) {
        const report::Paper own = paperOf(printer_);
        names << QStringLiteral("%1 × %2 毫米").arg(qRound(own.width)).arg(qRound(own.height));
    } else if (layout.orientation() == QPageLayout::Landscape) {
        ++current;
    }
    QInputDialog box(this);
    dressBox(box);
    box.setObjectName(QStringLiteral("pageSetup"));
    box.setWindowTitle(QStringLiteral("页面设置"));
    box.setLabelText(QStringLiteral("纸张和方向："));
    box.setComboBoxItems(names);
    box.setTextValue(names.at(current));
    if (box.exec() != QDialog::Accepted || box.textValue() == names.at(current)) return;
    const auto chosen = static_cast<std::size_t>(names.indexOf(box.textValue()));
    printer_.setPageSize(QPageSize(kPapers.at(chosen / 2).id));
    printer_.setPageOrientation(chosen % 2 == 0 ? QPageLayout::Portrait : QPageLayout::Landscape);
    layOut();
}

void PreviewDialog::printPages() { printReport(core_, printer_, data_, this); }

void PreviewDialog::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_PageUp:
            return previousPage();
        case Qt::Key_PageDown:
            return nextPage();
        case Qt::Key_Home:
            return firstPage();
        case Qt::Key_End:
            return lastPage();
        default:
            QDialog::keyPressEvent(event);
    }
}

void PreviewDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    applyZoom();
}

}  // namespace orvenmod::platform::qt
