#include "platform/qt/qtprogress.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kPatience = 20;  // milliseconds for what waits to be painted
constexpr int kWidth = 420;

}  // namespace

class ProgressBox final : public QDialog {
public:
    ProgressBox(QWidget* behind, const QString& text, const QString& title, int whole)
        : QDialog(behind), text_(new QLabel(text, this)), bar_(new QProgressBar(this)), cancel_(new QPushButton(this)) {
        dressBox(*this);
        setObjectName(QStringLiteral("progress"));
        setWindowTitle(title);
        bar_->setObjectName(QStringLiteral("done"));
        bar_->setAccessibleName(text);
        bar_->setRange(0, whole);
        cancel_->setObjectName(QStringLiteral("cancel"));
        cancel_->setText(QStringLiteral("取消"));
        cancel_->setAutoDefault(false);  // the Enter that closed the dialog before may still repeat
        connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
        auto* buttons = new QHBoxLayout;
        buttons->addStretch();
        buttons->addWidget(cancel_);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(18, 18, 18, 14);
        layout->setSpacing(12);
        layout->addWidget(text_);
        layout->addWidget(bar_);
        layout->addLayout(buttons);
        setFixedSize(kWidth, sizeHint().height());
        centre(*this, behind);
    }

    void tell(int done) {
        if (cancelled_) return;
        if (done >= bar_->maximum()) {
            bar_->setRange(0, 0);  // moves without an end
        } else {
            bar_->setValue(done);
        }
    }
    bool cancelled() const { return cancelled_; }

    /// By the button, Esc or the title bar: the box stays until the work has come to its end.
    void reject() override {
        cancelled_ = true;
        cancel_->setEnabled(false);
        text_->setText(QStringLiteral("正在取消…"));
        bar_->setRange(0, 0);
    }

private:
    QLabel* text_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    bool cancelled_ = false;
};

QtProgress::QtProgress(Core& core, std::string text, std::string title, int whole)
    : core_(core), text_(std::move(text)), title_(std::move(title)), whole_(whole) {
    begun_.start();
    painted_.start();
}

QtProgress::~QtProgress() = default;

bool QtProgress::advance(int done) {
    if (!box_ && begun_.elapsed() >= core_.progressDelay.count()) {
        open();
    } else if (painted_.elapsed() < core_.progressInterval.count()) {
        return !box_ || !box_->cancelled();
    }
    if (box_) box_->tell(done);
    const auto painting = core_.paintingWithin();
    QCoreApplication::processEvents(box_ ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents, kPatience);
    painted_.restart();
    return !box_ || !box_->cancelled();
}

void QtProgress::open() {
    pointer_ = std::make_unique<PlainPointer>();
    QWidget* modal = QApplication::activeModalWidget();
    box_ = std::make_unique<ProgressBox>(modal != nullptr ? modal : core_.front(), toQt(text_), toQt(title_), whole_);
    box_->show();
}

}  // namespace orvenmod::platform::qt
