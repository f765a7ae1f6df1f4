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
    if (fixed.amountField == kBalanceField) {
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
    for (const FixedClass& fixed : fixedClasses()) {
        for (const FixedField& field : fixed.fields) {
            const StockField* shown = goodsField(field.name);
            if (shown == nullptr) continue;
            for (const std::string& row : stockFieldRows(*shown, field.caption))
                rows.push_back(row);
        }
    }
    return rows;
}

}  // namespace orvenmod::store
