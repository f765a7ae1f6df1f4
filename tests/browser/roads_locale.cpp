// A host of another country writes 1,5 for one and a half. The component's numbers stay what they are.
#include <clocale>

#include "browser/roads.h"
#include "support/spreadsheet.h"
#include "support/testlocale.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;

TEST_P(Roads, theTestsRunUnderTheLocaleThatTheyAreToldOf) {
    stage.open(kManagement, [](User&) {
        EXPECT_STREQ(std::localeconv()->decimal_point, testLocale().empty() ? "." : ",");
        EXPECT_EQ(std::use_facet<std::numpunct<char>>(std::locale()).decimal_point(), testLocale().empty() ? '.' : ',');
    });
}

TEST_P(Roads, aDecimalCommaOfTheHostChangesNothing) {
    const DecimalComma comma;
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const TemporaryFolder folder;
    stage.database().execute("delete from tblTimeStock where fItemId=101 and fStockId<>2");
    stage.database().execute("update tblTimeStock set fQty=0.5 where fItemId=101");
    stage.open(kBillPicker, [&](User& user) {
        user.resizeWindow(12345.5F, 9876.5F);
        EXPECT_EQ(user.control<ListGrid>("vsf1").text(1, 5), "0.5");
        user.pick("PC", 3, 0);
        user.type("txtSearch", "0.5");
        user.click("cmdFind");
        user.click("cmdClear");
        user.click("cmdFind");
        for (const char* name : {"list.xls", "list.xlsx"}) {
            user.chooseFile(folder.file(name));
            user.answer(MessageKind::information, "导出成功!");
            user.clickTool("Excel");
        }
        user.doubleClickRow("vsf1", 1);
        EXPECT_EQ(user.control<platform::EntryGrid>("fps1").text(5, 1), "0.5");
        user.typeCell("fps1", 6, 1, "2.5");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"101", "2.5"}}));
    for (const char* name : {"list.xls", "list.xlsx"})
        EXPECT_EQ(readLook(folder.file(name)).rows.at(1).at(3).number, "0.5") << name;
}

TEST_P(Roads, aDecimalCommaOfTheHostChangesNothingInTheStore) {
    const DecimalComma comma;
    const auto value = [this](const char* expression) {
        return stage.database().value(std::string("select ") + expression);
    };
    EXPECT_EQ(value("cast(1.5 as varchar(30))"), "1.5");
    EXPECT_EQ(value("cast(cast('1.5' as float) as varchar(30))"), "1.5");
    EXPECT_EQ(value("convert(varchar(30),cast(1234.5 as float),1)"), "1.2345000e+003");
    EXPECT_EQ(value("convert(varchar(30),cast(1234.5 as float),2)"), "1.234500000000000e+003");
    EXPECT_EQ(value("convert(varchar(30),cast('1234.5' as money),1)"), "1,234.50");
    EXPECT_EQ(value("2.5e0*$1.5"), "3.75");
    EXPECT_EQ(value("round(2.675,2)"), "2.68");
    EXPECT_EQ(value("str(1.5,6,2)"), "  1.50");
}

}  // namespace
}  // namespace orvenmod::test
