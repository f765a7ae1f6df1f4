#include "platform/qt/text.h"

#include <QRegularExpression>

namespace orvenmod::platform::qt {

QString spokenCaption(QString caption) {
    static const QRegularExpression bracketed(QStringLiteral("\\(&.\\)"));
    caption.remove(bracketed);
    caption.remove(QLatin1Char('&'));
    while (caption.endsWith(QLatin1Char(':')) || caption.endsWith(QChar(0xFF1A)))
        caption.chop(1);
    return caption.trimmed();
}

}  // namespace orvenmod::platform::qt
