// Trees on the Qt toolkit, from the entry call until the window has painted them: every node is made visible.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>

#include "benches.h"
#include "frame/services.h"
#include "platform/qt/qttoolkit.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

/// A database with so many classes more of that type: '0' for the designer, '1' for dictionaries.
std::string classesDatabase(const std::string& folder, char type, int classes) {
    const std::string file = folder + "/tree-classes-" + type + std::to_string(classes) + ".db";
    return targetOf(databaseFile(file, [&](store::Connection& connection) {
        connection.beginTrans();
        for (int id = 1; id <= classes; ++id) {
            const std::string text = std::to_string(5000 + id);
            connection.execute("insert into tblItemClass(fItemClassId,fItemName,fItemType) values(" + text + ",'类" +
                               text + "','" + type + "')");
        }
        connection.commitTrans();
    }));
}

/// Milliseconds of this thread from the call to the painted window.
double untilPainted(const std::function<void()>& call) {
    auto* toolkit = dynamic_cast<platform::qt::QtToolkit*>(&services().toolkit);
    if (toolkit == nullptr) throw std::logic_error("shown trees are measured on the Qt toolkit");
    double painted = 0;
    toolkit->setModalObserver([&painted](platform::Window& window) {
        painted = threadMilliseconds();
        window.close();
    });
    double least = std::numeric_limits<double>::max();
    for (int run = 0; run < 3; ++run) {
        const double begin = threadMilliseconds();
        call();
        least = std::min(least, painted - begin);
    }
    toolkit->setModalObserver({});
    return least;
}

double timeDesigner(const std::string& folder, int classes) {
    const std::string target = classesDatabase(folder, '0', classes);
    return untilPainted([&] {
        clsHSXMManage designer;
        designer.DBConnection = target;
        designer.mainInterface();
    });
}

double timeDictionaries(const std::string& folder, int classes) {
    const std::string target = classesDatabase(folder, '1', classes);
    return untilPainted([&] { clsJCZL().mainInterface(target); });
}

double timeCategories(const std::string& folder, int categories) {
    const std::string target = treeDatabase(folder, categories);
    return untilPainted([&] { clsBasicInfo().mainInterface(3, "", "", target, 0); });
}

}  // namespace

void measureShownTrees(Report& report, const std::string& folder) {
    const double fewClasses = timeDesigner(folder, 400);
    const double manyClasses = timeDesigner(folder, 2000);
    report.ratio("designer opened on 2 thousand classes", manyClasses, "0.3 s", 300, 1.0, "ms");
    report.ratio("designer opened on 2 thousand classes", manyClasses, "5 times on 400", 5 * fewClasses, 1.5, "ms");
    report.ratio("dictionaries opened on 2 thousand", timeDictionaries(folder, 2000), "5 times on 400",
                 5 * timeDictionaries(folder, 400), 1.5, "ms");
    report.ratio("browser opened on 10 thousand categories", timeCategories(folder, 10000), "10 times on 1 thousand",
                 10 * timeCategories(folder, 1000), 1.5, "ms");
}

}  // namespace orvenmod::bench
