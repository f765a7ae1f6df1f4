#include "browser/listquery.h"

#include <gtest/gtest.h>

#include "frame/conversion.h"

namespace orvenmod::test {
namespace {

using Row = std::vector<std::optional<std::string>>;

store::Recordset specRows(const std::vector<Row>& rows) {
    std::vector<store::Column> columns;
    for (const char* name : {"fFieldName", "fTitlename", "fAlign", "fDataFormat", "fWidth", "fentryid"}) {
        columns.push_back({name, store::ColumnType::text});
    }
    store::Recordset made(columns);
    for (const Row& row : rows) {
        for (const auto& cell : row)
            cell ? made.addText(*cell) : made.addNull();
        made.endRow();
    }
    return made;
}

ColumnSpec specOf(const std::vector<Row>& rows) {
    store::Recordset all = specRows(rows);
    ColumnSpec spec;
    for (; !all.eof(); all.moveNext())
        appendColumn(spec, all);
    return spec;
}

TEST(ListQuery, theColumnsOfAClassAreFiledUnderItsIdPlusSixThousand) {
    EXPECT_EQ(columnSpecStatement(11, StockColumn::read, ","),
              "select fFieldName,fTitlename,fAlign,fDataFormat,fWidth,fentryid from tblFindinfoEntry where "
              "ftypeid=6011 order by fentryid ");
}

TEST(ListQuery, theStockColumnCanBeLeftOut) {
    EXPECT_EQ(columnSpecStatement(3, StockColumn::leftOut, ","),
              "select fFieldName,fTitlename,fAlign,fDataFormat,fWidth,fentryid from tblFindinfoEntry where "
              "ftypeid=6003 and fFIeldName<>'fTimeQty' order by fentryid ");
}

TEST(ListQuery, hiddenFieldsAreLeftOutOneByOne) {
    EXPECT_EQ(columnSpecStatement(1, StockColumn::read, ",fPhone,fBank,"),
              "select fFieldName,fTitlename,fAlign,fDataFormat,fWidth,fentryid from tblFindinfoEntry where "
              "ftypeid=6001 and fFieldName<>'fPhone'  and fFieldName<>'fBank'  order by fentryid ");
}

TEST(ListQuery, withoutRowsTheSpecIsTheKeyColumnAlone) {
    const ColumnSpec spec = specOf({});
    EXPECT_EQ(spec.columns, "fitemid");
    EXPECT_EQ(spec.titles, "空");
    EXPECT_EQ(spec.aligns, "1");
    EXPECT_EQ(spec.formats, "");
    EXPECT_EQ(spec.widths, "10");
    EXPECT_FALSE(spec.hasTimeQty);
    EXPECT_EQ(spec.timeQtyEntryId, 0);
}

TEST(ListQuery, theFiveListsRunInParallel) {
    const ColumnSpec spec = specOf({{"fNumber", "代码", "1", "", "2000", "1"},
                                    {"fTimeQty", "库存,数", "7", "#,###.##", "1500", "2"},
                                    {"fModel", "规格", "4", std::nullopt, std::nullopt, "3"}});
    EXPECT_EQ(spec.columns, "fitemid,fNumber,fTimeQty,fModel");
    EXPECT_EQ(spec.titles, "空,*^,代码,*^,库存,数,*^,规格");
    EXPECT_EQ(spec.aligns, "1,*^,1,*^,7,*^,4");
    EXPECT_EQ(spec.formats, ",*^,,*^,#,###.##,*^,");
    EXPECT_EQ(spec.widths, "10,*^,2000,*^,1500,*^,2000");
    EXPECT_TRUE(spec.hasTimeQty);
    EXPECT_EQ(spec.timeQtyEntryId, 2);
}

TEST(ListQuery, aTitleWithACommaStaysWhole) {
    const ColumnSpec spec = specOf({{"fNumber", "代码,旧", "1", "", "2000", "1"}});
    EXPECT_EQ(split(spec.titles, kSeparator), (std::vector<std::string>{"空", "代码,旧"}));
}

TEST(ListQuery, anEntryIdBeyondSixteenBitsFails) {
    EXPECT_THROW(specOf({{"fTimeQty", "库存数", "7", "", "1", "40000"}}), ConversionFailure);
}

TEST(ListQuery, thePlainFormPutsEveryConditionInItsPlace) {
    EXPECT_EQ(plainQuery("fitemid,fNumber,fName", "vtblCustomer", {}),
              "select fitemid,fNumber,fName from  vtblCustomer where 1=1  order by fnumber ");
    EXPECT_EQ(plainQuery("fitemid", "v", {" and A", " and B", " and C", " and D "}),
              "select fitemid from  v where 1=1  and A and B and C and D  order by fnumber ");
}

TEST(ListQuery, theStockFormSumsTheStockOutsideTheView) {
    EXPECT_EQ(
        stockQuery("fitemid,fNumber,fTimeQty", "vICItem", {" and A", " and B", " and C", " and D "}, {}, kInnerSelect),
        " select a.fitemid,a.fNumber,isnull(b.fQty,0) as fTimeQty from  (select fitemid,fNumber,fTimeQty from  "
        "vICItem where 1=1  and A and B and C and D ) as a left outer join (select sum(fqty) as fqty,fitemid "
        "from tbltimestock  group by fitemid ) as b on a.fitemid=b.fitemid  order by a.fnumber ");
}

TEST(ListQuery, aSearchOpensTheInnerQueryWithoutABlank) {
    EXPECT_EQ(stockQuery("fitemid,fTimeQty", "v", {}, {}, kInnerSelectOfSearch),
              " select a.fitemid,isnull(b.fQty,0) as fTimeQty from (select fitemid,fTimeQty from  v where 1=1 ) as a "
              "left outer join (select sum(fqty) as fqty,fitemid from tbltimestock  group by fitemid ) as b on "
              "a.fitemid=b.fitemid  order by a.fnumber ");
}

TEST(ListQuery, oneWarehouseAndOnlyWhatIsInStock) {
    EXPECT_EQ(stockQuery("fitemid,fTimeQty", "v", {}, {7, -1}, kInnerSelect),
              " select a.fitemid,isnull(b.fQty,0) as fTimeQty from  (select fitemid,fTimeQty from  v where 1=1 ) as a "
              "left outer join (select sum(fqty) as fqty,fitemid from tbltimestock  where fstockid=7 group by fitemid "
              ") as b on a.fitemid=b.fitemid  where isnull(b.fqty,0)>0  order by a.fnumber ");
}

TEST(ListQuery, anyOtherStockSwitchThanMinusOneHasNoEffect) {
    EXPECT_EQ(stockQuery("fitemid,fTimeQty", "v", {}, {0, 1}, kInnerSelect),
              stockQuery("fitemid,fTimeQty", "v", {}, {0, 0}, kInnerSelect));
}

TEST(ListQuery, onlyTheExactNameIsTakenForTheStockColumn) {
    EXPECT_EQ(stockQuery("fitemid,ftimeqty", "v", {}, {}, kInnerSelect).substr(0, 30),
              " select a.fitemid,a.ftimeqty f");
}

TEST(ListQuery, theSearchTextIsTrimmedAndLooksIntoCodeAndName) {
    EXPECT_EQ(searchCondition("  螺 丝 "), " and (fNumber like '%螺 丝%' or fname like '%螺 丝%') ");
    EXPECT_EQ(searchCondition("   "), "");
    EXPECT_EQ(searchCondition("O'Neil"), " and (fNumber like '%O'Neil%' or fname like '%O'Neil%') ");
}

}  // namespace
}  // namespace orvenmod::test
