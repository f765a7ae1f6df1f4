#include "upgradeoffer.h"

#include <QApplication>
#include <exception>

#include "plainbox.h"

namespace orvenmod::sample {
namespace {

const QString kTitle = QStringLiteral("裕丰商行");

void tell(const char* text) { showBox(nullptr, QMessageBox::Critical, kTitle, QString::fromUtf8(text)); }

bool isUpgradeWanted() {
    return showBox(nullptr, QMessageBox::Question, kTitle,
                   QStringLiteral("数据库由较早的版本建立，升级后查询更快，资料不变。\n现在升级吗？"),
                   QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

}  // namespace

bool isReadyToOpen(const Suite& suite) {
    if (suite.age() == DatabaseAge::older && isUpgradeWanted()) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        try {
            suite.upgrade();
            QApplication::restoreOverrideCursor();
        } catch (const std::exception& failure) {
            QApplication::restoreOverrideCursor();
            tell(failure.what());
        }
    }
    if (suite.age() != DatabaseAge::newer) return true;
    tell(kNewerDatabase);
    return false;
}

}  // namespace orvenmod::sample
