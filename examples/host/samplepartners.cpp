// Dictionaries, customers, suppliers, accounts, warehouses and their positions.
#include <utility>

#include "samplewriter.h"

namespace orvenmod::sample {
namespace {

constexpr int kCustomers = 1;
constexpr int kSuppliers = 2;
constexpr int kStocks = 4;
constexpr int kStockPlaces = 5;
constexpr int kAccounts = 11;

struct Partner {
    const char* name;
    const char* linkMan;
    const char* address;
};

struct Region {
    const char* name;
    std::vector<Partner> partners;
};

const std::vector<Region>& customerRegions() {
    static const std::vector<Region> kRegions = {
        {"本市零售",
         {{"利民五金店", "周利民", "城东区建设路18号"},
          {"家和日杂店", "何秀英", "城东区建设路102号"},
          {"宏达文具店", "吴宏达", "城西区学院路7号"},
          {"为民便利店", "郑为民", "城西区学院路55号"},
          {"小刘杂货铺", "刘建国", "城南区码头街3号"},
          {"春晖文化用品店", "陈春晖", "城南区新华街26号"},
          {"安居建材门市部", "马安居", "城北区环城路311号"},
          {"顺发劳保用品店", "孙顺发", "城北区环城路87号"},
          {"大众百货商店", "王大众", "开发区创业路9号"},
          {"新世纪超市", "林志强", "开发区创业路120号"}}},
        {"本市单位",
         {{"第一中学总务处", "徐老师", "城西区学院路1号"},
          {"人民医院后勤科", "沈科长", "城东区健康路66号"},
          {"东湖物业管理处", "韩经理", "城东区东湖路8号"},
          {"长风机械厂供应科", "彭师傅", "开发区工业二路15号"},
          {"中心幼儿园", "梁园长", "城南区新华街40号"},
          {"市政养护公司", "曹主任", "城北区环城路200号"}}},
        {"外地批发",
         {{"青川县百货公司", "罗经理", "青川县解放路21号"},
          {"平湖镇五金批发部", "蒋老板", "平湖镇南大街5号"},
          {"石桥文体批发部", "谢女士", "石桥市车站路33号"},
          {"南岭日化经营部", "邓先生", "南岭市滨江道12号"},
          {"永安电料批发行", "许老板", "永安市五一路78号"},
          {"云山农资商行", "冯先生", "云山县东门外14号"},
          {"临江装饰材料行", "曾老板", "临江市江滨路9号"},
          {"万福隆商贸行", "萧女士", "石桥市商贸城B区6号"}}},
    };
    return kRegions;
}

const std::vector<Region>& supplierRegions() {
    static const std::vector<Region> kRegions = {
        {"生产厂家",
         {{"文华制笔厂", "田厂长", "江南市文华路1号"},
          {"恒力五金制品厂", "石经理", "永安市工业园3号"},
          {"佳美日化厂", "江小姐", "南岭市日化路20号"},
          {"光明电工器材厂", "夏先生", "江南市电工路8号"},
          {"护佑劳保用品厂", "范经理", "平湖镇工业区11号"},
          {"洁美塑料制品厂", "方小姐", "临江市塑料城5号"}}},
        {"代理商",
         {{"瑞丰贸易商行", "邹经理", "石桥市商贸城A区1号"},
          {"华东办公用品配送中心", "熊小姐", "江南市物流园C栋"},
          {"天工工具总汇", "金老板", "江南市五金城211号"},
          {"瑞丰贸易商行", "陆先生", "永安市商贸街19号"}}},
    };
    return kRegions;
}

std::string phone(SampleWriter& writer) { return "0571-8" + padded(writer.random(1000000) + 1000000, 7); }
std::string mobile(SampleWriter& writer) { return "139" + padded(writer.random(100000000), 8); }

std::vector<int> addRegions(SampleWriter& writer, int itemClass, const char* table,
                            const std::vector<Region>& regions) {
    std::vector<int> ids;
    int regionNumber = 0;
    for (const Region& region : regions) {
        const Node category = writer.addCategory(itemClass, {}, padded(++regionNumber, 2), region.name);
        int number = 0;
        for (const Partner& partner : region.partners) {
            const Node item = writer.addItem(itemClass, category, padded(++number, 3), partner.name);
            writer.insert(table,
                          "fItemId,fNumber,fName,fLinkMan,fPhone,fMobile,fAddress,fBank,fBankNo,fTaxNo,fNote,fAmount",
                          {item.id, item.number, partner.name, partner.linkMan, phone(writer), mobile(writer),
                           partner.address, writer.random(2) == 0 ? "城东农商行" : "城市合作社",
                           "6228" + padded(writer.random(100000000), 8), "9133" + padded(writer.random(100000000), 8),
                           "", Literal::hundredths(writer.random(4) == 0 ? 0 : writer.random(2000000))});
            ids.push_back(item.id);
        }
    }
    return ids;
}

void addAccounts(SampleWriter& writer, SampleIds& ids) {
    struct Account {
        const char* name;
        const char* bank;
        int amount;
    };
    const auto add = [&](const Node& category, std::initializer_list<Account> accounts) {
        int number = 0;
        for (const Account& account : accounts) {
            const Node item = writer.addItem(kAccounts, category, padded(++number, 2), account.name);
            writer.insert("tblAccount", "fItemId,fNumber,fName,fBank,fBankNo,fHolder,fNote,fAmount",
                          {item.id, item.number, account.name, account.bank,
                           account.bank[0] == '\0' ? "" : "6217" + padded(writer.random(100000000), 8), "裕丰商行", "",
                           Literal::hundredths(account.amount)});
            ids.accounts.push_back(item.id);
        }
    };
    add(writer.addCategory(kAccounts, {}, "01", "现金"), {{"门市现金", "", 1286050}, {"备用金", "", 200000}});
    add(writer.addCategory(kAccounts, {}, "02", "银行存款"),
        {{"基本户", "城东农商行", 24810075}, {"一般户", "城市合作社", 5603200}, {"定期存款", "城市合作社", 10000000}});
}

void addPlainClass(SampleWriter& writer, int id, const std::string& name, const std::string& table) {
    const int list = id + 6000;
    writer.insert("tblItemClass", "fItemClassId,fItemName,fItemTable,fItemType,fViewName",
                  {id, name, table, "0", "v" + table});
    int order = 0;
    for (const auto& [caption, field] : {std::pair{"短代码", "fShortNumber"}, {"代码", "fNumber"}, {"名称", "fName"}}) {
        ++order;
        writer.insert("tblTableInfo", "fInterId,fItemClassId,fName,fFieldName,fFieldType,fIsNull,fIsVisible,fIsLock",
                      {order, id, caption, field, 1, 1, 1, order == 2 ? 1 : 0});
        writer.insert("tblFindinfoEntry2",
                      "fTypeId,fFieldName,fTitleName,fNumType,fItemClassId,fIsDefault,fEntryId,fNumberName",
                      {list, field, caption, 2, 0, 1, order == 3 ? 2 : 1, 0});
        writer.insert("tblViewDesc", "fTypeId,fFieldName,fFieldDesc,fFieldType", {list, field, caption, 0});
        if (order > 1) {
            writer.insert("tblFindinfoEntry",
                          "fTypeId,fEntryId,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,"
                          "fIsDefault,fWidth",
                          {list, order - 1, field, caption, 1, "", 1, 0, 0, 1, order == 2 ? 2000 : 4000});
        }
    }
    writer.execute("create view v" + table +
                   " as SELECT a.fItemid, a.fnumber, a.fname, b.fIslock, b.fParentid, isnull(c.fname,'') AS "
                   "fParentidname, isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber,isnull(c.fnumber,'') as "
                   "fParentIdNumber,isnull(b.fShortNumber,'') as fShortNumber    FROM ((" +
                   table +
                   " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid) LEFT JOIN tblItem AS c  ON "
                   "c.fItemid=b.fParentid)");
}

Node addPlainItem(SampleWriter& writer, int itemClass, const char* table, const Node& parent, const std::string& number,
                  const std::string& name) {
    Node item = writer.addItem(itemClass, parent, number, name);
    writer.insert(table, "fItemId,fNumber,fName", {item.id, item.number, name});
    return item;
}

}  // namespace

void addDictionaries(SampleWriter& writer, SampleIds& ids) {
    const auto add = [&](int dictionary, const char* name, std::initializer_list<const char*> entries) {
        writer.insert("tblItemClass", "fItemClassId,fItemName,fItemTable,fItemType", {dictionary, name, "", "1"});
        std::vector<int> added;
        int number = 0;
        for (const char* entry : entries) {
            added.push_back(writer.addDictionaryEntry(dictionary, padded(++number, 2), entry));
        }
        return added;
    };
    ids.units = add(201, "计量单位", {"个", "支", "把", "盒", "包", "卷", "瓶", "双", "套", "米"});
    ids.colours = add(202, "颜色", {"黑色", "白色", "红色", "蓝色", "绿色", "黄色", "灰色", "本色"});
    ids.settlements = add(203, "结算方式", {"现金", "转账", "支票", "月结"});
    ids.kinds = add(204, "收支类别", {"房租", "水电费", "运费", "工资", "废品收入", "利息收入"});
}

void addPartners(SampleWriter& writer, SampleIds& ids) {
    ids.customers = addRegions(writer, kCustomers, "tblCustomer", customerRegions());
    ids.suppliers = addRegions(writer, kSuppliers, "tblSupplier", supplierRegions());
    for (const int customer : ids.customers) {
        writer.execute("update tblCustomer set fCredit=" + std::to_string(5000 * (1 + writer.random(10))) +
                       ",fOpenDate='20" + padded(15 + writer.random(9), 2) + "-" + padded(1 + writer.random(12), 2) +
                       "-" + padded(1 + writer.random(28), 2) + "' where fItemId=" + std::to_string(customer));
    }
    addAccounts(writer, ids);
}

void addWarehouses(SampleWriter& writer, SampleIds& ids) {
    addPlainClass(writer, kStocks, "仓库", "tblStock");
    addPlainClass(writer, kStockPlaces, "仓位", "tblStockPlace");
    int number = 0;
    for (const char* name : {"总仓", "门市仓", "城北分仓", "退货仓"}) {
        const std::string code = padded(++number, 2);
        ids.stocks.push_back(addPlainItem(writer, kStocks, "tblStock", {}, code, name).id);
        const Node row = writer.addCategory(kStockPlaces, {}, code, name);
        for (int place = 1; place <= 4; ++place) {
            const std::string shelf = std::string(1, static_cast<char>('A' + number - 1)) + padded(place, 2);
            ids.stockPlaces.push_back(
                addPlainItem(writer, kStockPlaces, "tblStockPlace", row, shelf, std::string(name) + shelf + "货架").id);
        }
    }
}

}  // namespace orvenmod::sample
