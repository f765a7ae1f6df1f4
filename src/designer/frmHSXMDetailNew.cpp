#include "designer/frmHSXMDetailNew.h"

#include "designer/classview.h"
#include "designer/frmHSXMDetailNew_design.h"
#include "designer/frmItem.h"
#include "designer/proposedname.h"
#include "designer/saving.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "frame/lockedcolour.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "store/itemclass.h"

namespace orvenmod {

using platform::CellType;
using platform::NumberRule;

namespace {

constexpr int kLabel = 1;
constexpr int kValue = 2;
constexpr int kCode = 3;

constexpr std::int32_t kBaseFields = 3;  // short code, code and name

enum Row { name = 1, field, type, decimals, maximum, minimum, fallback, isNull, lookup };

constexpr const char* kLabels[] = {"名称",   "字段名称", "数据类型", "小数点位数",      "最大值",
                                   "最小值", "缺省值",   "能否为空", "核算项目或子项目"};
constexpr NumberRule kLimit{2, -99999999.99, 99999999.99};

using Items = std::vector<std::string>;

Items typeCodes() {
    Items codes;
    for (const std::string_view type :
         {store::kTextField, store::kDateField, store::kNumberField, store::kCurrencyField})
        codes.emplace_back(type);
    return codes;
}

}  // namespace

frmHSXMDetailNew& frmHSXMDetailNew::instance() {
    static auto& window = *new frmHSXMDetailNew;  // the process may end while it is shown
    return window;
}

void frmHSXMDetailNew::show(ClassBrowser& opener) {
    opener_ = &opener;
    showModal(hsxmDetailNewDesign());
}

void frmHSXMDetailNew::connectEvents() {
    window().unload = [this] { Form_Unload(); };
    fps1().comboCloseUp = [this](int Col, int Row, int SelChange) { fps1_ComboCloseUp(Col, Row, SelChange); };
    window().get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
    window().get<platform::Menu>("MenuFileExit").click = [this] { window().close(); };
}

void frmHSXMDetailNew::Form_Load() {
    layOutRows();
    loadFieldForm();
    setNumberRowsLocked(true);
    fps1().setColumnHidden(kCode, true);
}

void frmHSXMDetailNew::Form_Unload() { frmItem::instance().unload(); }

void frmHSXMDetailNew::layOutRows() {
    platform::EntryGrid& grid = fps1();
    const auto choice = [&grid](int row, const Items& words, const Items& codes) {
        grid.setCellType(kValue, row, CellType::combo);
        grid.setCellType(kCode, row, CellType::combo);
        grid.setItems(kValue, row, words);
        grid.setItems(kCode, row, codes);
        grid.selectItem(kValue, row, 0);
        grid.selectItem(kCode, row, 0);
    };
    const auto number = [&grid](int row, const NumberRule& rule) {
        grid.setCellType(kValue, row, CellType::number);
        grid.setNumberRule(kValue, row, rule);
    };
    grid.setLockedColour(kLockedColour);
    grid.setRowCount(Row::lookup);
    for (int row = Row::name; row <= Row::lookup; ++row)
        grid.setText(kLabel, row, kLabels[row - 1]);
    choice(Row::type, {"字符类型", "日期", "数字", "货币"}, typeCodes());
    number(Row::decimals, {0, 0, 10});
    number(Row::maximum, kLimit);
    number(Row::minimum, kLimit);
    choice(Row::isNull, {"能", "不能"}, {"0", "1"});
    grid.setCellType(kValue, Row::lookup, CellType::combo);
    grid.setCellType(kCode, Row::lookup, CellType::combo);
    grid.setActiveCell(kValue, Row::name);
}

bool frmHSXMDetailNew::loadFieldForm() {
    return trapped([this] {
        openDB();
        fillLookups();
        fps1().setText(kValue, Row::field, proposedFieldName());
        return true;
    });
}

bool frmHSXMDetailNew::proposeFieldName() {
    return trapped([this] {
        openDB();
        fps1().setText(kValue, Row::field, proposedFieldName());
        return true;
    });
}

// Names and codes are kept in step by their place in the lists.
void frmHSXMDetailNew::fillLookups() {
    auto rows = openRows("select * from tblItemClass ");
    Items names = {"无"};
    Items codes = {"-1,-1"};
    Items classes = {""};
    for (; !rows.eof(); rows.moveNext()) {
        names.push_back(rows.text("fItemname"));
        codes.push_back(rows.text("fitemclassid") + "," + rows.text("fItemType"));
        classes.push_back(rows.text("fitemclassid"));
    }
    fps1().setItems(kValue, Row::lookup, names);
    fps1().setItemCodes(kValue, Row::lookup, classes);
    fps1().setItems(kCode, Row::lookup, codes);
    fps1().selectItem(kValue, Row::lookup, 0);
    fps1().selectItem(kCode, Row::lookup, 0);
}

// The reset of a lookup's type leaves the locks of the number rows alone.
void frmHSXMDetailNew::fps1_ComboCloseUp(int /*Col*/, int Row, int SelChange) {
    if (SelChange == -1) return;
    platform::EntryGrid& grid = fps1();
    if (Row == Row::type || Row == Row::isNull || Row == Row::lookup) grid.selectItem(kCode, Row, SelChange);
    if (Row == Row::lookup && isLookup(grid.text(kValue, Row::lookup))) {
        grid.selectItem(kValue, Row::type, 0);
        grid.selectItem(kCode, Row::type, 0);
    }
    if (Row == Row::type) setNumberRowsLocked(grid.text(kCode, Row::type) != store::kNumberField);
}

void frmHSXMDetailNew::setNumberRowsLocked(bool locked) {
    for (int row = Row::decimals; row <= Row::minimum; ++row) {
        fps1().setLocked(kValue, row, locked);
        fps1().setLocked(kCode, row, locked);
    }
}

bool frmHSXMDetailNew::refuse(const std::string& text, int row) {
    showCritical(text);
    fps1().setActiveCell(kValue, row);
    return false;
}

// A currency has no limits to be tested, and the minimum isn't compared with the maximum.
bool frmHSXMDetailNew::checkInput() {
    const auto isEmpty = [this](int row) { return trim(fps1().text(kValue, row)).empty(); };
    if (isEmpty(Row::name)) return refuse("名称不能为空", Row::name);
    if (isEmpty(Row::field)) return refuse("字段名不能为空", Row::field);
    if (fps1().text(kCode, Row::type) != store::kNumberField || fps1().text(kValue, Row::lookup) != "无") return true;
    if (isEmpty(Row::decimals)) return refuse("小数点位数不能为空!", Row::decimals);
    if (isEmpty(Row::maximum)) return refuse("最大值不能为空!", Row::maximum);
    if (isEmpty(Row::minimum)) return refuse("最小值不能为空!", Row::minimum);
    return true;
}

NewField frmHSXMDetailNew::typedField() const {
    const auto value = [this](int row) { return fps1().text(kValue, row); };
    NewField made;
    made.name = trim(value(Row::name));
    made.field = trim(value(Row::field));
    made.typeCode = fps1().text(kCode, Row::type);
    made.decimals = value(Row::decimals);
    made.maximum = value(Row::maximum);
    made.minimum = value(Row::minimum);
    made.fallback = value(Row::fallback);
    made.isNull = fps1().text(kCode, Row::isNull);
    made.lookup = value(Row::lookup);
    made.lookupCode = fps1().text(kCode, Row::lookup);
    return made;
}

bool frmHSXMDetailNew::insert() {
    if (!checkInput()) return false;
    openDB();
    return saved([this] { addField(); });
}

// Row and column come first: the generator reads the field rows and names the new column.
void frmHSXMDetailNew::addField() {
    store::Connection& connection = *appState().gConn;
    store::Flight flight(connection);
    const NewField made = typedField();
    const std::string itemClass = std::to_string(appState().gItemClassId);
    const auto last =
        flight.open("select max(finterid) as finterid1 from tbltableinfo where fitemclassid=" + itemClass);
    const std::string interId =
        std::to_string(idAfter(last.eof() ? kBaseFields : toInt32(required(last.field("finterid1")))));
    const std::string row = fieldRow(made, itemClass, interId);
    const std::string column = columnStatement(made, readClassObjects(flight, itemClass).table);
    connection.beginTrans();
    flight.run([&] {
        flight.execute(row);
        flight.execute(column);
        countFieldName(flight);
        const ClassObjects objects = readClassObjects(flight, itemClass);
        regenerateClassView(flight, objects, ClassViewMode::newField, made.field);
    });
    connection.commitTrans();
}

void frmHSXMDetailNew::Toolbar1_ButtonClick(const std::string& key) {
    if (key == "Save") save();
    if (key == "Exit") window().close();
}

void frmHSXMDetailNew::save() {
    if (!insert()) return;
    showInformation("数据保存成功!");
    opener_->findInfo(frmItem::instance().txtParamSQL, 0);
    fps1().setText(kValue, Row::name, "");
    fps1().setText(kValue, Row::field, "");
    fps1().setActiveCell(kValue, Row::name);
    proposeFieldName();
}

}  // namespace orvenmod
