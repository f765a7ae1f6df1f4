// A showing of a window has the steps of the system's own desktop, and code that works over the window relies on them:
// it is on the screen before its load begins, it is told its size once the load is done, whatever size the screen
// allowed, and it is told its end in every case but a load that failed.
//
//   open    shown, painted once, hourglass       load   a failure hides it and goes to whoever shows it
//   resize  the first, never during the load     loop   until close()          unload
#include "platform/qt/qtwindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <stdexcept>

#include "platform/qt/application.h"
#include "platform/qt/entrygridview.h"
#include "platform/qt/text.h"
#include "platform/qt/windowlook.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kExposeMilliseconds = 500;

}  // namespace

QtWindow::QtWindow(Core& core, const WindowDesign& design)
    : core_(core),
      name_(design.name),
      width_(design.width),
      height_(design.height),
      resizable_(design.resizable),
      widget_(std::make_unique<WindowWidget>(design.resizable)) {
    dressWindow(*widget_);
    widget_->setObjectName(toQt(design.name));
    widget_->setWindowTitle(toQt(design.caption));
    widget_->setWindowModality(Qt::ApplicationModal);
    built_ = WindowBuilder::build(core, design, *widget_);
    for (const auto& control : built_.controls) {
        controls_.push_back(control.get());
        byName_.emplace(std::make_pair(control->name(), control->index()), control.get());
    }
    widget_->setAreaSize(QSize(toPixels(width_), toPixels(height_)));
    widget_->onClose = [this] {
        if (takeOverIn(*widget_)) close();
    };
    widget_->onResize = [this] { areaResized(); };
}

QtWindow::~QtWindow() {
    // Widgets tell of much on their way out; none of it is the user's.
    widget_->onResize = nullptr;
    for (QObject* child : widget_->findChildren<QObject*>())
        child->blockSignals(true);
    widget_.reset();
}

std::string QtWindow::caption() const { return fromQt(widget_->windowTitle()); }

void QtWindow::setCaption(const std::string& caption) { widget_->setWindowTitle(toQt(caption)); }

void QtWindow::setInnerSize(float width, float height) {
    width_ = std::min(width, kLargestInner);
    height_ = std::min(height, kLargestInner);
    {
        const QScopedValueRollback<bool> sizing(sizing_, true);
        widget_->setAreaSize(QSize(toPixels(width), toPixels(height)));
    }
    if (shown_ && loaded_) resize.raise();
}

Control* QtWindow::find(const std::string& name, int index) const {
    const auto found = byName_.find({name, index});
    return found == byName_.end() ? nullptr : found->second;
}

void QtWindow::showModal(const std::function<void()>& load) {
    if (shown_) throw std::logic_error("the window is shown already: " + name_);
    const PlainPointer pointer;
    const ChineseWhileShown texts;
    open();
    runLoad(load);
    if (shown_) core_.guard([this] { resize.raise(); });
    if (shown_) runLoop();
    shown_ = false;
    core_.guard([this] { unload.raise(); });
    hide();
}

void QtWindow::close() {
    shown_ = false;
    if (loop_ != nullptr) loop_->quit();
}

// Sized by its design as far as the screen allows. While it loads, the controls lie where they are drawn; the event
// that follows fits them to the size that there is.
void QtWindow::open() {
    QWidget* behind = core_.front();
    shown_ = true;
    loaded_ = false;
    const QScreen* screen = behind != nullptr ? behind->screen() : QGuiApplication::primaryScreen();
    if (resizable_ && screen != nullptr) {
        const QSize frame = widget_->size() - widget_->area()->size() + kFrameAllowance;
        const QSize most = screen->availableSize() - frame;
        widget_->setAreaSize(QSize(toPixels(width_), toPixels(height_)).boundedTo(most));
    }
    centre(*widget_, behind);
    widget_->winId();
    if (behind != nullptr) widget_->windowHandle()->setTransientParent(behind->window()->windowHandle());
    core_.pushModal(widget_.get());
    setPointer(Pointer::hourglass);
    focusFirst();
    widget_->show();
    widget_->raise();
    widget_->activateWindow();
    const QDeadlineTimer deadline(kExposeMilliseconds);
    while (!widget_->windowHandle()->isExposed() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    widget_->repaint();
}

void QtWindow::runLoad(const std::function<void()>& load) {
    try {
        if (load) load();
    } catch (...) {
        shown_ = false;
        hide();
        throw;
    }
    setPointer(Pointer::arrow);
    loaded_ = true;
    takeAreaSize();
}

void QtWindow::runLoop() {
    QEventLoop loop;
    loop_ = &loop;
    if (core_.modalObserver) {
        QTimer::singleShot(0, widget_.get(), [this] {
            widget_->repaint();
            if (shown_) core_.modalObserver(*this);
        });
    }
    QTimer ticker(widget_.get());
    ticker.setObjectName(QStringLiteral("ticker"));
    QObject::connect(&ticker, &QTimer::timeout, widget_.get(), [this] {
        if (shown_ && !core_.paintsWithin()) core_.guard([this] { tick.raise(); });
    });
    if (tick) ticker.start(core_.tickInterval);
    loop.exec();
    loop_ = nullptr;
}

void QtWindow::hide() {
    setPointer(Pointer::arrow);
    core_.popModal(widget_.get());
    widget_->hide();
    if (QWidget* behind = core_.front()) behind->activateWindow();
}

void QtWindow::setPointer(Pointer pointer) {
    if (pointer == pointer_) return;
    pointer_ = pointer;
    if (pointer == Pointer::hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtWindow::areaResized() {
    if (sizing_ || !shown_ || !loaded_) return;
    takeAreaSize();
    core_.guard([this] { resize.raise(); });
}

// The size in twips stays as it was told while it means the same pixels.
void QtWindow::takeAreaSize() {
    // A desktop may stretch a window beyond the largest size that it was told.
    const QSize pixels = widget_->area()->size().boundedTo(largestArea());
    if (toPixels(width_) != pixels.width()) width_ = toTwips(pixels.width());
    if (toPixels(height_) != pixels.height()) height_ = toTwips(pixels.height());
}

void QtWindow::focusFirst() {
    for (QWidget* stop : built_.tabStops) {
        if (!stop->isEnabled() || !stop->isVisibleTo(widget_.get())) continue;
        stop->setFocus(Qt::ActiveWindowFocusReason);
        return;
    }
}

}  // namespace orvenmod::platform::qt
