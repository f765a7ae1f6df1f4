#include "itemtour.h"

namespace orvenmod::sample {

void keepItems(Guide& guide) {
    guide.play(Guide::kAdministrator, {}, [&guide](Visitor& visitor) {
        visitor.clickNode("tv1", "中性笔");
        guide.within("frmBasicInfo", [](Visitor& editor) {
            editor.inputCell("fps1", 3, 2, "示例中性笔");
            editor.pickCell("fps1", 15, 2, "文华制笔厂");
            editor.picture("new-item", "新增货品：代码已经排好");
            editor.expectBox(QMessageBox::Ok, "item-saved", "已保存，可以接着新增");
            editor.clickTool("Save");
        });
        visitor.chooseMenu("MenuEditNew");
        visitor.clickRow("vsf1", 2);
        guide.within("frmBasicInfo", [](Visitor& editor) {
            editor.picture("change-item", "修改货品");
            editor.chooseTab("SSTab1", 1);
            editor.picture("attachments", "附件");
            editor.chooseTab("SSTab1", 2);
            editor.picture("photo", "物料图片");
        });
        visitor.chooseMenu("MenuEditUpdate");
        visitor.clickRow("vsf1", 1);
        visitor.expectBox(QMessageBox::Yes, "delete-box", "删除前先问");
        visitor.expectBox(QMessageBox::Ok, "refused-delete", "单据里用过的货品不能删除");
        visitor.chooseMenu("MenuEditDelete");
    });
}

void keepCategories(Guide& guide) {
    guide.play(Guide::kAdministrator, {}, [&guide](Visitor& visitor) {
        visitor.clickNode("tv1", "五金工具");
        guide.within("frmParent", [](Visitor& dialog) {
            dialog.type("txt(1)", "09");
            dialog.type("txt(0)", "测量工具");
            dialog.picture("new-category", "新增分类：上级和代码");
            dialog.expectBox(QMessageBox::Ok, "category-saved", "分类已保存");
            dialog.click("cmdOperate");
        });
        visitor.chooseMenu("MenuParentEditNew");
        visitor.clickNode("tv1", "五金工具");
        guide.within("frmParent", [](Visitor& dialog) {
            dialog.pick("cmb(0)", "   手动工具(02.01)");
            dialog.type("txt(1)", "90");
            dialog.picture("change-category", "修改分类：换上级、改代码");
            dialog.expectBox(QMessageBox::Ok, "refused-move", "不能移到自己的下级");
            dialog.click("cmdOperate");
        });
        visitor.chooseMenu("MenuParentEditUpdate");
    });
}

void printItems(Guide& guide, const std::string& folder) {
    guide.play(Guide::kAdministrator, {}, [&guide, &folder](Visitor& visitor) {
        visitor.clickNode("tv1", "书写工具");
        visitor.expectDialog("preview", "preview", "打印预览");
        visitor.clickTool("Preview");
        visitor.boxesDone();
        guide.printTo(folder + "/goods.pdf");
        visitor.clickTool("Print");
        guide.printTo("");
    });
}

void keepDictionaries(Guide& guide) {
    const auto open = [&guide] { guide.suite().keepDictionaries(); };
    guide.play(Guide::kAdministrator, open, "frmJCBasicInfo", [&guide](Visitor& visitor) {
        visitor.clickNode("tv1", "计量单位(201)");
        guide.within("frmJCZL", [](Visitor& dialog) {
            dialog.type("txt(0)", "91");
            dialog.type("txt(1)", "托盘");
            dialog.picture("new-entry", "新增明细资料");
            dialog.expectBox(QMessageBox::Ok, "entry-saved", "明细已保存");
            dialog.click("cmdOK");
        });
        visitor.chooseMenu("MenuJCZLNew");
        guide.within("frmJCZLType", [](Visitor& dialog) {
            dialog.type("txt1", "90");
            dialog.type("txt", "包装方式");
            dialog.picture("new-dictionary", "新增资料类别");
            dialog.expectBox(QMessageBox::Ok, "dictionary-saved", "类别已保存");
            dialog.click("cmdOK");
        });
        visitor.chooseMenu("MenuJCZLNew1");
        visitor.clickNode("tv1", "计量单位(201)");
        visitor.picture("dictionaries", "基础资料：类别和明细");
    });
    guide.play(
        Guide::kAdministrator, [&guide] { guide.suite().pickDictionary(201); }, "frmJCZLList",
        [](Visitor& visitor) {
            visitor.picture("dictionary-picker", "选取一条基础资料");
            visitor.doubleClickRow("vsf1", 3);
        });
    guide.pictureSuite("dictionary-picked", "选取后：主程序读到的属性");
}

}  // namespace orvenmod::sample
