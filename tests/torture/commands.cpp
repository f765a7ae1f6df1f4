#include "torture/commands.h"

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>

#include <filesystem>
#include <fstream>

#include "dictionary/frmJCZLList.h"
#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "frame/services.h"
#include "hierarchy/itemroutines.h"
#include "store/copy/copy.h"
#include "store/schema.h"
#include "store/upgrade.h"
#include "torture/commandstages.h"
#include "transfer/frmImport.h"
#include "transfer/importtest.h"

namespace orvenmod::test {

namespace {

constexpr const char* kImported = "goods.xlsx";
constexpr int kNameSearch = 3;  // behind code and short code

void inList(Desk& desk, const Steps& steps) {
    desk.onWindow("frmBasicInfoList", steps);
    clsBasicInfo info;
    info.mainInterface(3, "", "", desk.connectionString(), 0);
}

void inDesigner(Desk& desk, const Steps& steps) {
    desk.onWindow("frmHSXM", steps);
    clsHSXMManage manage;
    manage.DBConnection = desk.connectionString();
    manage.mainInterface();
}

void inEditor(Desk& desk, const Steps& steps) {
    desk.onWindow("frmBasicInfo", steps);
    frmBasicInfo::instance().show(nullptr);
}

void addPhotoAndAttachment(User& user) {
    user.chooseTab("SSTab1", 1);
    user.click("cmdAddFJ");
    user.typeCell("fps2", 3, user.control<EntryGrid>("fps2").rowCount(), "附件");
    user.chooseTab("SSTab1", 2);
    user.click("cmdAdd");
}

void list(Desk& desk) {
    inList(desk, [&](User& user) {
        user.clickNode("tv1", "D12");
        user.clickNode("tv1", "D0");
        if (user.control<platform::ListGrid>("vsf1").rowCount() == 5) desk.tell();
    });
}

void search(Desk& desk) {
    inList(desk, [&](User& user) {
        user.pick("PC", kNameSearch, 0);
        user.type("txtSearch", "开关", -1);
        user.click("cmdFind");
        if (user.control<platform::ListGrid>("vsf1").rowCount() == 2) desk.tell();
    });
}

void exportList(Desk& desk) {
    inList(desk, [](User& user) { user.clickTool("Excel"); });
}

void save(Desk& desk) {
    appState().gEditMode = 0;
    appState().gCurParentId = 13;
    inEditor(desk, [](User& user) {
        typeName(user, "垫圈");
        user.pickCell("fps1", kValue, kSupplierRow, 1);
        addPhotoAndAttachment(user);
        user.clickTool("Save");
    });
}

void update(Desk& desk) {
    appState().gEditMode = 1;
    appState().gCurItemId = 101;
    inEditor(desk, [](User& user) {
        typeName(user, "外六角螺丝");
        addPhotoAndAttachment(user);
        user.clickTool("Save");
    });
}

void newCategory(Desk& desk) {
    desk.onWindow("frmParent", [](User& dialog) {
        dialog.type("txt", "07", 1);
        dialog.type("txt", "灯具", 0);
        dialog.click("cmdOperate");
    });
    inList(desk, [](User& user) {
        user.clickNode("tv1", "D14");
        user.click("cmdAddType");
    });
}

void move(Desk& desk) {
    desk.onWindow("frmParent", [](User& dialog) {
        dialog.pick("cmb", dialog.control<platform::Combo>("cmb", 0).rowCount() - 1, 0);
        dialog.type("txt", "螺钉", 0);
        dialog.type("txt", "09", 1);
        dialog.click("cmdOperate");
    });
    inList(desk, [](User& user) {
        user.clickNode("tv1", "D13");
        user.chooseMenu("MenuParentEditUpdate");
    });
}

void import(Desk& desk) {
    importFile(desk, desk.file(kImported), [&](User& user) {
        user.click("cmdNext");
        const std::string result = caption(user, "lblResult");
        if (result == "新增 2 行，修改 0 行，拒绝 0 行。") {
            desk.tell();
        } else if (!result.empty()) {
            desk.hear(result);
        }
    });
}

/// The first of the list, whose attachments go with it.
void deleteItem(Desk& desk) {
    inList(desk, [](User& user) {
        user.selectRow("vsf1", 1);
        user.chooseMenu("MenuEditDelete");
    });
}

// No menu of the list leads to it.
void lockItem(Desk& desk) {
    appState().gCurItemId = 101;
    if (lockDetail()) desk.tell();
}

void setUp(Desk& desk) {
    inFieldSetup(desk, "50", [](User& dialog) {
        dialog.clickCell("fps1", 2, 4);
        dialog.clickTool("Save");
    });
}

void createSchema(Desk& desk) {
    store::createSchema(*services().store.connect(desk.connectionString() + ";Mode=Create"));
    desk.tell();
}

void upgradeSchema(Desk& desk) {
    store::upgradeSchema(*services().store.connect(desk.connectionString()));
    desk.tell();
}

void copySuite(Desk& desk) {
    const auto source = services().store.connect(connectionStringFor(suiteFile()) + ";Mode=ReadOnly");
    const auto target = services().store.connect(desk.connectionString() + ";Mode=Create");
    store::copySuite(*source, *target);
    desk.tell();
}

void newEntry(Desk& desk) {
    desk.onWindow("frmJCZL", [](User& dialog) {
        dialog.type("txt", "09", 0);
        dialog.type("txt", "钢", 1);
        dialog.click("cmdOK");
    });
    inDictionary(desk, [](User& user) { user.click("cmd", 1); });
}

void deleteEntry(Desk& desk) {
    inDictionary(desk, [](User& user) {
        user.selectRow("vsf1", 1);
        user.click("cmd", 3);
    });
}

}  // namespace

void importFile(Desk& desk, const std::string& file, const Steps& then) {
    NotedListWindow behind;
    desk.onWindow("frmImport", [&](User& user) {
        toCheck(user, file);
        then(user);
    });
    frmImport::instance().show(behind);
}

void makeClass(Desk& desk, const std::string& id, const std::string& name) {
    desk.onWindow("frmHSXMNew", [&](User& dialog) {
        dialog.type("txtType", id, -1);
        dialog.type("txt", name, 0);
        dialog.click("cmdOK", -1);
    });
    inDesigner(desk, [](User& user) { user.chooseMenu("MenuHSXMNew"); });
}

void makeField(Desk& desk, const std::string& itemClass, const std::string& name, int lookup) {
    desk.onWindow("frmHSXMDetailNew", [&](User& dialog) {
        dialog.typeCell("fps1", 2, 1, name);
        dialog.pickCell("fps1", 2, 3, 0);
        dialog.pickCell("fps1", 2, 8, 0);
        dialog.pickCell("fps1", 2, 9, lookup);
        dialog.clickTool("Save");
    });
    inDesigner(desk, [&](User& user) {
        user.clickNode("tv1", "D" + itemClass);
        user.chooseMenu("MenuDetailNew");
    });
}

void inFieldSetup(Desk& desk, const std::string& itemClass, const Steps& steps) {
    desk.onWindow("frmHSXMDetailSetup", steps);
    inDesigner(desk, [&](User& user) {
        user.clickNode("tv1", "D" + itemClass);
        user.chooseMenu("MenuDetailSetup");
    });
}

void inDictionary(Desk& desk, const Steps& steps) {
    appState().gItemClassId = 501;
    appState().gRightPrefix = "Z";
    desk.onWindow("frmJCZLList", steps);
    frmJCZLList::instance().show();
}

const std::vector<Command>& windowCommands() {
    static const std::vector<Command> all = {
        {.name = "list", .act = list, .changes = false},
        {.name = "search", .act = search, .changes = false},
        {.name = "export", .success = "导出成功!", .act = exportList, .changes = false},
        {.name = "save", .success = "数据保存成功!", .act = save},
        {.name = "import", .act = import},
        {.name = "update", .success = "数据修改成功!", .act = update},
        {.name = "newCategory", .success = "数据保存成功！", .act = newCategory},
        {.name = "move", .success = "数据保存成功！", .act = move},
        {.name = "delete", .success = "数据删除成功！", .act = deleteItem},
        {.name = "lock", .act = lockItem},
        {.name = "newClass", .success = "数据保存成功！", .act = [](Desk& desk) { makeClass(desk, "51", "车辆"); }},
        {.name = "newField", .success = "数据保存成功!", .act = [](Desk& desk) { makeField(desk, "50", "客户", 1); }},
        {.name = "setup", .success = "数据保存成功!", .act = setUp},
        {.name = "newEntry", .success = "数据保存成功！", .act = newEntry},
        {.name = "deleteEntry", .success = "数据删除成功！", .act = deleteEntry}};
    return all;
}

const std::vector<Command>& schemaCommands() {
    static const std::vector<Command> all = {
        {.name = "createSchema", .act = createSchema, .on = Command::On::nothing},
        {.name = "upgradeSchema", .act = upgradeSchema, .on = Command::On::firstVersion},
        {.name = "copySuite", .act = copySuite, .on = Command::On::nothing}};
    return all;
}

std::vector<Command> allCommands() {
    std::vector<Command> all = windowCommands();
    all.insert(all.end(), schemaCommands().begin(), schemaCommands().end());
    return all;
}

std::string databaseIn(const std::string& folder) { return folder + "/suite.db"; }

void layOut(const Command& command, const std::string& folder) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/photo.bmp", std::ios::binary) << redBitmap();
    if (!std::filesystem::exists(folder + "/" + kImported)) {
        makeWorkbook(folder + "/" + kImported, {{"短代码", "名称", "所属分类", "主供应商", "最低库存"},
                                                {"008", "平垫", "五金", "01", "12"},
                                                {"009", "弹垫", "五金", "02", "1.5"}});
    }
    // Made before the play, which a copy of it is a part of.
    const std::string& suite = suiteFile();
    if (command.on == Command::On::nothing) return;
    std::filesystem::copy_file(command.on == Command::On::suite ? suite : firstVersionFile(), databaseIn(folder),
                               std::filesystem::copy_options::overwrite_existing);
}

}  // namespace orvenmod::test
