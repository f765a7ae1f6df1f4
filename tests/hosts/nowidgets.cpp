// A host whose application object can show no windows: it is told so, and lives.
#include <QCoreApplication>
#include <stdexcept>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main(int argc, char** argv) {
    const host::Suite suite;
    const QCoreApplication application(argc, argv);
    for (int time = 0; time < 2; ++time) {
        std::string told;
        try {
            const orvenmod::clsBasicInfo items;
        } catch (const std::runtime_error& failure) {
            told = failure.what();
        }
        host::expect(told == "宿主程序建立的不是 QApplication，无法显示窗口", "it is told why: " + told);
    }
    return 0;
}
