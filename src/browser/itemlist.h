// The list of frmBasicInfoList: reads a class's metadata, assembles the query and binds its rows to vsf1. Lives as long
// as one showing of the window. The three operations have no failure handler: what fails goes to the caller, and the
// connection stays as it is.
#pragma once

#include <cstdint>
#include <string>

#include "browser/listcolumns.h"
#include "browser/listquery.h"
#include "frame/adodc.h"
#include "platform/listgrid.h"
#include "platform/tree.h"

namespace orvenmod {

class ItemList {
public:
    ItemList(platform::ListGrid& vsf1, platform::Tree& tv1, const StockChoice& stock)
        : vsf1_(vsf1), tv1_(tv1), Adodc1_(vsf1), stock_(stock), columns_(vsf1) {}

    /// 1 rebuilds the tree, 2 columns and rows, 3 both.
    void getListInfo(std::int16_t intType);
    /// Runs the query again; with 1 the filter is made from the node first.
    bool findInfo(std::int16_t intType, std::int32_t treeItemId);
    /// Runs the query again with a condition in place of the tree's filter.
    bool findInfo2(const std::string& strParamSQL);

    /// Now and then, while the list shows.
    void tend() { Adodc1_.tend(); }

    /// Whether a column of vsf1 shows a number type of the last query. Its first is the grid's own.
    bool holdsNumbers(int column) const { return Adodc1_.holdsNumbers(column - 1); }

    /// What the user makes of the columns.
    ListColumns& columns() { return columns_; }

    bool hasTimeQty() const { return spec_.hasTimeQty; }
    std::int16_t timeQtyEntryId() const { return spec_.timeQtyEntryId; }

private:
    void readStandingCondition();
    void readHiddenFields();
    void readColumnSpec();
    void makeTreeFilter(std::int32_t treeItemId);
    std::string query(const std::string& columns, const std::string& filter, const std::string& search,
                      std::string_view innerSelect) const;
    void showRows(const std::string& sql);
    void bindAndDress(const std::string& sql);

    platform::ListGrid& vsf1_;
    platform::Tree& tv1_;
    Adodc Adodc1_;
    StockChoice stock_;
    ListColumns columns_;
    ColumnSpec spec_;
    std::string listColumnsCopy_;
    std::string listHidden_;
    std::string listSeekSQL_;
};

}  // namespace orvenmod
