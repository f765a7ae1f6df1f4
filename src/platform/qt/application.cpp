#include "platform/qt/application.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QThread>
#include <QTranslator>
#include <array>
#include <clocale>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/qt/chinesetexts.h"
#include "platform/qt/display.h"
#include "platform/qt/style.h"

// Q_INIT_RESOURCE must stand outside any namespace.
static void initIcons() { Q_INIT_RESOURCE(icons); }

namespace orvenmod::platform::qt {

namespace {

constexpr int kFontPixels = 13;

bool applicationIsOurs = false;
int showing = 0;

// The last one installed is asked first: Qt's own texts give a file's size as a volume. Never destroyed, since a host's
// QApplication may be gone before the process's static objects are.
const std::vector<QTranslator*>& chineseTexts() {
    static const auto* texts = [] {
        auto* all = new std::vector<QTranslator*>;
        auto* base = new QTranslator;
        if (base->load(QLocale(QLocale::Chinese, QLocale::China), QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            all->push_back(base);
        all->push_back(new ChineseTexts);
        return all;
    }();
    return *texts;
}

void installTexts() {
    for (QTranslator* texts : chineseTexts())
        QCoreApplication::installTranslator(texts);
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

// Qt takes the locale of the user's environment for the process. The host's own stays, but for the letters' encoding.
class KeptLocale {
public:
    KeptLocale() {
        for (const int category : kKept)
            names_.emplace_back(std::setlocale(category, nullptr));
    }
    ~KeptLocale() {
        for (std::size_t i = 0; i < names_.size(); ++i)
            std::setlocale(kKept[i], names_[i].c_str());
    }
    KeptLocale(const KeptLocale&) = delete;
    KeptLocale& operator=(const KeptLocale&) = delete;

private:
    static constexpr std::array kKept = {LC_NUMERIC, LC_MONETARY, LC_TIME, LC_COLLATE, LC_MESSAGES};
    std::vector<std::string> names_;
};

void makeApplication() {
    const DisplayHold display = requireDisplay();
    static int argumentCount = 1;
    static std::array<char, 8> name = {'o', 'r', 'v', 'e', 'n', '\0'};
    static std::array<char*, 2> arguments = {name.data(), nullptr};
    // Never deleted: windows may be asked for as long as the process lives, and a host without Qt has no place to end
    // it.
    {
        const KeptLocale locale;
        new QApplication(argumentCount, arguments.data());
    }
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(new Style);
    QApplication::setFont(windowFont());
    calmPalette();
    applicationIsOurs = true;
    installTexts();
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
    requireApplication();
    initIcons();
}

void requireApplication() {
    if (QCoreApplication::instance() == nullptr)
        throw std::runtime_error("宿主程序的 QApplication 已经结束，无法显示窗口");
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        throw std::runtime_error("宿主程序建立的不是 QApplication，无法显示窗口");
    if (QThread::currentThread() != QCoreApplication::instance()->thread())
        throw std::runtime_error("组件的窗口只能在创建 QApplication 的线程里打开");
}

ChineseWhileShown::ChineseWhileShown() {
    if (++showing == 1 && !applicationIsOurs) installTexts();
}

ChineseWhileShown::~ChineseWhileShown() {
    if (--showing > 0 || applicationIsOurs) return;
    for (QTranslator* texts : chineseTexts())
        QCoreApplication::removeTranslator(texts);
}

}  // namespace orvenmod::platform::qt
