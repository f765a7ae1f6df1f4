#include "store/stockviewtext.h"

namespace orvenmod::store {

std::string_view stockViewColumns() {
    return " create view vTimeStock as \r\n"
           " select isnull(a.fitemid,0) as fitemid,isnull(a.fqty,0) as fqty,isnull(a.fAMount,0) as fAmount \r\n"
           " ,isnull(a.fstockid,0) as fstockid \r\n"
           " ,isnull(b.fNumber,'') as fStockIdNumber,isnull(b.fname,'') as fStockIdName "
           " ,isnull(c.fNumber,'') as fItemidNumber,isnull(c.fname,'') as fitemIdName,isnull(c.fModel,'') as fModel "
           "\r\n"
           " ,isnull(c.fUnit,'') as fUnit,isnull(c.fMinQty,0) as fMinQty,isnull(c.fMaxQty,0) as fMaxQty \r\n"
           " ,case  when isnull(a.fqty,0)=0 then 0 else round(isnull(a.famount,0)/isnull(a.fqty,0),6) end as fPrice "
           "\r\n";
}

std::string_view stockViewTables() {
    return " from tbltimestock as a left outer join tblStock as b on a.fstockid=b.fitemid \r\n"
           " left outer join icitem as c on c.fitemid=a.fitemid \r\n";
}

std::string stockViewGoodsLookup(std::string_view table) {
    return " left outer join " + std::string(table) + " as f3 on f3.fitemid=c.fh ";
}

std::span<const StockDescription> stockDescriptions() {
    static constexpr StockDescription kDescriptions[] = {{"fStockIdNumber", "仓库编码"},
                                                         {"fStockIdName", "仓库名称", "1"},
                                                         {"fItemIdNumber", "物料编码"},
                                                         {"fItemIdName", "物料名称", "1"},
                                                         {"fModel", "规格型号"},
                                                         {"fUnit", "计量单位"},
                                                         {"fQty", "数量"},
                                                         {"fPrice", "单价"},
                                                         {"fAmount", "金额"},
                                                         {"fMaxQty", "最大库存"},
                                                         {"fMinQty", "最低库存"}};
    return kDescriptions;
}

std::string stockDescriptionRow(const StockDescription& description) {
    std::string row = "insert into tblviewdesc(ftypeid,fFieldName,fFieldDesc,fFieldType) values(";
    return row.append(kStockDescriptionType)
               .append(",'")
               .append(description.field)
               .append("','")
               .append(description.caption)
               .append("',")
               .append(description.mark) +
           ")";
}

std::vector<std::string> stockFieldRows(const StockField& field, std::string_view caption) {
    if (field.kind == StockFieldKind::plain) return {stockDescriptionRow({field.name, caption})};
    const std::string name(field.name);
    const std::string shown(caption);
    return {stockDescriptionRow({name + "Number", shown + "编码"}),
            stockDescriptionRow({name + "Name", shown + "名称"})};
}

}  // namespace orvenmod::store
