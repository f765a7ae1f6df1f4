// The scripts of one test over the Qt toolkit. A watcher on all events sees every box, file dialog and menu that shows,
// wherever its loop was started, and has it answered as soon as that loop runs.
#include "support/qt_script.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <limits>

#include "platform/qt/qttoolkit.h"
#include "support/qt_user.h"
#include "support/testlocale.h"

// Read by the leak sanitizer: fontconfig keeps what it has parsed until the process ends.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

namespace orvenmod::test {

namespace {

using namespace platform;

MessageKind kindOf(const QMessageBox& box) {
    switch (box.icon()) {
        case QMessageBox::Warning:
            return MessageKind::warning;
        case QMessageBox::Critical:
            return MessageKind::critical;
        case QMessageBox::Question:
            return MessageKind::question;
        default:
            return MessageKind::information;
    }
}

std::string textOf(const QMessageBox& box) {
    EXPECT_EQ(box.textFormat(), Qt::PlainText) << "signs of markup wouldn't show as they are";
    return box.text().toStdString();
}

QMessageBox::StandardButton buttonOf(Answer answer) {
    switch (answer) {
        case Answer::yes:
            return QMessageBox::Yes;
        case Answer::no:
            return QMessageBox::No;
        case Answer::ok:
        case Answer::further:
            break;
    }
    return QMessageBox::Ok;
}

/// The offscreen platform's own screen is smaller than any that a clerk has.
void useDeskSizedScreen() {
    if (QCoreApplication::instance() != nullptr || qgetenv("QT_QPA_PLATFORM") != "offscreen") return;
    static QTemporaryFile screens;
    if (!screens.open()) return;
    screens.write(R"({"screens":[{"name":"desk","x":0,"y":0,"width":1920,"height":1080,"logicalDpi":96}]})");
    screens.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
}

class Watcher : public QObject {
public:
    explicit Watcher(ScriptBook& book) : book_(book) { qApp->installEventFilter(this); }

    QtMenuPlan menus;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            if (auto* box = qobject_cast<QMessageBox*>(watched)) soon(*box, &Watcher::answerBox);
            if (auto* dialog = qobject_cast<QFileDialog*>(watched)) soon(*dialog, &Watcher::answerDialog);
            if (auto* menu = qobject_cast<QMenu*>(watched)) soon(*menu, &Watcher::answerMenu);
            if (watched->objectName() == QLatin1String("progress") && book_.awaitsCancel())
                watchProgress(*qobject_cast<QDialog*>(watched));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    template <class Widget>
    void soon(Widget& widget, void (Watcher::*answer)(Widget&)) {
        QTimer::singleShot(0, &widget, [this, &widget, answer] {
            if (widget.isVisible()) (this->*answer)(widget);
        });
    }

    void answerBox(QMessageBox& box) {
        if (qobject_cast<QFileDialog*>(box.parentWidget()) != nullptr) {
            answerForDialog(box);
            return;
        }
        const Answer answer = book_.takeAnswer(kindOf(box), textOf(box), box.windowTitle().toStdString());
        QAbstractButton* further = nullptr;
        for (QAbstractButton* each : box.buttons())
            if (box.standardButton(each) == QMessageBox::NoButton) further = each;
        if (answer == Answer::further && further == nullptr) ADD_FAILURE() << "the box has no further button";
        const bool presses = answer == Answer::further && further != nullptr;
        QTest::mouseClick(presses ? further : box.button(buttonOf(answer)), Qt::LeftButton);
    }

    // The dialog's own question belongs to the choice: it replaces the file. A refusal is a box like another.
    void answerForDialog(QMessageBox& box) {
        if (QAbstractButton* yes = box.button(QMessageBox::Yes)) {
            QTest::mouseClick(yes, Qt::LeftButton);
            return;
        }
        book_.takeAnswer(kindOf(box), textOf(box), box.windowTitle().toStdString());
        auto* dialog = qobject_cast<QFileDialog*>(box.parentWidget());
        // The dialog then waits for another name.
        QObject::connect(&box, &QObject::destroyed, dialog, [this, dialog] { soon(*dialog, &Watcher::answerDialog); });
        QTest::mouseClick(box.buttons().constFirst(), Qt::LeftButton);
    }

