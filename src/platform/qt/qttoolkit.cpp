#include "platform/qt/qttoolkit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>
#include <stdexcept>

#include "platform/qt/application.h"
#include "platform/qt/core.h"
#include "platform/qt/qtprogress.h"
#include "platform/qt/qtreport.h"
#include "platform/qt/qtwindow.h"
#include "platform/qt/snapshot.h"
#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"
#include "platform/settings.h"

namespace orvenmod::platform::qt {

namespace {

QMessageBox::Icon iconOf(MessageKind kind) {
    switch (kind) {
        case MessageKind::warning:
            return QMessageBox::Warning;
        case MessageKind::information:
            return QMessageBox::Information;
        case MessageKind::critical:
            return QMessageBox::Critical;
        case MessageKind::question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

void dressMessage(QMessageBox& box, MessageKind kind, const std::string& text, const std::string& title) {
    dressBox(box);
    box.setObjectName(QStringLiteral("message"));
    box.setIcon(iconOf(kind));
    box.setWindowTitle(toQt(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(text));
}

}  // namespace

QtToolkit::QtToolkit() : core_(std::make_unique<Core>(*this)) {
    setProgressPace();
    setTickInterval();
    ensureApplication();
}

QtToolkit::~QtToolkit() = default;

void QtToolkit::requireApplication() const { qt::requireApplication(); }

std::unique_ptr<Window> QtToolkit::createWindow(const WindowDesign& design) {
    return std::make_unique<QtWindow>(*core_, design);
}

std::unique_ptr<Report> QtToolkit::createReport() { return std::make_unique<QtReport>(*core_); }

Answer QtToolkit::message(MessageKind kind, const std::string& text, const std::string& title) {
    const PlainPointer pointer;
    const ChineseWhileShown texts;
    QMessageBox box(core_->front());
    dressMessage(box, kind, text, title);
    box.setStandardButtons(kind == MessageKind::question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    const int pressed = box.exec();
    if (kind != MessageKind::question) return Answer::ok;
    return pressed == QMessageBox::Yes ? Answer::yes : Answer::no;
}

bool QtToolkit::warnOffering(const std::string& text, const std::string& title, const std::string& further) {
    const PlainPointer pointer;
    QMessageBox box(core_->front());
    dressMessage(box, MessageKind::warning, text, title);
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    const QAbstractButton* offered = box.addButton(toQt(further), QMessageBox::ActionRole);
    box.exec();
    return box.clickedButton() == offered;
}

void QtToolkit::sendTab() {
    QWidget* front = core_->front();
    QWidget* focus = front != nullptr ? front->focusWidget() : QApplication::focusWidget();
    if (focus == nullptr) return;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        QCoreApplication::sendEvent(focus, &key);
    }
}

void QtToolkit::openDocument(const std::string& path) {
    const QFileInfo file(toQt(nativePath(path)));
    if (!file.isFile()) throw std::runtime_error("找不到文件：" + path);
    if (core_->documentOpener) {
        core_->documentOpener(path);
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath())))
        throw std::runtime_error("没有能打开此文件的程序：" + path);
}

void QtToolkit::paintPending() {
    const auto painting = core_->paintingWithin();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

std::unique_ptr<Progress> QtToolkit::createProgress(const std::string& text, const std::string& title, int whole) {
    return std::make_unique<QtProgress>(*core_, text, title, whole);
}

void QtToolkit::setModalObserver(std::function<void(Window&)> observer) { core_->modalObserver = std::move(observer); }

void QtToolkit::setDocumentOpener(std::function<void(const std::string&)> opener) {
    core_->documentOpener = std::move(opener);
}

void QtToolkit::setPrintFile(const std::string& path) { core_->printFile = path; }

void QtToolkit::setProgressPace(std::chrono::milliseconds delay, std::chrono::milliseconds interval) {
    core_->progressDelay = delay;
    core_->progressInterval = interval;
}

void QtToolkit::setTickInterval(std::chrono::milliseconds interval) { core_->tickInterval = interval; }

void QtToolkit::savePicture(const Window& window, const std::string& path) const {
    const auto* own = dynamic_cast<const QtWindow*>(&window);
    if (own == nullptr) throw std::runtime_error("the window isn't this toolkit's: " + window.name());
    saveSnapshot(own->widget(), toQt(path));
}

}  // namespace orvenmod::platform::qt
