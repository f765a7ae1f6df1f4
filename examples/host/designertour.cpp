#include "designertour.h"

namespace orvenmod::sample {
namespace {

constexpr const char* kClass = "60";
constexpr std::int16_t kClassId = 60;

void makeClass(Visitor& dialog) {
    dialog.type("txtType", kClass);
    dialog.type("txt(0)", "设备");
    dialog.picture("new-class", "核算项目新增：类别、名称、表名");
    dialog.expectBox(QMessageBox::Ok, "class-saved", "类别已建立");
    dialog.click("cmdOK");
}

void makeFields(Visitor& dialog) {
    dialog.inputCell("fps1", 1, 2, "重量");
    dialog.pickCell("fps1", 3, 2, "数字");
    dialog.inputCell("fps1", 4, 2, "2");
    dialog.inputCell("fps1", 5, 2, "9999");
    dialog.inputCell("fps1", 6, 2, "0");
    dialog.picture("new-field", "新增明细：一个数字字段");
    dialog.expectBox(QMessageBox::Ok, "field-saved", "字段已保存，可以接着新增");
    dialog.clickTool("Save");
    dialog.boxesDone();
    dialog.inputCell("fps1", 1, 2, "供应商");
    dialog.pickCell("fps1", 9, 2, "供应商");
    dialog.picture("new-lookup", "新增明细：取自另一类别");
    dialog.expectBox(QMessageBox::Ok, "lookup-saved", "又一个字段");
    dialog.clickTool("Save");
}

}  // namespace

void designClasses(Guide& guide) {
    const auto open = [&guide] { guide.suite().designClasses(); };
    guide.play(Guide::kAdministrator, open, "frmHSXM", [&guide](Visitor& visitor) {
        visitor.clickNode("tv1", "货品");
        visitor.picture("classes", "核算项目管理：类别和它的字段");
        guide.within("frmHSXMNew", makeClass);
        visitor.chooseMenu("MenuHSXMNew");
        visitor.clickNode("tv1", "设备");
        guide.within("frmHSXMDetailNew", makeFields);
        visitor.chooseMenu("MenuDetailNew");
        visitor.clickNode("tv1", "设备");
        visitor.pictureMenuOf("vsf1", "fields-menu", "新类别的字段和右键菜单");
        guide.within("frmHSXMDetailSetup", [](Visitor& dialog) {
            dialog.picture("field-setup", "明细信息设置：显示哪些字段，叫什么");
            dialog.expectBox(QMessageBox::Ok, "setup-saved", "设置已保存");
            dialog.clickTool("Save");
        });
        visitor.chooseMenu("MenuDetailSetup");
    });
    guide.play(Guide::kAdministrator, {.itemClass = kClassId},
               [](Visitor& visitor) { visitor.pictureListOf("PC(0)", "own-class", "新类别的列表和查询字段"); });
}

}  // namespace orvenmod::sample
