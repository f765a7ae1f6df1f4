#include "itemtour.h"

#include <QTemporaryDir>

#include "samplefiles.h"

namespace orvenmod::sample {

namespace {

constexpr int kNameRow = 3;
constexpr int kModelRow = 4;
constexpr int kMinQtyRow = 6;
constexpr int kDayRow = 13;
constexpr int kSupplierRow = 15;
constexpr int kAttachments = 1;
constexpr int kPhoto = 2;

struct Document {
    const char* file;
    const char* text;
    const char* caption;
};

constexpr Document kDocuments[] = {
    {"检验报告.txt", "书写长度 800 米，符合要求。", "检验报告"},
    {"报价单.txt", "0.5mm 黑，每支 0.95 元，1200 支起。", "厂家报价"},
};

void attachDocuments(Visitor& editor, const QTemporaryDir& files) {
    int row = 0;
    for (const Document& document : kDocuments) {
        editor.chooseFile(files.filePath(document.file));
        editor.click("cmdAddFJ");
        editor.inputCell("fps2", ++row, 3, document.caption);
    }
}

void mistype(Visitor& editor) {
    editor.clickCell("fps1", kMinQtyRow, 2);
    editor.typeKeys("-20");
    editor.press("Return");
    editor.pictureRefusal("fps1", "refused-number", "最低库存不能是负数：先改好，或按 Esc 还原");
    editor.press("Esc");
    editor.clickCell("fps1", kSupplierRow, 2);
    editor.typeKeys("制笔");
    editor.picture("supplier-list", "输入几个字就找到供应商");
    editor.press("Esc");
    editor.clickCell("fps1", kSupplierRow, 2);
    editor.typeKeys("瑞丰");
    editor.press("Tab");
    editor.pictureRefusal("fps1", "refused-supplier", "两家供应商都叫“瑞丰”：不会替人选一家");
    editor.press("Esc");
    editor.press("F4");
    editor.picture("doubled-suppliers", "打开列表：同名的供应商带代码");
    editor.press("Esc");
}

void addPen(Visitor& editor, const QTemporaryDir& files) {
    editor.inputCell("fps1", kNameRow, 2, "示例中性笔");
    editor.inputCell("fps1", kModelRow, 2, "0.5mm 黑");
    editor.inputCell("fps1", kDayRow, 2, "2024-06-07");
    editor.pickCell("fps1", kSupplierRow, 2, "文华制笔厂");
    editor.picture("new-item", "新增货品：代码已经排好");
    editor.pictureCalendar("fps1", kDayRow, 2, "calendar", "日期可以从日历里挑");
    mistype(editor);
    editor.chooseTab("SSTab1", kAttachments);
    attachDocuments(editor, files);
    editor.picture("new-attachments", "新增货品：两个附件");
    editor.chooseTab("SSTab1", kPhoto);
    editor.chooseFile(files.filePath("中性笔.jpg"));
    editor.click("cmdAdd");
    editor.picture("new-photo", "新增货品：图片");
    editor.expectBox(QMessageBox::Ok, "item-saved", "已保存，可以接着新增");
    editor.clickTool("Save");
    editor.boxesDone();
    editor.chooseTab("SSTab1", 0);
    editor.picture("next-item", "接着新增：分类不变，代码排到下一个");
}

void showPen(Visitor& editor) {
    editor.picture("change-item", "修改货品");
    editor.chooseTab("SSTab1", kAttachments);
    editor.picture("attachments", "附件");
    editor.chooseTab("SSTab1", kPhoto);
    editor.picture("photo", "物料图片");
}

}  // namespace

void keepItems(Guide& guide) {
    const QTemporaryDir files;
    drawPhoto(files.filePath("中性笔.jpg"));
    for (const Document& document : kDocuments)
        writeDocument(files.filePath(document.file), document.text);
    guide.play(Guide::kAdministrator, {}, [&guide, &files](Visitor& visitor) {
        visitor.clickNode("tv1", "中性笔");
        guide.within("frmBasicInfo", [&files](Visitor& editor) { addPen(editor, files); });
        visitor.chooseMenu("MenuEditNew");
        visitor.clickLastRow("vsf1");
        guide.within("frmBasicInfo", showPen);
        visitor.chooseMenu("MenuEditUpdate");
        visitor.clickRow("vsf1", 1);
        visitor.expectBox(QMessageBox::Yes, "delete-box", "删除前先问");
        visitor.expectBox(QMessageBox::Ok, "refused-delete", "单据里用过的货品不能删除");
        visitor.chooseMenu("MenuEditDelete");
    });
}

void arrangeItems(Guide& guide) {
    guide.play(Guide::kAdministrator, {}, [&guide](Visitor& visitor) {
        visitor.clickRow("vsf1", 1);
        guide.within("frmItemUsage",
                     [](Visitor& usage) { usage.picture("item-usage", "使用情况：哪些单据用了这个货品"); });
        visitor.chooseMenu("MenuItemUsage");
        visitor.clickHeading("vsf1", "名称");
        visitor.pictureNextMenu("heading-menu", "列标题的右键菜单，也可按 Ctrl+H");
        visitor.press("Ctrl+H");
        visitor.press("Ctrl+F");
        visitor.typeKeys("zxb");
        visitor.picture("sorted-narrowed", "按拼音排序，并用拼音字母筛选");
        visitor.press("Esc");
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

void exportItems(Guide& guide, const std::string& folder) {
    guide.play(Guide::kAdministrator, {}, [&folder](Visitor& visitor) {
        visitor.saveTo(QString::fromStdString(folder) + QStringLiteral("/goods.xlsx"), "save-as", "导出：文件名和格式");
        visitor.expectBox(QMessageBox::Ok, "exported", "导出成功");
        visitor.clickTool("Excel");
        visitor.boxesDone();
    });
}

void printItems(Guide& guide, const std::string& folder) {
    guide.play(Guide::kAdministrator, {}, [&folder](Visitor& visitor) {
        visitor.clickNode("tv1", "书写工具");
        visitor.expectDialog("preview", "preview", "打印预览");
        visitor.clickTool("Preview");
        visitor.boxesDone();
        visitor.printTo(QString::fromStdString(folder) + QStringLiteral("/goods.pdf"), "print",
                        "打印：打印机或 PDF 文件");
        visitor.clickTool("Print");
        visitor.boxesDone();
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
