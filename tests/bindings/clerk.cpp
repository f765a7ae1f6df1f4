// A clerk for hosts of any language: preloaded into the host's process, he waits for the component's windows and works
// them by mouse and keyboard, as the file tells that ORVEN_TEST_CLERK names:
//
//     window frmBasicInfoList      the next window that opens, and what is done in it
//     type txtSearch 开关
//     press Return
//     click cmdFind
//     pick vsf1 3                  double clicks the third row
//     picture /tmp/list.png
//     await /tmp/seen              until somebody has made that file
//     close
//
// What he can't do, and a window or box that nobody told him of, ends the process with a text and status 70.
#include <unistd.h>
#include <QAbstractItemModel>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QStringList>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <cstdio>

namespace {

constexpr int kPatience = 20000;  // milliseconds for what must come

[[noreturn]] void stop(const QString& why) {
    constexpr int kStopped = 70;
    std::fprintf(stderr, "the clerk stopped: %s\n", qPrintable(why));
    ::_exit(kStopped);
}

template <class Widget>
Widget& find(QMainWindow& window, const QString& name) {
    auto* widget = window.findChild<Widget*>(name);
    if (widget == nullptr || !widget->isVisible()) stop("no control " + name + " in " + window.objectName());
    return *widget;
}

void pickRow(QMainWindow& window, const QString& grid, int row) {
    auto& view = find<QTableView>(window, grid);
    const QModelIndex cell = view.model()->index(row - 1, view.columnAt(20));
    if (!cell.isValid()) stop("no row " + QString::number(row) + " in " + grid);
    view.scrollTo(cell);
    const QPoint place = view.visualRect(cell).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
}

void typeInto(QMainWindow& window, const QString& edit, const QString& text) {
    auto& line = find<QLineEdit>(window, edit);
    line.setFocus();
    line.selectAll();
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, &line, Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

void press(QMainWindow& window, const QString& keys) {
    const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
    if (sequence.isEmpty()) stop("no key " + keys);
    QWidget* const focus = window.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &window, sequence[0].key(), sequence[0].keyboardModifiers());
}

class Clerk : public QObject {
public:
    explicit Clerk(const QString& file) {
        QFile script(file);
        if (!script.open(QIODevice::ReadOnly)) stop("no script " + file);
        steps_ = QString::fromUtf8(script.readAll()).split('\n', Qt::SkipEmptyParts);
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            if (auto* box = qobject_cast<QMessageBox*>(watched)) stop("a box: " + box->text());
            if (auto* window = qobject_cast<QMainWindow*>(watched)) workOnceReady(*window);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // The window loads after it has been shown, and may paint itself meanwhile: the clerk waits for the hourglass to
    // go.
    void workOnceReady(QMainWindow& window) {
        QTimer::singleShot(10, &window, [this, &window] {
            if (QApplication::activeModalWidget() == &window && QApplication::overrideCursor() == nullptr) {
                work(window);
            } else {
                workOnceReady(window);
            }
        });
    }

    void work(QMainWindow& window) {
        if (steps_.isEmpty() || steps_.takeFirst() != "window " + window.objectName())
            stop("nobody expected " + window.objectName());
        while (!steps_.isEmpty() && !steps_.first().startsWith("window "))
            take(window, steps_.takeFirst().split(' '));
        const int visit = ++visits_;
        QTimer::singleShot(kPatience, this, [this, visit, name = window.objectName()] {
            if (visit == visits_ && QApplication::activeModalWidget() != nullptr) stop(name + " stays open");
        });
    }

    static void take(QMainWindow& window, const QStringList& step) {
        const QString& what = step.first();
        const QString argument = step.value(1);
        if (what == "type") {
            typeInto(window, argument, step.mid(2).join(' '));
        } else if (what == "press") {
            press(window, argument);
        } else if (what == "click") {
            QTest::mouseClick(&find<QWidget>(window, argument), Qt::LeftButton);
        } else if (what == "pick") {
            pickRow(window, argument, step.value(2).toInt());
        } else if (what == "picture") {
            if (!window.grab().save(argument)) stop("no picture " + argument);
        } else if (what == "await") {
            if (!QTest::qWaitFor([&] { return QFile::exists(argument); }, kPatience)) stop("no file " + argument);
        } else if (what == "close") {
            window.close();
        } else {
            stop("no step " + what);
        }
    }

    QStringList steps_;
    int visits_ = 0;
};

void begin() {
    const QByteArray file = qgetenv("ORVEN_TEST_CLERK");
    if (!file.isEmpty()) new Clerk(QString::fromLocal8Bit(file));
}

}  // namespace

// Runs when the component, or the host, makes the application.
Q_COREAPP_STARTUP_FUNCTION(begin)
