#include "importtour.h"

#include <QTemporaryDir>

#include "samplefiles.h"

namespace orvenmod::sample {

namespace {

constexpr const char* kList =
    "短代码,名称,规格型号,最低库存,建档日期,主供应商,所属分类\n"
    "801,示例圆珠笔,0.7mm 蓝,20,2024-6-7,文华制笔厂,01.01\n"
    "802,示例签字笔,1.0mm 黑,十支,2024-6-7,文华制笔厂,01.01\n"
    "803,示例记号笔,,12,2024-6-31,,01.01\n"
    "804,示例荧光笔,四色,,,瑞丰,01.01\n"
    "804,示例粉笔,白,50,,,01.01\n"
    "805,示例铅笔,2B,100,2024-6-8,文华制笔厂,01.01\n";

void mend(Visitor& row) {
    row.inputCell("fps1", 4, 2, "10");
    row.picture("import-mend", "导入：就地修改被拒绝的行");
    row.click("cmdOK");
}

}  // namespace

void bringGoodsIn(Guide& guide) {
    const QTemporaryDir files;
    writeDocument(files.filePath("新货品.csv"), kList);
    guide.play(Guide::kAdministrator, {}, [&guide, &files](Visitor& visitor) {
        guide.within("frmImport", [&guide, &files](Visitor& import) {
            import.chooseFile(files.filePath("新货品.csv"));
            import.click("cmdBrowse");
            import.picture("import-file", "导入：选文件");
            import.click("cmdNext");
            import.picture("import-columns", "导入：各栏存入的字段");
            import.click("cmdNext");
            import.picture("import-check", "导入：存入以前先核对，拒绝的行说明原因");
            guide.within("frmImportRow", mend);
            import.clickRow("vsfCheck", 2);
            import.click("cmdMend");
            import.click("cmdNext");
            import.picture("import-result", "导入：结果");
            import.click("cmdClose");
        });
        visitor.chooseMenu("MenuImport");
    });
}

}  // namespace orvenmod::sample
