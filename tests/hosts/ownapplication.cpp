// A host with a QApplication of its own: what it set stays as it was.
#include <QApplication>
#include <QLabel>
#include <QStyleFactory>
#include <QTranslator>

#include "hosts/hostprogram.h"

namespace {

/// The host's own texts, for all that Qt says.
class HostTexts : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char*, const char*, int) const override { return QStringLiteral("host"); }
};

}  // namespace

int main(int argc, char** argv) {
    using host::expect;
    const host::Suite suite;
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Windows")));
    const QStyle* style = QApplication::style();
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, Qt::darkGreen);
    QApplication::setPalette(palette);
    QFont font = QApplication::font();
    font.setPixelSize(19);
    QApplication::setFont(font);
    HostTexts texts;
    QCoreApplication::installTranslator(&texts);
    bool ended = false;
    QObject::connect(&application, &QApplication::lastWindowClosed, [&ended] { ended = true; });
    QLabel window(QStringLiteral("host"));
    window.show();

    for (const bool visible : {true, false}) {
        window.setVisible(visible);
        expect(!host::pickedCode(suite).empty(), "an item is picked");
        expect(window.isVisible() == visible, "the host's window is as it was");
    }
    QCoreApplication::processEvents();
    expect(QApplication::style() == style, "the style is the host's");
    expect(QApplication::palette() == palette, "the palette is the host's");
    expect(QApplication::font() == font, "the font is the host's");
    expect(QCoreApplication::translate("QPlatformTheme", "OK") == QLatin1String("host"), "the texts are the host's");
    expect(QApplication::quitOnLastWindowClosed(), "the rule for the last window is the host's");
    expect(!ended, "the component's window isn't the last one of the host");
    return 0;
}
