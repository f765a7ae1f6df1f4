// Aliases: a tbltimestock, b tblStock, c icitem, d tblStockplace, f1 and f2 the tables of the dimensions fHS1 and fHS2,
// f3 that of the goods' field fH.
#include "designer/stockview.h"

#include <array>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "designer/filled.h"
#include "designer/lists.h"
#include "frame/conversion.h"
#include "store/itemclass.h"
#include "store/stockfields.h"
#include "store/stockviewtext.h"

namespace orvenmod {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr double kFirstForeignSource = 1000;  // sources below are class ids
constexpr double kSourceOfGoodsField = 1007;  // the class that fH of goods takes its values from

struct Settings {
    std::vector<std::string> names;
    std::vector<std::string> captions;
    std::vector<std::string> sources;
    bool byPlace = false;
    bool byBatch = false;
};

struct Setting {
    int type;
    const char* meaning;
};

constexpr int kNames = 61;
constexpr Setting kCaptions{62, "维度名称"};
constexpr Setting kSources{63, "维度来源"};
constexpr Setting kByPlace{71, "按仓位管理"};
constexpr Setting kByBatch{72, "按批次管理"};

using Values = std::map<int, std::string>;

std::string ofGoods(std::string_view sql) { return filled(sql, {{"goods", std::to_string(store::kGoods)}}); }

std::string nameOf(const Setting& setting) {
    return "库存设置 " + std::to_string(setting.type) + " (" + setting.meaning + ")";
}

/// "" where there is no row of that type.
std::string valueOf(const Values& values, const Setting& setting) {
    const auto found = values.find(setting.type);
    if (found == values.end()) return "";
    if (trim(found->second).empty()) throw std::runtime_error(nameOf(setting) + " 为空");
    return found->second;
}

bool isOn(const Values& values, const Setting& setting) {
    const std::string value = valueOf(values, setting);
    return !value.empty() && toInt32(value) == 1;
}

Settings readSettings(store::Flight& flight) {
    auto rows = flight.open(" select fvalue,ftypeid from tblsysteminfo where ftypeid in (61,62,63,71,72) ");
    Values values;
    for (; !rows.eof(); rows.moveNext())
        values[toInt32(required(rows.field("ftypeid")))] = rows.text("fvalue");
    Settings settings;
    settings.names = splitList(values[kNames]);
    // Without dimensions nobody misses what describes them.
    if (!settings.names.empty()) {
        settings.captions = splitList(valueOf(values, kCaptions));
        settings.sources = splitList(valueOf(values, kSources));
    }
    settings.byPlace = isOn(values, kByPlace);
    settings.byBatch = isOn(values, kByBatch);
    return settings;
}

class Generator {
public:
    explicit Generator(store::Flight& flight) : flight_(flight) {}

    void run() {
        settings_ = readSettings(flight_);
        resolveSources();
        flight_.execute("delete from tblviewdesc where ftypeid=" + std::string(store::kStockDescriptionType) + " ");
        for (const store::StockDescription& row : store::stockDescriptions())
            flight_.execute(store::stockDescriptionRow(row));
        flight_.execute(" drop view vTimeStock ");
        add(store::stockViewColumns());
        addPlaceAndBatch();
        addDimensions();
        addGoodsFields();
        addJoins();
        flight_.execute(text_);
    }

private:
    // Both dimensions of the lookup kind write the table of the first: the last of the list decides it.
    void resolveSources() {
        for (std::size_t i = 0; i < settings_.names.size(); ++i) {
            const std::string& source = entryOf(settings_.sources, i);
            if (source == "0") continue;
            if (trim(source).empty())
                throw std::runtime_error(nameOf(kSources) + " 的第 " + std::to_string(i + 1) + " 项为空");
            const double number = toDouble(source);
            std::string sql;
            if (number < kFirstForeignSource) {
                sql = " select isnull(fitemtable,'') as fViewName from tblitemclass where fitemclassid=" + source;
            } else if (number == kSourceOfGoodsField) {
                sql = ofGoods(
                    " select isnull(b.fitemtable,'') as fViewName from  (select fvalueitemid from tbltableinfo where "
                    "fitemclassid={goods} and fFieldName='fH' ) as a left outer join tblItemclass as b on "
                    "a.fValueitemid=b.fitemclassid ");
            } else {
                continue;
            }
            const auto row = flight_.open(sql);
            if (row.eof() || (settings_.names[i] != "fHS1" && settings_.names[i] != "fHS2")) continue;
            firstTable_ = row.text("fViewName");
            if (firstTable_.empty()) firstTable_ = " tblSubtype ";
        }
    }

