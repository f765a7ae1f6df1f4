#include "browser/listquery.h"

#include "frame/conversion.h"
#include "platform/replaceall.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr std::string_view kStockColumn = "fTimeQty";

std::string fromView(const std::string& columns, const std::string& viewName, const ListConditions& conditions) {
    return columns + " from  " + viewName + " where 1=1 " + conditions.standing + conditions.filter +
           conditions.fromHost + conditions.search;
}

void appendPiece(std::string& list, const std::string& piece) { list.append(kSeparator).append(piece); }

}  // namespace

std::string columnSpecStatement(std::int16_t itemClassId, StockColumn stock, const std::string& hidden) {
    std::string sql =
        "select fFieldName,fTitlename,fAlign,fDataFormat,fWidth,fentryid from tblFindinfoEntry where ftypeid=" +
        store::listType(itemClassId);
    if (stock == StockColumn::leftOut) sql += " and fFIeldName<>'fTimeQty'";
    if (hidden.size() > 1) {
        for (const std::string& name : split(std::string_view(hidden).substr(1, hidden.size() - 2), ",")) {
            sql += " and fFieldName<>'" + name + "' ";
        }
    }
    return sql + " order by fentryid ";
}

void appendColumn(ColumnSpec& spec, const store::Recordset& row) {
    const std::string field = row.text("fFieldName");
    spec.columns += "," + field;
    if (field == kStockColumn) {
        spec.hasTimeQty = true;
        spec.timeQtyEntryId = toInt16(required(row.field("fentryid")));
    }
    appendPiece(spec.titles, row.text("fTitlename"));
    appendPiece(spec.aligns, row.text("fAlign"));
    appendPiece(spec.formats, row.text("fDataFormat"));
    appendPiece(spec.widths, row.text("fwidth", "2000"));
}

std::vector<std::string> split(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    for (;;) {
        const auto at = text.find(separator);
        pieces.emplace_back(text.substr(0, at));
        if (at == std::string_view::npos) return pieces;
        text.remove_prefix(at + separator.size());
    }
}

std::string searchCondition(const std::string& findValue) {
    const std::string text = trim(findValue);
    if (text.empty()) return "";
    return " and (fNumber like '%" + text + "%' or fname like '%" + text + "%') ";
}

std::string plainQuery(const std::string& columns, const std::string& viewName, const ListConditions& conditions) {
    return "select " + fromView(columns, viewName, conditions) + " order by fnumber ";
}

// The view's column fTimeQty is only a place holder: the stock is summed outside the view's own query.
std::string stockQuery(const std::string& columns, const std::string& viewName, const ListConditions& conditions,
                       const StockChoice& stock, std::string_view innerSelect) {
    std::string sql = " select a." + platform::replaceAll(columns, ",", ",a.") + " from ";
    sql = platform::replaceAll(std::move(sql), "a.fTimeQty", "isnull(b.fQty,0) as fTimeQty");
    sql.append(innerSelect).append(fromView(columns, viewName, conditions));
    sql += ") as a left outer join (select sum(fqty) as fqty,fitemid from tbltimestock ";
    if (stock.stockId != 0) sql += " where fstockid=" + std::to_string(stock.stockId);
    sql += " group by fitemid ) as b on a.fitemid=b.fitemid ";
    if (stock.perFKC == -1) sql += " where isnull(b.fqty,0)>0 ";
    return sql + " order by a.fnumber ";
}

}  // namespace orvenmod
