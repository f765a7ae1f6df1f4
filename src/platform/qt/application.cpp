#include "platform/qt/application.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QSysInfo>
#include <QTranslator>
#include <array>
#include <stdexcept>

#include "platform/qt/chinesetexts.h"
#include "platform/qt/style.h"

// Q_INIT_RESOURCE must stand outside any namespace.
static void initIcons() { Q_INIT_RESOURCE(icons); }

namespace orvenmod::platform::qt {

namespace {

constexpr int kFontPixels = 13;

void installTexts() {
    static bool installed = false;
    if (installed) return;
    installed = true;
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    auto* base = new QTranslator(qApp);
    if (base->load(chinese, QStringLiteral("qtbase"), QStringLiteral("_"),
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(base);
    // The last one installed is asked first: Qt's own texts give a file's size as a volume.
    QCoreApplication::installTranslator(new ChineseTexts(qApp));
}

// A desktop's dark palette stays; the light one is calmed.
void calmPalette() {
    QPalette palette = QApplication::palette();
    if (palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()) return;
    palette.setColor(QPalette::Window, QColor(0xF2, 0xF4, 0xF7));
    palette.setColor(QPalette::Button, QColor(0xF7, 0xF8, 0xFA));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF6, 0xF8, 0xFB));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB7));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QApplication::setPalette(palette);
}

// Without a display Qt would end the whole process.
void requireDisplay() {
    const bool linuxDesktop = QSysInfo::kernelType() == QLatin1String("linux");
    const auto given = [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); };
    if (linuxDesktop && !given("DISPLAY") && !given("WAYLAND_DISPLAY") && !given("QT_QPA_PLATFORM"))
        throw std::runtime_error("没有可用的显示：环境变量 DISPLAY 未设置");
}

void makeApplication() {
    requireDisplay();
    static int argumentCount = 1;
    static std::array<char, 8> name = {'o', 'r', 'v', 'e', 'n', '\0'};
    static std::array<char*, 2> arguments = {name.data(), nullptr};
    // Never deleted: windows may be asked for as long as the process lives, and a host without Qt has no place to end
    // it.
    new QApplication(argumentCount, arguments.data());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(new Style);
    QApplication::setFont(windowFont());
    calmPalette();
}

}  // namespace

QFont windowFont() {
    static const QFont font = [] {
        QFont chosen = QApplication::font();
        const QStringList families = QFontDatabase::families();
        for (const char* family : {"Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei UI", "PingFang SC",
                                   "WenQuanYi Micro Hei", "WenQuanYi Zen Hei", "SimSun"}) {
            if (!families.contains(QLatin1String(family))) continue;
            chosen = QFont(QLatin1String(family));
            break;
        }
        // In pixels, as the places of the controls are: whoever wants it larger scales the whole.
        chosen.setPixelSize(kFontPixels);
        return chosen;
    }();
    return font;
}

void ensureApplication() {
    if (QCoreApplication::instance() == nullptr) makeApplication();
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        throw std::logic_error("the host's QCoreApplication can't show windows: it must be a QApplication");
    initIcons();
    installTexts();
}

}  // namespace orvenmod::platform::qt
