// What every wording of the stock view vTimeStock and of its descriptions shares: that of a new database, and that
// which the designer of classes makes from the suite's settings. Aliases: a tbltimestock, b tblStock, c icitem, f3 the
// table of the goods' field fH.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/stockfields.h"

namespace orvenmod::store {

/// The create statement up to the columns that settings and goods add.
std::string_view stockViewColumns();
/// Stock, warehouse and goods.
std::string_view stockViewTables();
std::string stockViewGoodsLookup(std::string_view table);

/// What the view's descriptions are filed under.
inline constexpr std::string_view kStockDescriptionType = "5033";

struct StockDescription {
    std::string_view field;
    std::string_view caption;
    std::string_view mark = "0";
};

/// Of the columns that are always there.
std::span<const StockDescription> stockDescriptions();
std::string stockDescriptionRow(const StockDescription& description);
/// Of an optional column: a row, or for a lookup one each for its code and its name.
std::vector<std::string> stockFieldRows(const StockField& field, std::string_view caption);

}  // namespace orvenmod::store
