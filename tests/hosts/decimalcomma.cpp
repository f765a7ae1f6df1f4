// A host whose locale has a decimal comma: it keeps its locale, and what the user picks has the numbers that he typed.
#include <clocale>
#include <cstdio>
#include <string>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/statements.h>

#include "hosts/hostprogram.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

namespace {

std::string half() {
    std::string text(8, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.1f", 0.5)));
    return text;
}

void type(QMainWindow& window, const char* text) {
    for (const char* letter = text; *letter != '\0'; ++letter) {
        QTest::keyClick(window.focusWidget(), *letter);
    }
}

void enter(QMainWindow& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Return); }

}  // namespace

int main() {
    using host::expect;
    expect(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr, "the locale is there");
    // Others may have another one; the host's counts.
    expect(half() == "0,5", "the host writes a comma");
    const host::Suite suite;
    orvenmod::clsBasicInfo items;
    host::whenNextWindowOpens([](QMainWindow& window) {
        enter(window);
        type(window, "24.5");
        enter(window);
        QTest::keyClick(&window, Qt::Key_A, Qt::AltModifier);
        const auto* button = window.findChild<QPushButton*>("cmdAddItem");
        expect(QTest::qWaitFor([button] { return button == nullptr || !button->isDown(); }),
               "the button comes up again");
    });
    items.mainInterface(3, "", "", suite.connectionString(), 1, std::int16_t{1});
    expect(items.fItemId == "-1", "a bill was filled");
    orvenmod::Statements statements(suite.connectionString());
    const std::string quantity = statements.open("select fQty from tblItemInput").text("fQty");
    expect(quantity.rfind("24.5", 0) == 0, "the quantity is " + quantity);
    expect(half() == "0,5", "the host goes on writing a comma");
    return 0;
}
