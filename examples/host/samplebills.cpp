// The suite's side: the catalogue of bill fields, bills of all six families, balances, settings, the stock view and
// the users.
#include <algorithm>
#include <utility>

#include <orvenmod/schema.h>

#include "samplewriter.h"

namespace orvenmod::sample {
namespace {

/// A family of bills: its types, its tables ("" for no entries) and which of their columns hold what.
struct Family {
    std::vector<int> types;
    const char* head;
    const char* entry;
    std::vector<const char*> headItems, headEntries, entryItems, entryEntries;
    int bills;
};

const std::vector<Family>& families() {
    static const std::vector<Family> kFamilies = {
        {{1, 2, 3},
         "icstockbill",
         "icstockbillEntry",
         {"fCustId", "fSupplyId", "fStockId"},
         {},
         {"fItemId", "fStockId", "fStockPlaceId"},
         {"fUnitId", "fColorId"},
         40},
        {{31, 32},
         "icorderbill",
         "icorderbillentry",
         {"fCustId", "fSupplyId"},
         {"fSettleId"},
         {"fItemId"},
         {"fUnitId"},
         12},
        {{41, 42},
         "icnoticebill",
         "icnoticebillEntry",
         {"fCustId", "fSupplyId"},
         {},
         {"fItemId", "fStockId"},
         {"fUnitId"},
         8},
        {{51, 52}, "tblMoney", "", {"fCustId", "fSupplyId", "fAccountId"}, {"fSettleId"}, {}, {}, 16},
        {{61, 62}, "ICMoney", "ICMoneyEntry", {"fAccountId"}, {}, {}, {"fKindId"}, 10},
        {{71, 72}, "tblFP", "tblFPEntry", {"fCustId", "fSupplyId"}, {"fSettleId"}, {"fItemId"}, {"fUnitId"}, 12},
    };
    return kFamilies;
}

void addCatalogue(SampleWriter& writer, const Family& family) {
    const auto add = [&](const char* table, int type, const std::vector<const char*>& fields, int kind) {
        for (const char* field : fields) {
            writer.insert(table, "fTypeId,fFieldName,fFieldType", {type, field, kind});
        }
    };
    for (const int type : family.types) {
        add("tblBillInfo", type, family.headItems, 1);
        add("tblBillInfo", type, family.headEntries, 2);
        add("tblbillinfoentry", type, family.entryItems, 1);
        add("tblbillinfoentry", type, family.entryEntries, 2);
    }
}

int pick(SampleWriter& writer, const std::vector<int>& ids) {
    return ids[static_cast<std::size_t>(writer.random(static_cast<int>(ids.size())))];
}

// Every third kind of goods never stands in a bill, so that a clerk can delete something.
std::size_t pickGoods(SampleWriter& writer, const SampleIds& ids) {
    const int among = static_cast<int>(std::min<std::size_t>(ids.goods.size(), 300));
    int place = writer.random(among);
    if (place % 3 == 2) --place;
    return static_cast<std::size_t>(place);
}

std::int64_t addEntries(SampleWriter& writer, const SampleIds& ids, const Family& family, int bill) {
    std::int64_t total = 0;
    const int rows = 2 + writer.random(4);
    for (int row = 1; row <= rows; ++row) {
        if (family.entryItems.empty()) {
            const int amount = 5000 + writer.random(300000);
            writer.insert(family.entry, "fInterId,fEntryId,fKindId,fAmount",
                          {bill, row, pick(writer, ids.kinds), Literal::hundredths(amount)});
            total += amount;
            continue;
        }
        const std::size_t goods = pickGoods(writer, ids);
        const int quantity = 1 + writer.random(120);
        const std::int64_t amount = static_cast<std::int64_t>(quantity) * ids.goodsPrices[goods];
        writer.insert(family.entry,
                      "fInterId,fEntryId,fItemId,fStockId,fStockPlaceId,fUnitId,fColorId,fQty,fPrice,fAmount",
                      {bill, row, ids.goods[goods], pick(writer, ids.stocks), pick(writer, ids.stockPlaces),
                       pick(writer, ids.units), pick(writer, ids.colours), quantity,
                       Literal::hundredths(ids.goodsPrices[goods]), Literal::hundredths(amount)});
        total += amount;
    }
    return total;
}

void addFamily(SampleWriter& writer, const SampleIds& ids, const Family& family) {
    for (int bill = 1; bill <= family.bills; ++bill) {
        const int type = family.types[static_cast<std::size_t>(bill) % family.types.size()];
        const bool toCustomer = type % 2 == 0;
        const std::int64_t total =
            family.entry[0] == '\0' ? 10000 + writer.random(800000) : addEntries(writer, ids, family, bill);
        writer.insert(family.head,
                      "fInterId,fTypeId,fBillNo,fDate,fCustId,fSupplyId,fStockId,fAccountId,fSettleId,fAmount,fNote",
                      {bill, type, padded(type, 2) + "-2024" + padded(bill, 4),
                       "2024-" + padded(1 + bill % 6, 2) + "-" + padded(1 + writer.random(28), 2),
                       toCustomer ? pick(writer, ids.customers) : 0, toCustomer ? 0 : pick(writer, ids.suppliers),
                       pick(writer, ids.stocks), pick(writer, ids.accounts), pick(writer, ids.settlements),
                       Literal::hundredths(total), ""});
    }
}

void addBalances(SampleWriter& writer, const SampleIds& ids) {
    const auto add = [&](const char* table, const char* owner, const std::vector<int>& owners, std::size_t most) {
        for (std::size_t i = 0; i < std::min(owners.size(), most); i += 2) {
            const int begin = writer.random(500000);
            const int in = writer.random(300000);
            const int out = writer.random(200000);
            writer.insert(
                table, std::string(owner) + ",fYear,fPeriod,fBeginAmount,fInAmount,fOutAmount,fEndAmount",
                {owners[i], 2024, 6, Literal::hundredths(begin), Literal::hundredths(in),
                 Literal::hundredths(std::min(out, begin + in)), Literal::hundredths(std::max(0, begin + in - out))});
        }
    };
    add("tblSuppbal", "fSupplyId", ids.suppliers, ids.suppliers.size());
    add("tblcustbal", "fCustId", ids.customers, ids.customers.size());
    add("tblstockbal", "fItemId", ids.goods, 200);
}

/// The text with `addition` put in before the mark.
std::string putBefore(std::string text, std::string_view mark, std::string_view addition) {
    return text.insert(text.find(mark), addition);
}

}  // namespace

void addBills(SampleWriter& writer, const SampleIds& ids) {
    for (const Family& family : families()) {
        addCatalogue(writer, family);
        addFamily(writer, ids, family);
    }
    addBalances(writer, ids);
}

// Stock is kept by position and batch, with the maker's batch and the date of production as further dimensions.
void addSettingsAndStockView(SampleWriter& writer) {
    for (const auto& [row, value] :
         {std::pair{61, "fText1,fDate1"}, {62, "厂家批号,生产日期"}, {63, "0,0"}, {71, "1"}, {72, "1"}}) {
        writer.insert("tblSystemInfo", "fTypeId,fValue", {row, value});
    }
    std::string stock =
        putBefore(SchemaViewText("vTimeStock"), ",isnull(c.fA,'')",
                  " ,isnull(d.fnumber,'') as fstockplaceidNumber\r\n"
                  " ,isnull(d.fname,'') as fstockplaceidName,isnull(a.fStockPlaceId,0) as fStockPlaceId \r\n"
                  " ,isnull(a.fbatchno,'') as fbatchno \r\n"
                  " ,isnull(a.ftext1,'') as ftext1 \r\n"
                  " ,isnull(a.fDate1,'1900-01-01') as fDate1 \r\n");
    stock = putBefore(stock, " left outer join tblSupplier",
                      " left outer join tblStockplace as d on d.fitemid=a.fstockplaceid \r\n");
    writer.execute(" drop view vTimeStock ");
    writer.execute(stock);
    for (const auto& [field, caption] : {std::pair{"fStockPlaceIdNumber", "仓位代码"},
                                         {"fStockPlaceIdName", "仓位名称"},
                                         {"fbatchno", "批次"},
                                         {"fText1", "厂家批号"},
                                         {"fDate1", "生产日期"}}) {
        writer.insert("tblViewDesc", "fTypeId,fFieldName,fFieldDesc,fFieldType", {5033, field, caption, 0});
    }
    const std::string goods = putBefore(SchemaViewText("vICItem"), " from ",
                                        ",isnull(a.FSelfA1,0)  as FSelfA1,isnull(A2.fNumber,'')  as FSelfA1Number "
                                        ",isnull(A2.fName,'')  as FSelfA1Name ") +
                              " left outer join tblSubType  as A2 on A2.fitemid=a.FSelfA1 ";
    writer.execute("drop view  vICItem");
    writer.execute(goods);
}

void addUsers(SampleWriter& writer) {
    writer.execute("create table tblUser(fUserId int not null,fName varchar(50),fIsAdmin int,primary key (fUserId))");
    for (const auto& [id, name] : {std::pair{1, "管理员"}, {2, "张会计"}, {3, "小李"}, {4, "王仓管"}}) {
        writer.insert("tblUser", "fUserId,fName,fIsAdmin", {id, name, id == 1 ? 1 : 0});
    }
    writer.execute(
        "insert into tblUserPrivillenge(fUserId,fNumber) select 2,fNumber from tblSystemPrivillenge where fIsDetail=1");
    for (const char* right : {"Y105", "Y304", "Y320"}) {
        writer.insert("tblUserPrivillenge", "fUserId,fNumber", {3, right});
    }
    for (const char* right : {"Y304", "Y305", "Y320"}) {
        writer.insert("tblUserPrivillenge", "fUserId,fNumber", {4, right});
    }
    // What goods cost and what customers owe is none of the junior clerk's business.
    writer.insert("tblUserVisible", "fUserId,fFieldName,fType,fBillTypeId", {3, "fD", 1, 6003});
    writer.insert("tblUserVisible", "fUserId,fFieldName,fType,fBillTypeId", {3, "fHName", 1, 6003});
    writer.insert("tblUserVisible", "fUserId,fFieldName,fType,fBillTypeId", {3, "fAmount", 1, 6001});
    // The storekeeper looks after hardware and electrical goods alone.
    writer.execute(
        "insert into tblFindSeek(fUserId,fTypeId,fSql) values(4,6003,"
        "' and (fNumber like ''02.%'' or fNumber like ''03.%'') ')");
}

}  // namespace orvenmod::sample
