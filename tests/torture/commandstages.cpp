#include "torture/commandstages.h"

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "editor/editortest.h"
#include "store/sqlite/sqlitestore.h"
#include "support/sourcefolder.h"
#include "torture/commands.h"
#include "torture/states.h"

namespace orvenmod::test {

namespace {

const TemporaryFolder& folderOfStages() {
    static const TemporaryFolder folder;
    return folder;
}

void add(Database& data) {
    data.execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
    data.execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName) values(101,1,'图纸','a.pdf')");
    data.execute("delete from tblBillInfo");
    data.execute("delete from tblbillinfoentry");
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        for (const char* kind : {"1", "2"}) {
            data.execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                         (*kind == '1' ? ",'fCustId'," : ",'fSettleId',") + kind + ")");
        }
    }
    data.execute("delete from tblItemClass where fItemType='1'");
    data.execute("delete from tblSubType");
    data.execute("insert into tblItemClass(fItemClassId,fItemName,fItemType,fItemTable) values(501,'单位','1','')");
    data.execute("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(1,'01','个',501)");
    data.execute("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(2,'02','箱',501)");
    data.execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblSubType',2)");
}

void makeOwnClass(const std::string& file) {
    const TemporaryFolder folder;
    Desk desk(connectionStringFor(file), folder.path());
    for (const Command& part :
         {Command{"class", "数据保存成功！", [](Desk& at) { makeClass(at, "50", "设备"); }},
          Command{"field", "数据保存成功!", [](Desk& at) { makeField(at, "50", "供应商", 2); }}}) {
        desk.play(part);
        if (!desk.told()) throw std::runtime_error("no " + part.name + ": " + desk.account());
    }
}

}  // namespace

const std::string& suiteFile() {
    static const std::string file = [] {
        const std::string path = folderOfStages().file("suite.db");
        {
            EditorStage stage(newMemoryScript, newFileSite(path));
            add(stage.database());
        }
        makeOwnClass(path);
        store::sqlite::SqliteStore::dropIdleHandles();
        return path;
    }();
    return file;
}

const std::string& firstVersionFile() {
    static const std::string file = [] {
        const std::string path = folderOfStages().file("first.db");
        sqlite3* made = nullptr;
        sqlite3_open(path.c_str(), &made);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(made, sqlite3_close);
        const std::string schema = contentsOf(sourceFile("tests/store/schema/first_schema.sql"));
        if (sqlite3_exec(made, schema.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(made));
        return path;
    }();
    return file;
}

}  // namespace orvenmod::test
