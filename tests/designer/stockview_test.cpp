// The stock view for every setting of the suite: its whole text, its description rows, and the settings that can't be.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

const std::string kFixed =
    " create view vTimeStock as \r\n select isnull(a.fitemid,0) as fitemid,isnull(a.fqty,0) as "
    "fqty,isnull(a.fAMount,0) as fAmount \r\n ,isnull(a.fstockid,0) as fstockid \r\n ,isnull(b.fNumber,'') as "
    "fStockIdNumber,isnull(b.fname,'') as fStockIdName  ,isnull(c.fNumber,'') as fItemidNumber,isnull(c.fname,'') as "
    "fitemIdName,isnull(c.fModel,'') as fModel \r\n ,isnull(c.fUnit,'') as fUnit,isnull(c.fMinQty,0) as "
    "fMinQty,isnull(c.fMaxQty,0) as fMaxQty \r\n ,case  when isnull(a.fqty,0)=0 then 0 else "
    "round(isnull(a.famount,0)/isnull(a.fqty,0),6) end as fPrice \r\n";
const std::string kFrom =
    " from tbltimestock as a left outer join tblStock as b on a.fstockid=b.fitemid \r\n left outer join icitem as c on "
    "c.fitemid=a.fitemid \r\n";
const std::string kGoods =
    ",isnull(c.fA,'') as fA ,isnull(c.fB,'') as fB ,isnull(c.fC,'') as fC ,isnull(c.fD,0) as fD ,isnull(c.fE,0) as fE "
    ",isnull(c.fF,'1900-01-01') as fF ,isnull(c.fG,'1900-01-01') as fG ,isnull(c.fH,0) as fH,isnull(f3.fNumber,'') as "
    "fHNumber,isnull(f3.fname,'') as fHName  ";

class StockViewTest : public DesignerTest {
protected:
    StockViewTest() { stage.withClass({"50", "设备"}); }

