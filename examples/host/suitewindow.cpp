#include "suitewindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>
#include <exception>

#include "plainbox.h"

namespace orvenmod::sample {
namespace {

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

constexpr int kQuantityColumn = 2;

QTableWidget* makeTable(const QString& name, const QStringList& titles) {
    auto* table = new QTableWidget(0, static_cast<int>(titles.size()));
    table->setObjectName(name);
    table->setAccessibleName(name);
    table->setHorizontalHeaderLabels(titles);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAlternatingRowColors(true);
    return table;
}

void addRow(QTableWidget* table, const QStringList& cells) {
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < cells.size(); ++column) {
        table->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
}

QString outcomeText(const Request& request, const Result& result) {
    if (request.openAs == OpenAs::management) return QStringLiteral("管理窗口已关闭。");
    if (result.itemId == "-1") return QStringLiteral("选定了 %1 行物料。").arg(result.rows.size());
    if (result.itemId.empty()) return QStringLiteral("没有选取。");
    return QStringLiteral("选取了 %1。").arg(text(result.name));
}

}  // namespace

SuiteWindow::SuiteWindow(const Suite& suite) : suite_(suite), users_(suite.users()), warehouses_(suite.warehouses()) {
    setObjectName(QStringLiteral("frmSuite"));
    setWindowTitle(QStringLiteral("裕丰商行 - 进销存（示例）"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(14);
    layout->addWidget(makeHead());
    auto* body = new QHBoxLayout;
    body->setSpacing(14);
    body->addWidget(makeChoices());
    body->addWidget(makeResults(), 1);
    layout->addLayout(body, 1);
    resize(900, 560);
    logInAs(0);
}

QWidget* SuiteWindow::makeHead() {
    auto* head = new QWidget;
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    auto* name = new QLabel(QStringLiteral("裕丰商行"));
    QFont large = name->font();
    large.setPixelSize(22);
    large.setBold(true);
    name->setFont(large);
    row->addWidget(name);
    row->addStretch();
    auto* caption = new QLabel(QStringLiteral("操作员(&U)："));
    user_ = new QComboBox;
    user_->setObjectName(QStringLiteral("user"));
    caption->setBuddy(user_);
    for (const SuiteUser& user : users_)
        user_->addItem(text(user.name));
    connect(user_, &QComboBox::activated, this, &SuiteWindow::logInAs);
    row->addWidget(caption);
    row->addWidget(user_);
    return head;
}

void SuiteWindow::addButton(QGridLayout* grid, int row, int column, const QString& caption, const Request& request) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QStringLiteral("open%1_%2").arg(request.itemClass).arg(static_cast<int>(request.openAs)));
    button->setMinimumHeight(32);
    connect(button, &QPushButton::clicked, this, [this, request] { open(withChoices(request)); });
    grid->addWidget(button, row, column);
}

QWidget* SuiteWindow::makeChoices() {
    auto* side = new QWidget;
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* choose = new QGroupBox(QStringLiteral("打开"));
    auto* grid = new QGridLayout(choose);
    int row = 0;
    for (const auto& [itemClass, name] : {std::pair{1, QStringLiteral("客户")},
                                          {2, QStringLiteral("供应商")},
                                          {3, QStringLiteral("货品")},
                                          {11, QStringLiteral("账户")}}) {
        grid->addWidget(new QLabel(name), row, 0);
        const auto id = static_cast<std::int16_t>(itemClass);
        addButton(grid, row, 1, QStringLiteral("管理"), {.itemClass = id});
        addButton(grid, row, 2, QStringLiteral("选取"), {.itemClass = id, .openAs = OpenAs::picker});
        ++row;
    }
    addButton(grid, row, 1, QStringLiteral("选单据物料"), {.openAs = OpenAs::billPicker});
    layout->addWidget(choose);
    layout->addWidget(makeOwnClasses());

    auto* with = new QGroupBox(QStringLiteral("选取时"));
    auto* form = new QFormLayout(with);
    find_ = new QLineEdit;
    find_->setObjectName(QStringLiteral("find"));
    find_->setPlaceholderText(QStringLiteral("代码或名称"));
    warehouse_ = new QComboBox;
    warehouse_->addItem(QStringLiteral("全部仓库"));
    for (const Warehouse& warehouse : warehouses_)
        warehouse_->addItem(text(warehouse.name));
    stockChoice_ = new QComboBox;
    stockChoice_->addItems({QStringLiteral("全部货品"), QStringLiteral("只看有库存的")});
    form->addRow(QStringLiteral("查找(&S)："), find_);
    form->addRow(QStringLiteral("仓库(&W)："), warehouse_);
    form->addRow(QStringLiteral("库存(&K)："), stockChoice_);
    layout->addWidget(with);
    layout->addStretch();
    return side;
}

QWidget* SuiteWindow::makeOwnClasses() {
    auto* own = new QGroupBox(QStringLiteral("自定义类别"));
    auto* row = new QHBoxLayout(own);
    ownClass_ = new QComboBox;
    ownClass_->setObjectName(QStringLiteral("ownClass"));
    ownClass_->setAccessibleName(QStringLiteral("自定义类别"));
    openOwn_ = new QPushButton(QStringLiteral("管理"));
    openOwn_->setObjectName(QStringLiteral("openOwn"));
    connect(openOwn_, &QPushButton::clicked, this,
            [this] { open({.itemClass = static_cast<std::int16_t>(ownClass_->currentData().toInt())}); });
    auto* design = new QPushButton(QStringLiteral("类别设计(&D)..."));
    design->setObjectName(QStringLiteral("openDesigner"));
    connect(design, &QPushButton::clicked, this, &SuiteWindow::designClasses);
    auto* dictionaries = new QPushButton(QStringLiteral("基础资料(&Z)..."));
    dictionaries->setObjectName(QStringLiteral("openDictionaries"));
    connect(dictionaries, &QPushButton::clicked, this, &SuiteWindow::keepDictionaries);
    row->addWidget(ownClass_, 1);
    row->addWidget(openOwn_);
    row->addWidget(design);
    row->addWidget(dictionaries);
    fillOwnClasses();
    return own;
}

void SuiteWindow::fillOwnClasses() {
    ownClass_->clear();
    for (const OwnClass& own : suite_.ownClasses())
        ownClass_->addItem(text(own.name), own.id);
    ownClass_->setEnabled(ownClass_->count() > 0);
    openOwn_->setEnabled(ownClass_->count() > 0);
}

void SuiteWindow::designClasses() {
    try {
        suite_.designClasses();
        fillOwnClasses();
        outcome_->setText(QStringLiteral("类别设计已关闭。"));
    } catch (const std::exception& failure) {
        showBox(this, QMessageBox::Critical, windowTitle(), text(failure.what()));
    }
}

void SuiteWindow::keepDictionaries() {
    try {
        suite_.keepDictionaries();
        outcome_->setText(QStringLiteral("基础资料已关闭。"));
    } catch (const std::exception& failure) {
        showBox(this, QMessageBox::Critical, windowTitle(), text(failure.what()));
    }
}

void SuiteWindow::pickDictionary(std::int16_t dictionary) {
    try {
        const Result result = suite_.pickDictionary(dictionary);
        outcome_->setText(outcomeText({.openAs = OpenAs::picker}, result));
        showResult(result);
    } catch (const std::exception& failure) {
        showBox(this, QMessageBox::Critical, windowTitle(), text(failure.what()));
    }
}

QWidget* SuiteWindow::makeResults() {
    auto* results = new QGroupBox(QStringLiteral("返回"));
    auto* layout = new QVBoxLayout(results);
    outcome_ = new QLabel(QStringLiteral("还没有打开过窗口。"));
    outcome_->setObjectName(QStringLiteral("outcome"));
    layout->addWidget(outcome_);
    properties_ = makeTable(QStringLiteral("properties"), {QStringLiteral("属性"), QStringLiteral("值")});
    properties_->setColumnWidth(0, 120);
    properties_->setMaximumHeight(136);
    for (const char* name : {"fItemId", "fNumber", "fName"})
        addRow(properties_, {QString::fromLatin1(name), QString()});
    layout->addWidget(properties_);
    layout->addWidget(new QLabel(QStringLiteral("tblItemInput")));
    billRows_ =
        makeTable(QStringLiteral("billRows"), {QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("数量")});
    billRows_->setColumnWidth(0, 140);
    billRows_->setColumnWidth(1, 220);
    layout->addWidget(billRows_, 1);
    return results;
}

void SuiteWindow::logInAs(int index) {
    user_->setCurrentIndex(index);
    suite_.logIn(users_.at(static_cast<std::size_t>(index)));
}

Request SuiteWindow::withChoices(Request request) const {
    request.find = find_->text().toStdString();
    const int warehouse = warehouse_->currentIndex();
    if (warehouse > 0) request.warehouse = warehouses_.at(static_cast<std::size_t>(warehouse - 1)).id;
    request.onlyInStock = stockChoice_->currentIndex() == 1;
    return request;
}

void SuiteWindow::open(const Request& request) {
    try {
        const Result result = suite_.open(request);
        outcome_->setText(outcomeText(request, result));
        showResult(result);
    } catch (const std::exception& failure) {
        showBox(this, QMessageBox::Critical, windowTitle(), text(failure.what()));
    }
}

void SuiteWindow::showResult(const Result& result) {
    properties_->item(0, 1)->setText(text(result.itemId));
    properties_->item(1, 1)->setText(text(result.number));
    properties_->item(2, 1)->setText(text(result.name));
    billRows_->setRowCount(0);
    for (const BillRow& row : result.rows)
        addRow(billRows_, {text(row.number), text(row.name), text(row.quantity)});
    for (int row = 0; row < billRows_->rowCount(); ++row)
        billRows_->item(row, kQuantityColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void SuiteWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    QApplication::quit();
}

}  // namespace orvenmod::sample
