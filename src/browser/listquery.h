// The texts behind the list of frmBasicInfoList: which columns it has, and the query in its plain and its stock form.
// Pure: no store, no window.
//
//   column spec   five parallel lists; the first entry of each stands for the key column fitemid
//                 columns   fitemid,fNumber,fName,...          joined by ","
//                 titles    空,*^,代码,*^,名称,*^,...           joined by kSeparator, as aligns, formats and widths
//                 position i describes the grid's column i + 1
//   hidden names  ,fA,fB,   a comma in front and one behind each
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/recordset.h"

namespace orvenmod {

inline constexpr std::string_view kSeparator = ",*^,";

struct ColumnSpec {
    std::string columns = "fitemid";
    std::string titles = "空";
    std::string aligns = "1";
    std::string formats = "";
    std::string widths = "10";
    bool hasTimeQty = false;
    std::int16_t timeQtyEntryId = 0;  ///< fentryid of fTimeQty, 0 where there is none
};

enum class StockColumn { read, leftOut };

/// The statement that reads the spec's rows.
std::string columnSpecStatement(std::int16_t itemClassId, StockColumn stock, const std::string& hidden);

/// Adds the current row of that statement's recordset.
void appendColumn(ColumnSpec& spec, const store::Recordset& row);

/// The pieces between a list and a text.
std::vector<std::string> split(std::string_view text, std::string_view separator);

/// What narrows a list. Every piece brings its own " and ".
struct ListConditions {
    std::string standing;  ///< listSeekSQL
    std::string filter;
    std::string fromHost;  ///< gParamSQL
    std::string search;
};

std::string searchCondition(const std::string& findValue);

std::string plainQuery(const std::string& columns, const std::string& viewName, const ListConditions& conditions);

struct StockChoice {
    std::int32_t stockId = 0;  ///< 0 sums over all warehouses
    std::int16_t perFKC = 0;   ///< -1 keeps only items in stock
};

/// `innerSelect` is the bracket that opens the view's own query: kInnerSelect or, after a search, kInnerSelectOfSearch.
std::string stockQuery(const std::string& columns, const std::string& viewName, const ListConditions& conditions,
                       const StockChoice& stock, std::string_view innerSelect);

inline constexpr std::string_view kInnerSelect = " (select ";
inline constexpr std::string_view kInnerSelectOfSearch = "(select ";

}  // namespace orvenmod
