// Goods in a tree of three levels (department, group, kind), and what of them lies in the warehouses.
#include <algorithm>
#include <array>

#include "samplewriter.h"

namespace orvenmod::sample {
namespace {

constexpr int kGoods = 3;

struct GoodsKind {
    const char* name;
    const char* unit;
    int price;  // what it costs, in hundredths
    std::array<const char*, 4> models;
};

struct Group {
    const char* name;
    std::vector<GoodsKind> kinds;
};

struct Department {
    const char* name;
    std::vector<Group> groups;
};

const std::vector<Department>& officeAndTools() {
    static const std::vector<Department> kDepartments = {
        {"办公文具",
         {{"书写工具",
           {{"中性笔", "支", 95, {"0.38mm 黑", "0.5mm 黑", "0.5mm 蓝", "0.7mm 红"}},
            {"圆珠笔", "支", 60, {"0.5mm 蓝", "0.7mm 蓝", "0.7mm 黑", "1.0mm 红"}},
            {"白板笔", "支", 180, {"圆头 黑", "圆头 红", "圆头 蓝", "斜头 黑"}},
            {"铅笔", "盒", 720, {"HB 12支装", "2B 12支装", "2H 12支装", "彩色 12支装"}}}},
          {"本册纸品",
           {{"复印纸", "包", 1850, {"A4 70g", "A4 80g", "A3 70g", "B5 70g"}},
            {"笔记本", "本", 420, {"A5 80页", "A5 120页", "B5 80页", "B5 120页"}},
            {"便签纸", "本", 150, {"76×76mm", "76×51mm", "76×102mm", "51×38mm"}}}},
          {"装订收纳",
           {{"文件夹", "个", 480, {"A4 单夹", "A4 双夹", "A4 抽杆", "A4 40页"}},
            {"档案盒", "个", 560, {"35mm", "55mm", "75mm", "100mm"}},
            {"订书机", "台", 1280, {"12号", "12号旋转", "重型 60页", "重型 100页"}},
            {"长尾夹", "盒", 390, {"15mm 60只", "19mm 40只", "25mm 48只", "51mm 12只"}}}}}},
        {"五金工具",
         {{"手动工具",
           {{"螺丝刀", "把", 620, {"十字 3×75", "十字 5×100", "一字 3×75", "一字 6×150"}},
            {"活动扳手", "把", 1980, {"6寸", "8寸", "10寸", "12寸"}},
            {"钢丝钳", "把", 1750, {"6寸", "7寸", "8寸", "8寸省力"}},
            {"羊角锤", "把", 2100, {"0.25kg", "0.5kg", "0.75kg", "1kg"}}}},
          {"紧固件",
           {{"自攻螺钉", "盒", 850, {"M3×16", "M4×20", "M4×30", "M5×40"}},
            {"膨胀螺栓", "盒", 1680, {"M6×60", "M8×80", "M10×100", "M12×120"}},
            {"六角螺母", "盒", 560, {"M4", "M6", "M8", "M10"}}}},
          {"锁具合页",
           {{"挂锁", "把", 1150, {"30mm", "40mm", "50mm", "60mm"}},
            {"合页", "付", 430, {"3寸", "4寸", "5寸", "子母 4寸"}},
            {"门锁", "套", 5800, {"室内 银", "室内 古铜", "球形 不锈钢", "防盗 A级"}}}}}},
    };
    return kDepartments;
}

const std::vector<Department>& householdAndSafety() {
    static const std::vector<Department> kDepartments = {
        {"电工电料",
         {{"开关插座",
           {{"墙壁开关", "个", 880, {"单开单控", "单开双控", "双开单控", "三开单控"}},
            {"墙壁插座", "个", 960, {"五孔 10A", "三孔 16A", "七孔 10A", "带开关 五孔"}},
            {"接线板", "个", 2450, {"3位 1.8m", "4位 3m", "6位 3m", "8位 5m"}}}},
          {"照明",
           {{"LED灯泡", "只", 520, {"3W 白光", "5W 白光", "9W 暖光", "15W 白光"}},
            {"日光灯管", "支", 980, {"T5 0.9m", "T5 1.2m", "T8 0.9m", "T8 1.2m"}}}},
          {"电线电缆",
           {{"单芯铜线", "卷", 9800, {"1.5mm² 100m", "2.5mm² 100m", "4mm² 100m", "6mm² 100m"}},
            {"护套线", "卷", 16500, {"2×1.0 100m", "2×1.5 100m", "3×1.5 100m", "3×2.5 100m"}}}}}},
        {"日用百货",
         {{"清洁用品",
           {{"洗洁精", "瓶", 650, {"500g", "1kg", "1.5kg", "5kg"}},
            {"洗衣粉", "包", 890, {"508g", "1kg", "1.8kg", "3kg"}},
            {"拖把", "把", 2350, {"棉线", "胶棉 27cm", "胶棉 38cm", "平板 42cm"}},
            {"垃圾袋", "卷", 310, {"45×50 30只", "50×60 30只", "60×80 20只", "80×100 10只"}}}},
          {"塑料制品",
           {{"收纳箱", "个", 2800, {"20L", "35L", "50L", "75L"}},
            {"水桶", "个", 1050, {"8L", "12L", "16L", "20L"}},
            {"衣架", "包", 1180, {"防滑 10只", "加厚 10只", "儿童 10只", "裤架 10只"}}}},
          {"纸品",
           {{"抽纸", "提", 1420, {"3层 100抽", "3层 120抽", "4层 100抽", "2层 200抽"}},
            {"卷纸", "提", 1680, {"10卷 1kg", "12卷 1.2kg", "12卷 1.8kg", "20卷 2kg"}}}}}},
        {"劳保用品",
         {{"手部防护",
           {{"线手套", "双", 160, {"500g", "600g", "700g", "800g"}},
            {"橡胶手套", "双", 480, {"S号", "M号", "L号", "加长 L号"}}}},
          {"身体防护",
           {{"安全帽", "顶", 1650, {"白", "红", "黄", "蓝"}},
            {"反光背心", "件", 890, {"黄 均码", "橙 均码", "黄 加大", "绿 均码"}},
            {"防尘口罩", "盒", 2200, {"折叠 20只", "杯型 20只", "带阀 10只", "活性炭 50只"}}}},
          {"足部防护", {{"雨靴", "双", 3200, {"39码", "40码", "42码", "44码"}}}}}},
    };
    return kDepartments;
}

constexpr std::array<const char*, 8> kBrands = {"文华", "恒力", "佳美", "光明", "护佑", "洁美", "瑞丰", "天工"};
constexpr std::array<const char*, 5> kPlaces = {"江南市", "永安市", "南岭市", "平湖镇", "临江市"};

struct Shelf {
    const GoodsKind* kind;
    Node category;
    int count = 0;
};

std::vector<Shelf> addTree(SampleWriter& writer) {
    std::vector<Shelf> shelves;
    int departmentNumber = 0;
    for (const auto* table : {&officeAndTools(), &householdAndSafety()}) {
        for (const Department& department : *table) {
            const Node top = writer.addCategory(kGoods, {}, padded(++departmentNumber, 2), department.name);
            int groupNumber = 0;
            for (const Group& group : department.groups) {
                const Node middle = writer.addCategory(kGoods, top, padded(++groupNumber, 2), group.name);
                int kindNumber = 0;
                for (const GoodsKind& kind : group.kinds) {
                    shelves.push_back({&kind, writer.addCategory(kGoods, middle, padded(++kindNumber, 2), kind.name)});
                }
            }
        }
    }
    return shelves;
}

/// "文华中性笔", and from the second round of brands and models on "文华中性笔 2系".
std::string goodsName(const GoodsKind& kind, int place) {
    const int models = static_cast<int>(kind.models.size());
    const int brands = static_cast<int>(kBrands.size());
    const int series = place / (models * brands);
    std::string name = std::string(kBrands[static_cast<std::size_t>(place / models % brands)]) + kind.name;
    if (series > 0) name += " " + std::to_string(series + 1) + "系";
    return name;
}

class GoodsWriter {
public:
    GoodsWriter(SampleWriter& writer, SampleIds& ids, int width) : writer_(writer), ids_(ids), width_(width) {}

