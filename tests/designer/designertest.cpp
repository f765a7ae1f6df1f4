#include "designer/designertest.h"

#include <orvenmod/clsHSXMManage.h>

namespace orvenmod::test {

FieldInput numberField(const std::string& name, const std::string& field) {
    return {
        .name = name, .field = field, .type = FieldType::number, .decimals = "2", .maximum = "1000", .minimum = "-5"};
}

DesignerStage::DesignerStage(MakeScript makeScript) : Stage(makeScript) {
    frmItem::instance().unload();
    set("SystemSetup", "msgTitle", "测试套件");
}

void DesignerStage::open(const Steps& steps) {
    script().onWindow("frmHSXM", steps);
    clsHSXMManage manage;
    manage.DBConnection = connectionString();
    EXPECT_FALSE(manage.mainInterface());
    script().finish();
}

void DesignerStage::inNewClass(User& designer, const Steps& steps) {
    script().onWindow("frmHSXMNew", steps);
    designer.chooseMenu("MenuHSXMNew");
}

void DesignerStage::inNewField(User& designer, const Steps& steps) {
    script().onWindow("frmHSXMDetailNew", steps);
    designer.chooseMenu("MenuDetailNew");
}

void DesignerStage::inSetup(User& designer, const Steps& steps) {
    script().onWindow("frmHSXMDetailSetup", steps);
    designer.chooseMenu("MenuDetailSetup");
}

void DesignerStage::makeClass(User& designer, const ClassInput& made) {
    inNewClass(designer, [&](User& dialog) {
        typeClass(dialog, made);
        dialog.answer(MessageKind::information, kClassSaved);
        dialog.click("cmdOK");
        EXPECT_FALSE(dialog.window().shown());
    });
}

void DesignerStage::makeField(User& designer, const FieldInput& made) {
    inNewField(designer, [&](User& dialog) {
        typeField(dialog, made);
        dialog.answer(MessageKind::information, kFieldSaved);
        dialog.clickTool("Save");
    });
}

void DesignerStage::withClass(const ClassInput& made, const std::vector<FieldInput>& fields) {
    open([&](User& designer) {
        makeClass(designer, made);
        for (const FieldInput& field : fields) {
            designer.clickNode("tv1", "D" + made.id);
            makeField(designer, field);
        }
    });
    forgetStatements();
}

void DesignerStage::withDictionary(int id, const std::string& name) {
    const std::string key = std::to_string(id);
    database().execute("insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType) values(" + key + ",'" +
                       name + "','','1')");
    for (const std::string entry : {"1", "2"}) {
        database().execute("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(" + key + "0" + entry +
                           ",'" + entry + "','" + name + entry + "'," + key + ")");
    }
}

void typeClass(User& dialog, const ClassInput& made) {
    dialog.type("txtType", made.id);
    dialog.type("txt", made.name, 0);
    if (!made.table.empty()) dialog.type("txt", made.table, 1);
}

void typeField(User& dialog, const FieldInput& made) {
    dialog.typeCell("fps1", 2, 1, made.name);
    if (!made.field.empty()) dialog.typeCell("fps1", 2, 2, made.field);
    dialog.pickCell("fps1", 2, 3, static_cast<int>(made.type));
    if (made.type == FieldType::number) {
        dialog.typeCell("fps1", 2, 4, made.decimals);
        dialog.typeCell("fps1", 2, 5, made.maximum);
        dialog.typeCell("fps1", 2, 6, made.minimum);
    }
    dialog.typeCell("fps1", 2, 7, made.fallback);
    dialog.pickCell("fps1", 2, 8, made.required ? 1 : 0);
    dialog.pickCell("fps1", 2, 9, made.lookup);
}

Rows gridRows(User& designer) {
    const auto& grid = designer.control<platform::ListGrid>("vsf1");
    Rows rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < grid.columnCount(); ++column)
            rows.back().push_back(grid.text(row, column));
        while (!rows.back().empty() && rows.back().back().empty())
            rows.back().pop_back();
    }
    return rows;
}

Texts treeKeys(User& designer) {
    const auto& tree = designer.control<platform::Tree>("tv1");
    Texts keys;
    for (int index = 1; index <= tree.count(); ++index)
        keys.push_back(tree.keyAt(index));
    return keys;
}

}  // namespace orvenmod::test
