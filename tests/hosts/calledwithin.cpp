// A host that calls again while a window is open, from a timer of its own.
#include <QTableView>
#include <QTimer>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    std::string again;
    std::string dictionaries;
    std::string designer;
    orvenmod::clsBasicInfo items;
    host::whenNextWindowOpens([&](QMainWindow& window) {
        again = host::failureOf([&] { items.mainInterface(1, "", "", suite.connectionString(), 0); });
        dictionaries = host::failureOf([&] { orvenmod::clsJCZL().mainInterface(suite.connectionString()); });
        designer = host::failureOf([] { orvenmod::clsHSXMManage().mainInterface(); });
        host::pickFirst(window);
    });
    items.mainInterface(3, "", "", suite.connectionString(), 1);
    const std::string told = "组件的窗口已经打开，请先关闭它";
    expect(again == told, "a second call fails: " + again);
    expect(dictionaries == told, "another class's, too: " + dictionaries);
    expect(designer == told, "the designer's, too: " + designer);
    expect(items.fItemClassId == 3 && !items.fNumber.empty(), "the window that was open is as it was");
    expect(host::windowsSeen() == 1, "no other window came");
    expect(!host::pickedCode(suite).empty(), "the next call works");
    return 0;
}
