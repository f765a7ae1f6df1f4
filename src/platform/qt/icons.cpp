#include "platform/qt/icons.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

// One for all windows: Qt keeps what it has drawn of each icon under a number of that icon's own.
QIcon icon(std::string_view name) {
    static QHash<QString, QIcon> icons;
    if (icons.isEmpty()) qAddPostRoutine([] { icons.clear(); });
    const QString path = QStringLiteral(":/orven/icons/%1.svg").arg(toQt(name).toLower());
    const auto found = icons.constFind(path);
    return found != icons.constEnd() ? *found : *icons.insert(path, QFile::exists(path) ? QIcon(path) : QIcon());
}

}  // namespace orvenmod::platform::qt
