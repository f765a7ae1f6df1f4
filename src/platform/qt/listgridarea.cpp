#include "platform/qt/listgridarea.h"

#include <QVBoxLayout>

namespace orvenmod::platform::qt {

namespace {

constexpr int kGap = 2;

}  // namespace

ListGridArea::ListGridArea(QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)), view_(new ListGridView(this)), status_(new QLabel(this)) {
    line_->setPlaceholderText(QStringLiteral("筛选列表：输入文字或拼音字母，空格隔开多个词，Esc 取消"));
    line_->setAccessibleName(QStringLiteral("筛选"));
    line_->setClearButtonEnabled(true);
    line_->setFocusPolicy(Qt::ClickFocus);
    line_->hide();
    status_->setTextFormat(Qt::PlainText);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    column->addWidget(line_);
    column->addWidget(view_, 1);
    column->addWidget(status_);
}

}  // namespace orvenmod::platform::qt