    void answerDialog(QFileDialog& dialog) {
        const std::string path = book_.takeFile();
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        auto* buttons = dialog.findChild<QDialogButtonBox*>();
        if (path.empty() || name == nullptr || buttons == nullptr) {
            dialog.reject();
            return;
        }
        // As typing does in a window that is active: a row of the list would outdo the name.
        dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"))->clearSelection();
        name->setText(QString::fromStdString(path));
        const bool saves = dialog.acceptMode() == QFileDialog::AcceptSave;
        QTest::mouseClick(buttons->button(saves ? QDialogButtonBox::Save : QDialogButtonBox::Open), Qt::LeftButton);
    }

    void answerMenu(QMenu& menu) {
        if (menus.next == QtMenuPlan::Next::leave) return;
        const QtMenuPlan plan = menus;
        menus = {};
        QAction* entry = nullptr;
        for (QAction* each : menu.actions()) {
            if (each->objectName().toStdString() == plan.entry) entry = each;
        }
        const std::string name = menu.objectName().toStdString();
        if (plan.next == QtMenuPlan::Next::fail) {
            ADD_FAILURE() << "the menu " << name << " popped up without a right click";
        } else if (!plan.entry.empty() && (entry == nullptr || !entry->isVisible() || !entry->isEnabled())) {
            ADD_FAILURE() << "the menu " << name << " popped up and " << plan.entry << " can't be chosen in it";
        } else if (entry != nullptr && !plan.entry.empty()) {
            menu.setActiveAction(entry);
            QTest::keyClick(&menu, Qt::Key_Return);
            return;
        }
        menu.close();
    }

    void watchProgress(QDialog& box) {
        auto* watch = new QTimer(&box);
        QObject::connect(watch, &QTimer::timeout, &box, [this, &box] {
            const auto* bar = box.findChild<QProgressBar*>(QStringLiteral("done"));
            // A bar that only moves tells that all is done.
            const int done = bar->maximum() == 0 ? std::numeric_limits<int>::max() : bar->value();
            if (book_.takeCancel(done))
                QTest::mouseClick(box.findChild<QPushButton*>(QStringLiteral("cancel")), Qt::LeftButton);
        });
        watch->start(0);
    }

    ScriptBook& book_;
};

class QtScript final : public BookedScript {
public:
    QtScript() {
        // The toolkit has taken the environment's locale by now; the host's own comes after it.
        useTestLocale();
        if (!testLocale().empty()) QLocale::setDefault(QLocale(QString::fromStdString(testLocale())));
        toolkit_.setModalObserver([this](Window& window) { run(window); });
        toolkit_.setProgressPace(std::chrono::milliseconds(0), std::chrono::milliseconds(0));
        toolkit_.setDocumentOpener([this](const std::string& path) { book_.addDocument(path); });
    }

    Toolkit& toolkit() override { return toolkit_; }

private:
    void run(Window& window) {
        auto* root = qobject_cast<QMainWindow*>(QApplication::activeModalWidget());
        const auto steps = book_.takeWindow(window.name());
        if (steps && root != nullptr) {
            QtUser user(window, *root, book_, watcher_.menus);
            try {
                (*steps)(user);
            } catch (const QtStepStopped&) {
            } catch (const std::exception& failure) {
                ADD_FAILURE() << "the script of " << window.name() << " failed: " << failure.what();
            }
        }
        if (window.shown() && root != nullptr) root->close();
        if (window.shown()) window.close();  // a cell refuses to be left
    }

    qt::QtToolkit toolkit_;
    Watcher watcher_{book_};
};

}  // namespace

std::unique_ptr<Script> newQtScript() {
    useDeskSizedScreen();
    return std::make_unique<QtScript>();
}

bool grab(const Window& window, const std::string& path) {
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->isVisible() && each->objectName().toStdString() == window.name())
            return each->grab().save(QString::fromStdString(path), "PNG");
    }
    return false;
}

}  // namespace orvenmod::test
