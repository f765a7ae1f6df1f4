#include "tour.h"

#include <QTemporaryDir>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include <orvenmod/statements.h>

#include "designertour.h"
#include "guide.h"
#include "importtour.h"
#include "itemtour.h"
#include "suitewindow.h"
#include "upgradeoffer.h"
#include "visitor.h"

namespace orvenmod::sample {
namespace {

// The suite asks at its start, so the tour ages a database of its own: the earliest ones had no note of their version.
void upgradeOlder(Album& album) {
    const QTemporaryDir files;
    const std::string file = files.filePath(QStringLiteral("older.db")).toStdString();
    const Suite older(file);
    older.create(1);
    Statements("Provider=SQLite;Data Source=" + file).execute("drop table tblOrvenmodVersion");
    std::string other;
    const QObject asker;
    answerBox(asker, album, QMessageBox::Yes, "upgrade-box", "数据库由较早的版本建立：打开前先问",
              [&other](const std::string& text) { other = text; });
    if (!isReadyToOpen(older) || older.age() != DatabaseAge::present)
        throw std::runtime_error("the older database wasn't upgraded: " + other);
}

void manageGoods(Guide& guide) {
    guide.play(Guide::kAdministrator, {}, [](Visitor& visitor) {
        visitor.picture("management", "货品管理：分类、查询条件、列表");
        visitor.clickNode("tv1", "五金工具");
        visitor.picture("category", "点了一个分类：列表只剩它和下级的货品");
        visitor.pictureMenuOf("vsf1", "list-menu", "列表的右键菜单");
        visitor.pictureMenuOf("tv1", "tree-menu", "分类的右键菜单");
        visitor.pictureListOf("PC(0)", "search-fields", "可以查询的字段");
        visitor.pick("PC(0)", "名称");
        visitor.pick("PC(1)", "包含");
        visitor.type("txtSearch", "开关");
        visitor.click("cmdFind");
        visitor.picture("search-text", "名称 包含 “开关”");
        visitor.pick("PC(0)", "参考售价");
        visitor.pick("PC(1)", "大于");
        visitor.type("txtSearch", "100");
        visitor.click("cmdFind");
        visitor.picture("search-number", "参考售价 大于 100");
        visitor.pick("PC(0)", "建档日期");
        visitor.pick("PC(1)", "大于等于");
        visitor.setDate("dtp", 2023, 6, 1);
        visitor.click("cmdFind");
        visitor.picture("search-date", "建档日期 大于等于 2023-06-01");
        visitor.pick("PC(0)", "名称");
        visitor.pick("PC(1)", "等于");
        visitor.type("txtSearch", "3'");
        visitor.expectBox(QMessageBox::Ok, "failure-box", "查询内容里有引号：数据库的原话");
        visitor.click("cmdFind");
    });
}

void managePartners(Guide& guide) {
    guide.play(Guide::kAdministrator, {.itemClass = 1},
               [](Visitor& visitor) { visitor.picture("customers", "客户管理：应收款"); });
    guide.play(Guide::kAdministrator, {.itemClass = 2},
               [](Visitor& visitor) { visitor.picture("suppliers", "供应商管理：应付款"); });
    guide.play(Guide::kAdministrator, {.itemClass = 11},
               [](Visitor& visitor) { visitor.picture("accounts", "账户管理：账号余额"); });
}

void pickGoods(Guide& guide) {
    guide.play(Guide::kAccountant, {.openAs = OpenAs::picker, .find = "灯", .onlyInStock = true}, [](Visitor& visitor) {
        visitor.picture("picker", "选取货品：查找“灯”，只看有库存的");
        visitor.clickRow("vsf1", 3);
        visitor.keyOnGrid("vsf1", Qt::Key_Return);
        visitor.closed();
    });
    guide.pictureSuite("picked", "选取后：主程序读到的属性");
}

void pickForBill(Guide& guide) {
    guide.play(Guide::kAccountant, {.openAs = OpenAs::billPicker}, [](Visitor& visitor) {
        // From the list by Enter, then through the search; the mouse lies still.
        for (const char* quantity : {"120", "24.5", "60"}) {
            visitor.press("Return");
            visitor.typeKeys(quantity);
            visitor.press("Return");
        }
        visitor.typeKeys("白板笔");
        visitor.press("Return");
        visitor.press("Return");
        visitor.press("Down");
        visitor.press("Return");
        visitor.typeKeys("36");
        visitor.picture("bill-keys", "选单据物料：只用键盘，回车选货，输入数量");
        visitor.press("Return");
        visitor.picture("bill-picker", "选单据物料：回车后接着选下一个");
        visitor.expectBox(QMessageBox::No, "again-box", "同一货品再选一次：先问");
        visitor.doubleClickRow("vsf1", 2);
        visitor.boxesDone();
        visitor.expectBox(QMessageBox::No, "remove-box", "移除前先问");
        visitor.click("cmdRemoveItem");
        visitor.boxesDone();
        visitor.press("Alt+A");
        visitor.closed();
    });
    guide.pictureSuite("bill", "添加到单据后：tblItemInput 的行");
}

void workWithFewRights(Guide& guide) {
    guide.play(Guide::kJunior, {}, [](Visitor& visitor) {
        visitor.picture("plain-user", "小李：看不到参考进价和主供应商");
        visitor.expectBox(QMessageBox::Ok, "refused-box", "小李无权修改货品");
        visitor.click("cmdUpdateDetail");
    });
    guide.play(Guide::kStorekeeper, {},
               [](Visitor& visitor) { visitor.picture("standing-condition", "王仓管：只看五金和电料"); });
}

}  // namespace

int playTour(SuiteWindow& window, const std::string& folder) {
    try {
        std::filesystem::create_directories(folder);
        Album album(folder);
        Guide guide(window, album);
        upgradeOlder(album);
        window.show();
        guide.pictureSuite("suite", "示例主程序");
        manageGoods(guide);
        managePartners(guide);
        pickGoods(guide);
        pickForBill(guide);
        workWithFewRights(guide);
        keepItems(guide);
        arrangeItems(guide);
        keepCategories(guide);
        bringGoodsIn(guide);
        exportItems(guide, folder);
        printItems(guide, folder);
        designClasses(guide);
        keepDictionaries(guide);
        std::cout << album.list();
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "the tour stopped: " << failure.what() << '\n';
        return 1;
    }
}

}  // namespace orvenmod::sample