    void setting(int type, const std::string& value) {
        database().execute("delete from tblSystemInfo where fTypeId=" + std::to_string(type));
        database().execute("insert into tblSystemInfo(fTypeId,fValue) values(" + std::to_string(type) + ",'" + value +
                           "')");
    }
    void dimensions(const std::string& names, const std::string& captions, const std::string& sources) {
        setting(61, names);
        setting(62, captions);
        setting(63, sources);
    }
    void hideGoodsFields() {
        database().execute(
            "update tblTableInfo set fIsVisible=0 where fItemClassId=3 and fFieldName in "
            "('fA','fB','fC','fD','fE','fF','fG','fH')");
    }
    void inSetup(const Steps& steps) {
        open([&](User& user) {
            user.clickNode("tv1", "D50");
            stage.inSetup(user, steps);
        });
    }
    /// The view's whole text after a save of field setup.
    std::string rebuilt() {
        inSetup([&](User& dialog) {
            stage.forgetStatements();
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
        database().rows("select * from vTimeStock");
        stage.finish();
        return stage.statements().back();
    }
    /// A save that this setting blocks: one box, and nothing changed.
    void blocked(const std::string& box) {
        inSetup([&](User& dialog) {
            const std::string before = database().dump();
            dialog.answer(MessageKind::critical, box);
            dialog.clickTool("Save");
            EXPECT_EQ(database().dump(), before);
        });
        stage.finish();
    }
    Rows described(std::size_t from) {
        Rows rows = database().rows("select fFieldName,fFieldDesc,fFieldType from tblViewDesc where fTypeId=5033");
        rows.erase(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(from));
        return rows;
    }
};

TEST_F(StockViewTest, withoutSettingsTheFixedColumnsAndThoseOfGoods) {
    EXPECT_EQ(rebuilt(), kFixed + kGoods + kFrom + " left outer join tblSupplier as f3 on f3.fitemid=c.fh ");
    EXPECT_EQ(described(0), (Rows{{"fStockIdNumber", "仓库编码", "0"},
                                  {"fStockIdName", "仓库名称", "1"},
                                  {"fItemIdNumber", "物料编码", "0"},
                                  {"fItemIdName", "物料名称", "1"},
                                  {"fModel", "规格型号", "0"},
                                  {"fUnit", "计量单位", "0"},
                                  {"fQty", "数量", "0"},
                                  {"fPrice", "单价", "0"},
                                  {"fAmount", "金额", "0"},
                                  {"fMaxQty", "最大库存", "0"},
                                  {"fMinQty", "最低库存", "0"},
                                  {"fA", "品牌", "0"},
                                  {"fB", "产地", "0"},
                                  {"fC", "条码", "0"},
                                  {"fD", "参考进价", "0"},
                                  {"fE", "参考售价", "0"},
                                  {"fF", "建档日期", "0"},
                                  {"fG", "停售日期", "0"},
                                  {"fHNumber", "主供应商编码", "0"},
                                  {"fHName", "主供应商名称", "0"}}));
}

TEST_F(StockViewTest, theStatementsGoInThisOrder) {
    hideGoodsFields();
    setting(72, "1");
    rebuilt();
    const Texts all = stage.statements();
    const auto first = std::find(all.begin(), all.end(),
                                 " select fvalue,ftypeid from tblsysteminfo where ftypeid in (61,62,63,71,72) ");
    ASSERT_NE(first, all.end());
    const Texts mine(first, all.end());
    ASSERT_EQ(mine.size(), 17U);
    EXPECT_EQ(mine[1], "delete from tblviewdesc where ftypeid=5033 ");
    EXPECT_EQ(
        mine[2],
        "insert into tblviewdesc(ftypeid,fFieldName,fFieldDesc,fFieldType) values(5033,'fStockIdNumber','仓库编码',0)");
    EXPECT_EQ(mine[13], " drop view vTimeStock ");
    EXPECT_EQ(mine[14],
              "insert into tblviewdesc(ftypeid,fFieldName,fFieldDesc,fFieldType) values(5033,'fbatchno','批次',0)");
    EXPECT_EQ(mine[15],
              "select a.fFieldName,a.fname,isnull(b.fitemtable,'tblSubType ') as fitemtable   from  (select "
              "fValueItemId,fname,fFieldName from tbltableinfo where fitemclassid=3 and (fFieldname='fA' or "
              "fFieldname='fB' or fFieldName='fC' or fFIeldName='FD' or fFieldName='fE'   or fFieldName='fF' or "
              "fFieldName='fG' or fFieldName='fG' or fFieldName='fH') and fisvisible=1 ) as a left outer join "
              "tblitemclass as b on a.fValueItemId=b.fitemclassid ");
}

TEST_F(StockViewTest, placeAndBatch) {
    hideGoodsFields();
    setting(71, "1");
    setting(72, "1");
    EXPECT_EQ(rebuilt(),
              kFixed +
                  " ,isnull(d.fnumber,'') as fstockplaceidNumber\r\n ,isnull(d.fname,'') as "
                  "fstockplaceidName,isnull(a.fStockPlaceId,0) as fStockPlaceId \r\n ,isnull(a.fbatchno,'') as "
                  "fbatchno \r\n" +
                  kFrom + " left outer join tblStockplace as d on d.fitemid=a.fstockplaceid \r\n");
    EXPECT_EQ(described(11), (Rows{{"fStockPlaceIdNumber", "仓位代码", "0"},
                                   {"fStockPlaceIdName", "仓位名称", "0"},
                                   {"fbatchno", "批次", "0"}}));
}

TEST_F(StockViewTest, anyOtherValueOfThoseTwoIsNone) {
    hideGoodsFields();
    setting(71, "2");
    setting(72, "0");
    EXPECT_EQ(rebuilt(), kFixed + kFrom);
    EXPECT_TRUE(described(11).empty());
}

TEST_F(StockViewTest, thePlainDimensionsInTheOrderOfTheList) {
    hideGoodsFields();
    dimensions("fDate2,fText1,fOther,fNum1,fText2,fNum2,fDate1", "到期,颜色,别的,长,尺码,宽,入库", "0,0,0,0,0,0,0");
    EXPECT_EQ(rebuilt(),
              kFixed +
                  " ,isnull(a.fDate2,'1900-01-01') as fDate2 \r\n ,isnull(a.ftext1,'') as ftext1 \r\n "
                  ",isnull(a.fNum1,0) as fNum1 \r\n ,isnull(a.ftext2,'') as ftext2 \r\n ,isnull(a.fNum2,0) as "
                  "fNum2 \r\n ,isnull(a.fDate1,'1900-01-01') as fDate1 \r\n" +
                  kFrom);
    EXPECT_EQ(described(11), (Rows{{"fDate2", "到期", "0"},
                                   {"fText1", "颜色", "0"},
                                   {"fNum1", "长", "0"},
                                   {"fText2", "尺码", "0"},
                                   {"fNum2", "宽", "0"},
                                   {"fDate1", "入库", "0"}}));
}

TEST_F(StockViewTest, aLookupDimensionTakesItsTableFromAClassADictionaryOrTheFieldOfGoods) {
    hideGoodsFields();
    stage.withDictionary(12, "颜色");
    const std::string columns =
        " ,isnull(a.fHS1,0) as fHS1,isnull(F1.fNumber,'') as fHS1Number,isnull(F1.fName,'') as fHS1Name \r\n";
    for (const auto& [source, table] :
         {std::pair{"2", "tblSupplier"}, {"12", " tblSubtype "}, {"1007", "tblSupplier"}}) {
        dimensions("fHS1", "颜色", source);
        EXPECT_EQ(rebuilt(), kFixed + columns + kFrom + "  left outer join " + table + " as f1 on f1.fitemid=a.fHS1 ");
        EXPECT_EQ(described(11), (Rows{{"fHS1Number", "颜色编码", "0"}, {"fHS1Name", "颜色名称", "0"}}));
    }
}

TEST_F(StockViewTest, theSourceOfADimensionIsAskedForInTheseWords) {
    dimensions("fText1,fHS1", "a,b", "2,1007");
    rebuilt();
    const Texts all = stage.statements();
    EXPECT_NE(std::find(all.begin(), all.end(),
                        " select isnull(fitemtable,'') as fViewName from tblitemclass where fitemclassid=2"),
              all.end());
    EXPECT_NE(
        std::find(all.begin(), all.end(),
                  " select isnull(b.fitemtable,'') as fViewName from  (select fvalueitemid from tbltableinfo where "
                  "fitemclassid=3 and fFieldName='fH' ) as a left outer join tblItemclass as b on "
                  "a.fValueitemid=b.fitemclassid "),
        all.end());
}

TEST_F(StockViewTest, aFieldOfGoodsWithoutASourceLooksIntoTheDictionary) {
    hideGoodsFields();
    database().execute("update tblTableInfo set fIsVisible=1,fValueItemId=0 where fItemClassId=3 and fFieldName='fH'");
    EXPECT_EQ(rebuilt(), kFixed +
                             ",isnull(c.fH,0) as fH,isnull(f3.fNumber,'') as fHNumber,isnull(f3.fname,'') as fHName  " +
                             kFrom + " left outer join tblSubType  as f3 on f3.fitemid=c.fh ");
}

TEST_F(StockViewTest, aFieldOfGoodsSpeltOtherwiseIsFoundByTheStoreAndPassedOver) {
    hideGoodsFields();
    database().execute("update tblTableInfo set fIsVisible=1,fFieldName='FD' where fItemClassId=3 and fFieldName='fD'");
    EXPECT_EQ(rebuilt(), kFixed + kFrom);
}

TEST_F(StockViewTest, aSecondLookupDimensionBlocksTheSave) {
    dimensions("fHS1,fHS2", "a,b", "1,2");
    blocked("关键字 'as' 附近有语法错误。");
    dimensions("fHS2", "b", "2");
    blocked("关键字 'as' 附近有语法错误。");
}

TEST_F(StockViewTest, aLookupDimensionWithoutASourceBlocksTheSave) {
    for (const char* source : {"0", "1000", "2000"}) {
        dimensions("fHS1", "a", source);
        blocked("关键字 'as' 附近有语法错误。");
    }
}

TEST_F(StockViewTest, aSourceOfTheFieldOfGoodsWithoutThatFieldLeavesTheTableAsItWas) {
    database().execute("delete from tblTableInfo where fItemClassId=3 and fFieldName='fH'");
    dimensions("fHS1", "a", "1007");
    blocked("关键字 'as' 附近有语法错误。");
}

TEST_F(StockViewTest, aFieldOfGoodsFromADictionaryBlocksTheSave) {
    stage.withDictionary(12, "颜色");
    database().execute("update tblTableInfo set fValueItemId=12 where fItemClassId=3 and fFieldName='fH'");
    blocked("无法绑定由多个部分组成的标识符 \"f3.fNumber\"。");
}

TEST_F(StockViewTest, aSourceThatIsNoNumberBlocksTheSave) {
    dimensions("fText1", "a", "x");
    blocked("类型不匹配");
    dimensions("fText1,fText2", "a,b", "0, ");
    blocked("库存设置 63 (维度来源) 的第 2 项为空");
}

TEST_F(StockViewTest, aSettingThatIsEmptyIsNamedByItsNumber) {
    const std::pair<int, const char*> settings[] = {{62, "库存设置 62 (维度名称) 为空"},
                                                    {63, "库存设置 63 (维度来源) 为空"},
                                                    {71, "库存设置 71 (按仓位管理) 为空"},
                                                    {72, "库存设置 72 (按批次管理) 为空"}};
    for (const auto& [type, box] : settings) {
        dimensions("fText1", "a", "0");
        for (const char* value : {"''", "'  '", "null"}) {
            setting(type, "");
            database().execute("update tblSystemInfo set fValue=" + std::string(value) +
                               " where fTypeId=" + std::to_string(type));
            blocked(box);
        }
        database().execute("delete from tblSystemInfo where fTypeId=" + std::to_string(type));
    }
}

TEST_F(StockViewTest, withoutDimensionsTheOtherTwoListsMayBeEmpty) {
    hideGoodsFields();
    for (const char* value : {"''", "null"}) {
        dimensions("", "", "");
        database().execute("update tblSystemInfo set fValue=" + std::string(value));
        EXPECT_EQ(rebuilt(), kFixed + kFrom);
    }
}

TEST_F(StockViewTest, aListShorterThanThatOfTheDimensionsBlocksTheSave) {
    dimensions("fText1,fText2", "a", "0,0");
    blocked("下标越界");
    dimensions("fText1,fText2", "a,b", "0");
    blocked("下标越界");
}

TEST_F(StockViewTest, aDimensionGivenTwiceBlocksTheSave) {
    dimensions("fText1,fText1", "a,b", "0,0");
    blocked("各视图或函数中的列名必须唯一。在视图或函数 'vTimeStock' 中多次指定了列名 'ftext1'。");
}

TEST_F(StockViewTest, aFlagThatIsNoNumberBlocksTheSave) {
    setting(71, "是");
    blocked("类型不匹配");
}

TEST_F(StockViewTest, aQuoteInACaptionBlocksTheSave) {
    dimensions("fText1", "a''b", "0");
    blocked("字符串 ',0)' 后的引号不完整。");
}

TEST_F(StockViewTest, aMissingStockViewBlocksTheSave) {
    database().execute("drop view vTimeStock");
    blocked("无法对视图“vTimeStock”执行删除，因为它不存在，或者您没有所需的权限。");
}

TEST_F(StockViewTest, theViewComputesThePriceOfTheStock) {
    database().addGoods();
    database().execute("update tblTimeStock set fAmount=100 where fItemId=101 and fStockId=2");
    database().execute("insert into tblStock(fItemId,fNumber,fName) values(2,'02','二库')");
    rebuilt();
    EXPECT_EQ(
        database().rows("select fItemIdName,fStockIdName,fPrice from vTimeStock where fStockId=2 and fItemId=101"),
        (Rows{{"内六角螺丝", "二库", "10"}}));
}

}  // namespace
}  // namespace orvenmod::test
