#include "suite.h"

#include <filesystem>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>
#include <orvenmod/schema.h>
#include <orvenmod/settings.h>
#include <orvenmod/statements.h>

#include "sampledata.h"

namespace orvenmod::sample {
namespace {

constexpr const char* kShared = "Orvencom";

void save(const std::string& section, const std::string& key, const std::string& value) {
    SaveSetting(kShared, section, key, value);
}

}  // namespace

const char* const kNewerDatabase = "数据库由较新的版本建立，不能打开。请先升级本程序。";

Suite::Suite(const std::string& databaseFile, const std::string& server)
    : databaseFile_(std::filesystem::absolute(databaseFile).string()),
      connectionString_(server.empty() ? "Provider=SQLite;Data Source=" + databaseFile_ : server) {}

void Suite::create(int goods) const {
    CreateSchema(connectionString_);
    Statements statements(connectionString_);
    fillSampleData(statements, goods);
    // The page of the printed lists lies in the suite's folder; one that is there already is the user's own.
    namespace fs = std::filesystem;
    fs::copy_file(ORVEN_SAMPLE_TEMPLATE, fs::path(databaseFile_).parent_path() / "Report3.grf",
                  fs::copy_options::skip_existing);
}

DatabaseAge Suite::age() const {
    const int version = SchemaVersion(connectionString_);
    if (version == NewestSchemaVersion()) return DatabaseAge::present;
    return version < NewestSchemaVersion() ? DatabaseAge::older : DatabaseAge::newer;
}

void Suite::upgrade() const { UpgradeSchema(connectionString_); }

std::vector<SuiteUser> Suite::users() const {
    Statements statements(connectionString_);
    std::vector<SuiteUser> users;
    for (auto rows = statements.open("select fUserId,fName,fIsAdmin from tblUser order by fUserId"); !rows.eof();
         rows.moveNext()) {
        users.push_back({std::stoi(rows.text("fUserId")), rows.text("fName"), rows.text("fIsAdmin") == "1"});
    }
    return users;
}

std::vector<Warehouse> Suite::warehouses() const {
    Statements statements(connectionString_);
    std::vector<Warehouse> warehouses;
    for (auto rows = statements.open("select fItemId,fName from tblStock order by fNumber"); !rows.eof();
         rows.moveNext()) {
        warehouses.push_back({std::stoi(rows.text("fItemId")), rows.text("fName")});
    }
    return warehouses;
}

std::vector<OwnClass> Suite::ownClasses() const {
    Statements statements(connectionString_);
    std::vector<OwnClass> classes;
    for (auto rows = statements.open("select fItemClassId,fItemName from tblItemClass where fItemType='0' and "
                                     "fItemClassId not in (1,2,3,11) and fItemClassId<=32767 order by fItemClassId");
         !rows.eof(); rows.moveNext()) {
        classes.push_back({static_cast<std::int16_t>(std::stoi(rows.text("fItemClassId"))), rows.text("fItemName")});
    }
    return classes;
}

void Suite::designClasses() const {
    clsHSXMManage classes;
    classes.DBConnection = connectionString_;
    classes.mainInterface();
}

void Suite::keepDictionaries() const {
    clsJCZL dictionaries;
    dictionaries.mainInterface(connectionString_);
}

Result Suite::pickDictionary(std::int16_t dictionary) const {
    clsJCZL dictionaries;
    dictionaries.mainSingleInterface(1, dictionary, connectionString_);
    return {dictionaries.fItemId, dictionaries.fNumber, dictionaries.fName, {}};
}

void Suite::logIn(const SuiteUser& user) const {
    save("SystemSetup", "msgTitle", "裕丰商行");
    save("SystemSetup", "intZeroNumber", "2");
    save("SystemSetup", "gAppPath", std::filesystem::path(databaseFile_).parent_path().string());
    save("SystemLogin", "IsAdmin", user.administrator ? "1" : "0");
    save("SystemLogin", "gLoginUserId", std::to_string(user.id));
    save("SystemLogin", "gLoginUserName", user.name);
}

Result Suite::open(const Request& request) const {
    const bool picker = request.openAs != OpenAs::management;
    // The two values hold for one window only; the component sets them back when it closes.
    save("ShowStock", "StockId", std::to_string(picker ? request.warehouse : 0));
    save("ShowStock", "PerFKC", picker && request.onlyInStock ? "-1" : "0");
    clsBasicInfo items;
    items.mainInterface(request.itemClass, "", request.find, connectionString_, picker ? 1 : 0,
                        std::int16_t{request.openAs == OpenAs::billPicker ? std::int16_t{1} : std::int16_t{0}});
    Result result{items.fItemId, items.fNumber, items.fName, {}};
    if (result.itemId == "-1") result.rows = billRows();
    return result;
}

std::vector<BillRow> Suite::billRows() const {
    Statements statements(connectionString_);
    const std::string user = GetSetting(kShared, "SystemLogin", "gLoginUserId", "0");
    std::vector<BillRow> result;
    auto rows = statements.open(
        "select a.fQty,b.fNumber,b.fName from tblItemInput as a left outer join ICItem as b on a.fItemId=b.fItemId "
        "where a.fUserId=" +
        user + " order by a.fEntryId");
    for (; !rows.eof(); rows.moveNext()) {
        result.push_back({rows.text("fNumber"), rows.text("fName"), rows.text("fQty")});
    }
    return result;
}

}  // namespace orvenmod::sample
