#include "dictionary/dictionarytest.h"

#include "dictionary/frmJCBasicInfo.h"
#include "dictionary/frmJCZLList.h"
#include "frame/appstate.h"

namespace orvenmod::test {

DictionaryStage::DictionaryStage(MakeScript makeScript) : Stage(makeScript) {
    Database& data = database();
    data.execute("delete from tblItemClass where fItemType='1'");
    data.execute("delete from tblSubType");
    data.execute("delete from tblMaxNum");
    data.execute("delete from tblBillInfo");
    data.execute("delete from tblbillinfoentry");
    const auto addDictionary = [&data](const char* id, const char* name) {
        data.execute(std::string("insert into tblItemClass(fItemClassId,fItemName,fItemType,fItemTable) values(") + id +
                     ",'" + name + "','1','')");
    };
    const auto addEntry = [&data](const char* id, const char* code, const char* name, const char* dictionary) {
        data.execute(std::string("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(") + id + ",'" +
                     code + "','" + name + "'," + dictionary + ")");
    };
    addDictionary("501", "单位");
    addDictionary("502", "颜色");
    addEntry("1", "01", "个", "501");
    addEntry("2", "02", "箱", "501");
    addEntry("3", "03", "吨", "501");
    addEntry("4", "01", "红", "502");
    data.execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblSubType',4)");
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        data.execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                     ",'fSettleId',2)");
    }
    AppState& state = appState();
    state.gConnStr = connectionString();
    state.gMsgTitle = kTitle;
    state.gIsAdmin = 1;
    state.gLoginUserId = 7;
    state.gRightPrefix = std::string("Z");
}

void DictionaryStage::openManager(const Steps& steps) {
    appState().gItemCalled = 1;
    script().onWindow("frmJCBasicInfo", steps);
    frmJCBasicInfo::instance().show();
    script().finish();
}

void DictionaryStage::openList(int dictionary, int isReturn, const Steps& steps) {
    AppState& state = appState();
    state.gRetName.clear();
    state.gRetNumber.clear();
    state.gRetItemId.clear();
    state.gIsReturn = static_cast<std::int16_t>(isReturn);
    state.gItemCalled = static_cast<std::int16_t>(isReturn);
    state.gItemClassId = static_cast<std::int16_t>(dictionary);
    script().onWindow("frmJCZLList", steps);
    frmJCZLList::instance().show();
    script().finish();
}

Rows DictionaryStage::entries() {
    return database().rows("select fitemid,fnumber,fname,fitemclassid from tblSubType order by fitemid");
}

Rows listRows(User& user) {
    const auto& vsf1 = user.control<platform::ListGrid>("vsf1");
    Rows rows;
    for (int row = 1; row < vsf1.rowCount(); ++row)
        rows.push_back({vsf1.text(row, 0), vsf1.text(row, 1), vsf1.text(row, 2)});
    return rows;
}

}  // namespace orvenmod::test
