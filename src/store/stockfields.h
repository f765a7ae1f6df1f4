// The optional columns of the stock view that follow from names: the extra dimensions of stock, and the user fields of
// goods. What a column of theirs is, its name alone decides.
#pragma once

#include <span>
#include <string_view>

namespace orvenmod::store {

enum class StockFieldKind {
    plain,
    lookup  ///< resolved to code and name
};

struct StockField {
    std::string_view name;
    std::string_view columns;  ///< the text in the select list
    StockFieldKind kind = StockFieldKind::plain;
};

/// Null for a word that names no dimension.
const StockField* stockDimension(std::string_view word);
/// fA to fH, in the order in which a new database has them.
std::span<const StockField> stockGoodsFields();
/// Null for a field that isn't one of fA to fH; the case counts.
const StockField* goodsField(std::string_view name);

}  // namespace orvenmod::store
