// A host that deletes its QApplication and calls again: a clear failure each time, until it has made another.
#include <QApplication>
#include <memory>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main(int argc, char** argv) {
    using host::expect;
    const host::Suite suite;
    auto application = std::make_unique<QApplication>(argc, argv);
    orvenmod::clsBasicInfo items;
    expect(!host::pickedCode(suite).empty(), "an item is picked");

    application.reset();
    const std::string told = "宿主程序的 QApplication 已经结束，无法显示窗口";
    const std::string made = host::failureOf([] { const orvenmod::clsBasicInfo more; });
    expect(made == told, "no object is made: " + made);
    const std::string called = host::failureOf([&] { items.mainInterface(3, "", "", suite.connectionString(), 1); });
    expect(called == told, "no window opens: " + called);

    application = std::make_unique<QApplication>(argc, argv);
    expect(!host::pickedCode(suite).empty(), "an item is picked again");
    expect(host::windowsSeen() == 2, "two windows in all");
    return 0;
}