    void describe(std::string_view field, std::string_view caption) {
        flight_.execute(store::stockDescriptionRow({field, caption}));
    }

    void describe(const store::StockField& field, std::string_view caption) {
        for (const std::string& row : store::stockFieldRows(field, caption))
            flight_.execute(row);
    }

    void add(std::string_view fragment) { text_ += fragment; }
    void addLine(std::string_view fragment) { text_.append(fragment).append(kLineEnd); }

    void addPlaceAndBatch() {
        if (settings_.byPlace) {
            addLine(" ,isnull(d.fnumber,'') as fstockplaceidNumber");
            addLine(" ,isnull(d.fname,'') as fstockplaceidName,isnull(a.fStockPlaceId,0) as fStockPlaceId ");
            describe("fStockPlaceIdNumber", "仓位代码");
            describe("fStockPlaceIdName", "仓位名称");
        }
        if (settings_.byBatch) {
            addLine(" ,isnull(a.fbatchno,'') as fbatchno ");
            describe("fbatchno", "批次");
        }
    }

    void addDimensions() {
        for (std::size_t i = 0; i < settings_.names.size(); ++i) {
            const std::string& caption = entryOf(settings_.captions, i);
            const store::StockField* dimension = store::stockDimension(settings_.names[i]);
            if (dimension == nullptr) continue;
            addLine(dimension->columns);
            describe(*dimension, caption);
        }
    }

    void addGoodsFields() {
        auto rows = flight_.open(ofGoods(
            "select a.fFieldName,a.fname,isnull(b.fitemtable,'tblSubType ') as fitemtable   from  (select "
            "fValueItemId,fname,fFieldName from tbltableinfo where fitemclassid={goods} and (fFieldname='fA' or "
            "fFieldname='fB' or fFieldName='fC' or fFIeldName='FD' or fFieldName='fE'   or fFieldName='fF' or "
            "fFieldName='fG' or fFieldName='fG' or fFieldName='fH') and fisvisible=1 ) as a left outer join "
            "tblitemclass as b on a.fValueItemId=b.fitemclassid "));
        for (; !rows.eof(); rows.moveNext()) {
            const store::StockField* field = store::goodsField(rows.text("fFieldName"));
            if (field == nullptr) continue;
            add(field->columns);
            describe(*field, rows.text("fname"));
            if (field->kind == store::StockFieldKind::lookup) goodsTable_ = rows.text("fitemtable");
        }
    }

    void addJoins() {
        add(store::stockViewTables());
        if (settings_.byPlace) addLine(" left outer join tblStockplace as d on d.fitemid=a.fstockplaceid ");
        for (const std::string& name : settings_.names) {
            if (name == "fHS1") add("  left outer join " + firstTable_ + " as f1 on f1.fitemid=a.fHS1 ");
            if (name == "fHS2") add("  left outer join " + secondTable_ + "  as f2 on f2.fitemid=a.fHS2 ");
        }
        if (!goodsTable_.empty()) add(store::stockViewGoodsLookup(goodsTable_));
    }

    store::Flight& flight_;
    Settings settings_;
    std::string firstTable_;
    // Nothing fills it: stock with a second lookup dimension has no valid view, and its save is refused by the store.
    const std::string secondTable_;
    std::string goodsTable_;
    std::string text_;
};

}  // namespace

void rebuildStockView(store::Flight& flight) { Generator(flight).run(); }

}  // namespace orvenmod
