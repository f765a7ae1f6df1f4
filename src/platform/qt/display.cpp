#include "platform/qt/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QStringList>
#include <algorithm>
#include <stdexcept>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

constexpr const char* kWindows = "xcb";
constexpr const char* kWayland = "wayland";

QStringList pluginFolders() {
    QStringList folders{qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH")};
    for (const QString& path : QCoreApplication::libraryPaths())
        folders << path + QStringLiteral("/platforms");
    folders.removeAll(QString());
    return folders;
}

bool isInstalled(const QString& platform) {
    const auto named = [&platform](const QJsonValue& key) {
        return key.toString().compare(platform, Qt::CaseInsensitive) == 0;
    };
    for (const QString& folder : pluginFolders()) {
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
            const QJsonObject data = QPluginLoader(file.filePath()).metaData();
            const QJsonArray keys =
                data.value(QLatin1String("MetaData")).toObject().value(QLatin1String("Keys")).toArray();
            if (std::any_of(keys.begin(), keys.end(), named)) return true;
        }
    }
    return false;
}

// With its handshake: a server may be there and refuse.
bool isWindowServerReached(DisplayHold& hold) {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    hold = DisplayHold(connection, [connection](void*) { xcb_disconnect(connection); });
    return xcb_connection_has_error(connection) == 0;
}

bool isWaylandReached() {
    QString path = qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0"));
    if (!path.startsWith(QLatin1Char('/'))) path = qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1Char('/') + path;
    const QByteArray name = path.toLocal8Bit();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) return false;
    std::copy(name.begin(), name.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) return false;
    const bool reached = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return reached;
}

QStringList platforms() {
    QStringList named;
    for (const QString& each : qEnvironmentVariable("QT_QPA_PLATFORM").split(QLatin1Char(';'), Qt::SkipEmptyParts))
        named << each.section(QLatin1Char(':'), 0, 0);
    if (!named.isEmpty()) return named;
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) named << QString::fromLatin1(kWayland);
    return named << QString::fromLatin1(kWindows);
}

/// "" where windows can be shown on the platform, else what stands in the way.
QString hindrance(const QString& platform, DisplayHold& hold) {
    if (!isInstalled(platform)) return QStringLiteral("没有安装 QT_QPA_PLATFORM 的插件：") + platform;
    if (platform == QLatin1String(kWindows)) {
        if (qEnvironmentVariableIsEmpty("DISPLAY")) return QStringLiteral("环境变量 DISPLAY 未设置");
        if (!isWindowServerReached(hold)) return QStringLiteral("连不上 DISPLAY=") + qEnvironmentVariable("DISPLAY");
    }
    if (platform.startsWith(QLatin1String(kWayland)) && !isWaylandReached())
        return QStringLiteral("连不上 WAYLAND_DISPLAY=") + qEnvironmentVariable("WAYLAND_DISPLAY");
    return {};
}

}  // namespace

DisplayHold requireDisplay() {
    QString last;
    for (const QString& platform : platforms()) {
        DisplayHold hold;
        last = hindrance(platform, hold);
        if (last.isEmpty()) return hold;
    }
    throw std::runtime_error("没有可用的显示：" + fromQt(last));
}

}  // namespace orvenmod::platform::qt
