// Preloaded into a host's process: where the component's list comes, Return picks its first row. A host that links no
// Qt is tried so.
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QTableView>
#include <QTimer>

namespace {

void look() {
    QTimer::singleShot(20, [] {
        look();
        auto* window = qobject_cast<QMainWindow*>(QApplication::activeModalWidget());
        if (window == nullptr || QApplication::overrideCursor() != nullptr) return;
        auto* list = window->findChild<QTableView*>(QStringLiteral("vsf1"));
        if (list == nullptr) return;
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(list, &enter);
    });
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(look)
