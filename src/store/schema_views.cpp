// The views of a new database, worded as the generators of the class designer word them, so that the first save in
// field setup changes nothing.
#include "store/classviewtext.h"
#include "store/itemclass.h"
#include "store/schemaparts.h"
#include "store/stockfields.h"
#include "store/stockviewtext.h"

namespace orvenmod::store {
std::string fixedClassView(const FixedClass& fixed) {
    ClassViewText view("v" + std::string(fixed.table), fixed.table, ViewWording::setup);
    if (fixed.amountField == "fAmount") {
        view.addAmount();
    } else {
        view.addStock();
    }
    view.addField("fNumber", kTextField);
    view.addField("fName", kTextField);
    for (const FixedField& field : fixed.fields) {
        if (field.sourceClass == 0) {
            view.addField(field.name, field.type);
        } else {
            view.addLookup(field.name, "tblItem");
        }
    }
    return view.text();
}

std::string stockView() {
    std::string view(stockViewColumns());
    for (const StockField& field : stockGoodsFields())
        view += field.columns;
    return view + std::string(stockViewTables()) + stockViewGoodsLookup("tblSupplier");
}

std::vector<std::string> stockViewRows() {
    std::vector<std::string> rows;
    for (const StockDescription& description : stockDescriptions())
        rows.push_back(stockDescriptionRow(description));
    const auto describe = [&rows](const std::string& name, const std::string& caption) {
        rows.push_back(stockDescriptionRow({name, caption}));
    };
    for (const FixedClass& fixed : fixedClasses()) {
        for (const FixedField& field : fixed.fields) {
            const std::string name(field.name);
            const std::string caption(field.caption);
            if (name == "fH") {
                describe(name + "Number", caption + "编码");
                describe(name + "Name", caption + "名称");
            } else if (name.size() == 2 && name[1] >= 'A' && name[1] <= 'G') {
                describe(name, caption);
            }
        }
    }
    return rows;
}

}  // namespace orvenmod::store