    void add(Shelf& shelf) {
        const GoodsKind& kind = *shelf.kind;
        const int place = shelf.count++;
        const auto brand = static_cast<std::size_t>(place / static_cast<int>(kind.models.size())) % kBrands.size();
        const char* model = kind.models[static_cast<std::size_t>(place) % kind.models.size()];
        const std::string name = goodsName(kind, place);
        const Node item = writer_.addItem(kGoods, shelf.category, padded(shelf.count, width_), name);
        const int price = kind.price + kind.price * writer_.random(30) / 100;
        writer_.insert("ICItem", "fItemId,fNumber,fName,fModel,fUnit,fMinQty,fMaxQty,fA,fB,fC,fD,fE,fF,fG,fH,FSelfA1",
                       {item.id, item.number, name, model, kind.unit, 10 * writer_.random(4),
                        200 + 50 * writer_.random(9), kBrands[brand], kPlaces[brand % kPlaces.size()],
                        "69" + padded(item.id, 11), Literal::hundredths(price), Literal::hundredths(price * 135 / 100),
                        day(2021 + writer_.random(3)), "1900-01-01", ids_.suppliers[brand % ids_.suppliers.size()],
                        ids_.colours[static_cast<std::size_t>(place) % ids_.colours.size()]});
        ids_.goods.push_back(item.id);
        ids_.goodsPrices.push_back(price);
        addStock(item.id, price);
    }

private:
    std::string day(int year) {
        return std::to_string(year) + "-" + padded(1 + writer_.random(12), 2) + "-" + padded(1 + writer_.random(28), 2);
    }

