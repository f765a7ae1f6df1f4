#include "support/qt_output.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <array>
#include <cstdio>

namespace orvenmod::test {

namespace {

// A font's radicals share their pictures with letters, which a reader can't tell apart.
QString withoutRadicals(const QString& text) {
    static const QString radicals = QStringLiteral("⻅⻆⻉⻋⻓⻔⻘⻙⻚⻛⻜⻝⻢⻣⻥⻦⻨⻩⻬⻮⻰⻳");
    static const QString letters = QStringLiteral("见角贝车长门青韦页风飞食马骨鱼鸟麦黄齐齿龙龟");
    QString plain = text.normalized(QString::NormalizationForm_KC);
    for (QChar& letter : plain) {
        if (const auto at = radicals.indexOf(letter); at >= 0) letter = letters[at];
    }
    return plain;
}

}  // namespace

void onDialog(const char* name, const std::function<void()>& open, const std::function<void(QDialog&)>& steps) {
    bool played = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (played || dialog == nullptr || dialog->objectName() != QLatin1String(name)) return;
        played = true;
        watch.stop();
        steps(*dialog);
        if (dialog->isVisible()) dialog->reject();
    });
    watch.start(5);
    open();
    EXPECT_TRUE(played) << "no dialog " << name;
}

void pressAction(QDialog& dialog, const char* action) {
    auto* found = dialog.findChild<QAction*>(QString::fromLatin1(action));
    ASSERT_NE(found, nullptr) << action;
    EXPECT_TRUE(found->isEnabled()) << action;
    found->trigger();
}

std::string pdfText(const std::string& file) {
    std::string text;
    FILE* output = ::popen(("pdftotext -layout '" + file + "' - 2>&1").c_str(), "r");
    std::array<char, 4096> buffer{};
    while (output != nullptr && std::fgets(buffer.data(), buffer.size(), output) != nullptr)
        text += buffer.data();
    EXPECT_TRUE(output != nullptr && ::pclose(output) == 0) << text;
    return withoutRadicals(QString::fromStdString(text)).toStdString();
}

}  // namespace orvenmod::test
