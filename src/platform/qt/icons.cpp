#include "platform/qt/icons.h"

#include <QFile>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

QIcon icon(std::string_view name) {
    const QString path = QStringLiteral(":/orven/icons/%1.svg").arg(toQt(name).toLower());
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

}  // namespace orvenmod::platform::qt
