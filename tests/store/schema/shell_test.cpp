// The database file stays readable without us: the plain sqlite3 shell reads every table and every class view.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"
#include "support/database.h"

namespace orvenmod::test {
namespace {

struct Answer {
    std::string text;
    bool succeeded = false;
};

Answer askShell(const std::string& file, const std::string& sql) {
    const std::string command = "sqlite3 -batch -readonly '" + file + "' \"" + sql + "\" 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    Answer answer;
    if (pipe == nullptr) return answer;
    std::array<char, 256> buffer{};
    while (fgets(buffer.data(), buffer.size(), pipe) != nullptr)
        answer.text += buffer.data();
    answer.succeeded = pclose(pipe) == 0;
    return answer;
}

class Shell : public testing::Test {
protected:
    Shell() {
        store::sqlite::SqliteStore store;
        const auto connection = store.connect(connectionStringFor(file()) + ";Mode=Create");
        store::createSchema(*connection);
        connection->execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fNBNumber,fShortNumber) "
            "values(5,'01','中性笔',3,0,'.5.','01')");
        connection->execute(
            "insert into ICItem(fItemId,fNumber,fName,fModel,fUnit) values(5,'01','中性笔','0.5mm','支')");
        connection->execute("insert into tblTimeStock(fItemId,fStockId,fQty,fAmount) values(5,1,12.5,30)");
        connection->close();
        store::sqlite::SqliteStore::dropIdleHandles();
    }

    std::string file() const { return folder_.file("suite.db"); }

private:
    TemporaryFolder folder_;
};

TEST_F(Shell, readsEveryTable) {
    for (const store::SchemaTable& table : store::schemaTables()) {
        const Answer answer = askShell(file(), "select count(*) from " + std::string(table.name));
        EXPECT_TRUE(answer.succeeded) << table.name << ": " << answer.text;
    }
}

TEST_F(Shell, readsTheClassViewsWithTheirTexts) {
    const Answer answer = askShell(file(), "select fNumber,fName,fModel,fUnit,fNBNumber from vICItem");
    EXPECT_TRUE(answer.succeeded);
    EXPECT_EQ(answer.text, "01|中性笔|0.5mm|支|.5.\n");
}

TEST_F(Shell, findsTheFileSound) { EXPECT_EQ(askShell(file(), "pragma integrity_check").text, "ok\n"); }

}  // namespace
}  // namespace orvenmod::test
