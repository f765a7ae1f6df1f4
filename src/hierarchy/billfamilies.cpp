#include "hierarchy/billfamilies.h"

#include <limits>

namespace orvenmod {

// Blanks stand as the suite's tools know the statements.
const std::vector<BillFamily>& billFamilies() {
    static const std::vector<BillFamily> kFamilies = {
        {.name = "库存单据",
         .firstType = std::numeric_limits<std::int32_t>::min(),
         .lastType = 9,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid<10 ",
         .entryFields = " union all select fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and "
                        "ftypeid<10  ",
         .headProbe = " union all select top 1 finterid from icstockbill  where ",
         .entryProbe = " union all select top 1 finterid from icstockbillEntry where ",
         .message = "该项目在库存单据中已经使用,不能删除!",
         .balancesAlone = {"  select top 1 fitemid as finterid from tblstockbal where fitemid="},
         .balancesChained = {" union all select top 1 fitemid as finterid from tblstockbal where fitemid="},
         .stockBalances = true},
        {.name = "订单",
         .firstType = 31,
         .lastType = 32,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (31,32) ",
         .entryFields = " union all select fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  "
                        "ftypeid in (31,32)  ",
         .headProbe = " union all select top 1 finterid from icorderbill  where ",
         .entryProbe = " union all select top 1 finterid from icorderbillentry where ",
         .message = "该项目在订单中已经使用,不能删除!"},
        {.name = "通知单",
         .firstType = 41,
         .lastType = 42,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (41,42) ",
         .entryFields = " union all select fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  "
                        "ftypeid in (41,42)  ",
         .headProbe = " union all select top 1 finterid from icnoticebill  where ",
         .entryProbe = " union all select top 1 finterid from icnoticebillEntry where ",
         .message = "该项目在通知单中已经使用,不能删除!"},
        {.name = "收付款单",
         .firstType = 51,
         .lastType = 52,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (51,52) ",
         .entryFields = "",
         .headProbe = " union all select top 1 finterid from tblMoney  where ",
         .entryProbe = "",
         .message = "该项目在收付款单中已经使用,不能删除!",
         .balancesAlone = {"  select top 1 fsupplyid as  finterid from tblSuppbal where fSupplyId=",
                           " union all select top 1 fcustid as  finterid from tblcustbal where fcustid="},
         .balancesChained = {" union all select top 1 fsupplyid as  finterid from tblSuppbal where fSupplyId=",
                             " union all select top 1 fcustid as finterid from tblcustbal where fcustid="}},
        {.name = "收入支出单据",
         .firstType = 61,
         .lastType = 62,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (61,62) ",
         .entryFields = " union all select fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  "
                        "ftypeid in (61,62)  ",
         .headProbe = " union all select top 1 finterid from ICMoney  where ",
         .entryProbe = " union all select top 1 finterid from ICMoneyEntry where ",
         .message = "该项目在收入支出单据中已经使用,不能删除!"},
        {.name = "发票",
         .firstType = 71,
         .lastType = 72,
         .headFields = "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid in (71,72) ",
         .entryFields = " union all select fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and  "
                        "ftypeid in (71,72)  ",
         .headProbe = " union all select top 1 finterid from tblFP  where ",
         .entryProbe = " union all select top 1 finterid from tblFPEntry where ",
         .message = "该项目在发票中已经使用,不能删除!"},
    };
    return kFamilies;
}

}  // namespace orvenmod