    // A fifth is out of stock; the rest lies in one to three batches.
    void addStock(int item, int price) {
        const int lots = std::max(0, writer_.random(5) - 1);
        for (int lot = 0; lot < std::min(lots, 3); ++lot) {
            const auto place = static_cast<std::size_t>(writer_.random(static_cast<int>(ids_.stockPlaces.size())));
            const auto stock = place * ids_.stocks.size() / ids_.stockPlaces.size();
            const int quantity = 5 + writer_.random(1500);
            const std::string produced = day(2024);
            writer_.insert(
                "tblTimeStock",
                "fItemId,fStockId,fStockPlaceId,fBatchNo,fQty,fAmount,fText1,fDate1,fNum1,fNum2,fHS1,fHS2",
                {item, ids_.stocks[stock], ids_.stockPlaces[place],
                 produced.substr(2, 2) + produced.substr(5, 2) + "-" + padded(lot + 1, 2), quantity,
                 Literal::hundredths(static_cast<std::int64_t>(quantity) * price), "", produced, 0, 0, 0, 0});
        }
    }

    SampleWriter& writer_;
    SampleIds& ids_;
    int width_;
};

// A field that a user added: the goods' colour, a lookup into a dictionary. It is hidden from the editor, which opens
// no field of a dictionary; list and search show it.
void addColourField(SampleWriter& writer) {
    writer.execute("alter table ICItem add  FSelfA1  int ");
    writer.insert("tblTableInfo",
                  "fIsVisible,fInterId,fItemClassId,fName,fFieldName,fNumberDec,FMaxNumber,FMinNumber,fDefaultValue,"
                  "fIsNull,fValueItemId,fItemType,fFieldType,fIsLock",
                  {0, 16, kGoods, "颜色", "FSelfA1", 0, 0, 0, "", 0, 202, "1", 1, 0});
    writer.insert("tblMaxbillno", "fTypeId,fPreLetter,fBillNo", {1001, "A", 1});
    const std::string columns = "fTypeId,fFieldName,fTitleName,fNumType,fItemClassId,fIsDefault,fEntryId,fNumberName";
    writer.insert("tblFindinfoEntry2", columns, {6003, "FSelfA1Number", "颜色代码", 2, 6003, 1, 16, 0});
    writer.insert("tblFindinfoEntry2", columns, {6003, "FSelfA1Name", "颜色名称", 2, 6003, 1, 17, 1});
    writer.insert("tblViewDesc", "fTypeId,fFieldName,fFieldDesc,fFieldType", {6003, "FSelfA1Number", "颜色代码", 0});
    writer.insert("tblViewDesc", "fTypeId,fFieldName,fFieldDesc,fFieldType", {6003, "FSelfA1Name", "颜色名称", 0});
}

}  // namespace

void addGoods(SampleWriter& writer, SampleIds& ids, int count) {
    addColourField(writer);
    // The bill area reads the stock from the list as it is shown, and a number ends for it at the first comma.
    writer.execute("update tblFindinfoEntry set fDataFormat='' where fTypeId=6003 and fFieldName='fTimeQty'");
    std::vector<Shelf> shelves = addTree(writer);
    const int kinds = static_cast<int>(shelves.size());
    const int width = std::max(3, static_cast<int>(std::to_string(count / kinds + 1).size()));
    GoodsWriter goods(writer, ids, width);
    for (int i = 0; i < count; ++i) {
        goods.add(shelves[static_cast<std::size_t>(i % kinds)]);
    }
}

}  // namespace orvenmod::sample
