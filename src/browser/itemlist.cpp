#include "browser/itemlist.h"

#include "browser/categorytree.h"
#include "browser/listgrid.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "platform/numberformat.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

std::string listType() { return store::listType(appState().gItemClassId); }

}  // namespace

void ItemList::getListInfo(std::int16_t intType) {
    openDB();
    readStandingCondition();
    readHiddenFields();
    if (intType == 1 || intType == 3) {
        store::Recordset rows = openRows(categoryStatement(appState().gItemClassId));
        fillTree(tv1_, appState().gItemName, rows);
    }
    if (intType == 2 || intType == 3) {
        readColumnSpec();
        const std::string sql = query(spec_.columns, "", searchCondition(appState().gFindValue), kInnerSelect);
        Adodc1_.setConnectionString(appState().gConnStr);
        showRows(sql);
    } else {
        clearZero(vsf1_);
    }
    closeDB();
}

bool ItemList::findInfo(std::int16_t intType, std::int32_t treeItemId) {
    AppState& state = appState();
    openDB();
    if (intType == 1) makeTreeFilter(treeItemId);
    state.gListFilter = state.gTreeFilter;
    showRows(query(listColumnsCopy_, state.gTreeFilter, "", kInnerSelect));
    closeDB();
    return true;
}

bool ItemList::findInfo2(const std::string& strParamSQL) {
    openDB();
    const std::string sql = query(listColumnsCopy_, strParamSQL, "", kInnerSelectOfSearch);
    Adodc1_.setConnectionString(appState().gConnStr);
    showRows(sql);
    closeDB();
    return true;
}

void ItemList::readStandingCondition() {
    listSeekSQL_.clear();
    const store::Recordset rows = openRows("select isnull(fsql,'') as fsql from tblFindSeek where fuserid=" +
                                           std::to_string(appState().gLoginUserId) + " and ftypeid=" + listType());
    if (!rows.eof()) listSeekSQL_ = rows.text("fsql");
}

void ItemList::readHiddenFields() {
    listHidden_ = ",";
    if (appState().gIsAdmin != 0) return;
    store::Recordset rows = openRows(
        "select fFieldName,ftype from tblUserVisible where fUserid=" + std::to_string(appState().gLoginUserId) +
        " and fType in (1) and fbilltypeid=" + listType());
    for (; !rows.eof(); rows.moveNext())
        listHidden_ += rows.text("fFieldName") + ",";
}

void ItemList::readColumnSpec() {
    AppState& state = appState();
    const bool managesGoods = state.gItemClassId == store::kGoods && state.gIsReturn == 0;
    const StockColumn stock = managesGoods ? StockColumn::leftOut : StockColumn::read;
    store::Recordset rows = openRows(columnSpecStatement(state.gItemClassId, stock, listHidden_));
    spec_ = ColumnSpec();
    for (; !rows.eof(); rows.moveNext())
        appendColumn(spec_, rows);
    listColumnsCopy_ = spec_.columns;
    state.gListColumns = spec_.columns;
}

void ItemList::makeTreeFilter(std::int32_t treeItemId) {
    AppState& state = appState();
    if (treeItemId == 0) {
        state.gTreeFilter.clear();
        return;
    }
    const store::Recordset rows = openRows("select fNBNumber from tblItem where fitemid=" + std::to_string(treeItemId));
    if (!rows.eof()) state.gTreeFilter = " and fNBNumber like '" + rows.text("fNBNumber") + "%'";
}

std::string ItemList::query(const std::string& columns, const std::string& filter, const std::string& search,
                            std::string_view innerSelect) const {
    const AppState& state = appState();
    const ListConditions conditions{listSeekSQL_, filter, state.gParamSQL, search};
    if (state.gItemClassId == store::kGoods && state.gIsReturn == 1 && spec_.hasTimeQty) {
        return stockQuery(columns, state.gViewName, conditions, stock_, innerSelect);
    }
    return plainQuery(columns, state.gViewName, conditions);
}

// Blanked zeros sort and are found as the blanks they show as, so the rows are arranged last.
void ItemList::showRows(const std::string& sql) {
    columns_.note();
    bindAndDress(sql);
    columns_.apply(spec_);
    clearZero(vsf1_);
    columns_.arrange();
}

void ItemList::bindAndDress(const std::string& sql) {
    Adodc1_.setRecordSource(sql);
    Adodc1_.refresh();
    dressList(vsf1_, spec_);
    for (int column = 0; column < vsf1_.columnCount(); ++column) {
        const bool numbers = holdsNumbers(column) || platform::isNumberFormat(vsf1_.columnFormat(column));
        vsf1_.setColumnKind(column, numbers ? platform::ColumnKind::number : platform::ColumnKind::text);
    }
}

}  // namespace orvenmod
