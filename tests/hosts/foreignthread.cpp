// A host whose QApplication lives on its first thread, and which calls from a second one before any other call.
#include <QApplication>
#include <thread>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main(int argc, char** argv) {
    using host::expect;
    const host::Suite suite;
    const QApplication application(argc, argv);
    std::string made;
    std::thread([&] { made = host::failureOf([] { const orvenmod::clsBasicInfo items; }); }).join();
    expect(made == "组件的窗口只能在创建 QApplication 的线程里打开", "no object is made: " + made);
    expect(!host::pickedCode(suite).empty(), "the thread of the QApplication picks");
    return 0;
}
