#include <orvenmod/clsBasicInfo.h>

#include <exception>

#include "entry/entry.h"
#include "entry/windows.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "store/classrights.h"

namespace orvenmod {

namespace {

constexpr const char* kDecimals = "intZeroNumber";
constexpr std::int16_t kMostDecimals = 10;  // of a number cell

void readLogin() { appState().gLoginUserId = settingInt32("SystemLogin", "gLoginUserId", "0"); }

void readDecimals() {
    const std::int16_t decimals = settingInt16("SystemSetup", kDecimals, "2");
    if (decimals < 0 || decimals > kMostDecimals) {
        throw ConversionFailure(
            ConversionFailure::kInvalidCall,
            blameSetting("小数位数应为 0 到 " + std::to_string(kMostDecimals), kDecimals, std::to_string(decimals)));
    }
    appState().gZeroNumber = decimals;
}

void clearResults() {
    AppState& state = appState();
    state.gRetNumber.clear();
    state.gRetItemId.clear();
    state.gRetName.clear();
}

}  // namespace

clsBasicInfo::clsBasicInfo() {
    initializeClass();
    readLogin();
    readDecimals();
    objectCreated();
}

clsBasicInfo::~clsBasicInfo() {
    dropConnectionOfObject();
    objectDestroyed();
}

bool clsBasicInfo::mainInterface(const std::int16_t& intFitemClassId, const std::string& /*strFindField*/,
                                 const std::string& findValue, const std::string& strDBConn,
                                 const std::int16_t& intIsReturn, const Variant& intItemCalled,
                                 const Variant& strParamSQL) {
    const RunningEntry running;
    AppState& state = appState();
    state.gItemAllName = setting("SystemSetup", "gItemAllName", "货品");
    state.gAppPath = setting("SystemSetup", "gAppPath", "");
    state.gRightPrefix.assign(1, store::kClassRights);
    state.gNoNewAfterSave = 0;
    fItemClassId = intFitemClassId;
    state.gConnStr = strDBConn;
    state.gParamSQL = variantText(strParamSQL);
    state.gFindValue = findValue;
    state.gItemClassId = intFitemClassId;
    state.gIsReturn = intIsReturn;
    readLogin();
    state.gLoginUserName = setting("SystemLogin", "gLoginUserName", "");
    clearResults();
    openDB();
    try {
        lookUpClass();
        state.gItemCalled = variantText(intItemCalled).empty() ? std::int16_t{0} : variantInt16(intItemCalled);
        showModal(windows().frmBasicInfoList);
        state.gParamSQL.clear();
        fNumber = state.gRetNumber;
        fItemId = state.gRetItemId;
        fName = state.gRetName;
        dropConnection();
    } catch (const std::exception& failure) {
        showCritical(failure);
        closeDB();
    }
    return false;
}

// An unknown class keeps what the last entry left, and nothing tells so.
void clsBasicInfo::lookUpClass() const {
    AppState& state = appState();
    const store::Recordset rows =
        openRows("select * from tblItemClass where fitemclassid=" + std::to_string(fItemClassId));
    if (!rows.eof()) {
        state.gItemName = rows.text("fItemName");
        state.gItemTable = rows.text("fItemTable");
        state.gViewName = rows.text("fViewName");
    }
    closeDB();
}

}  // namespace orvenmod
