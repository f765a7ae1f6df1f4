// Makes a suite's database with one item and has the user pick it: ahost FILE
#include <iostream>

#include <orvenmod/orvenmod.h>

// From the README.
std::string pickGoods(const std::string& database, const std::string& searchText);

int main(int count, char** arguments) {
    if (count != 2) return 2;
    try {
        const std::string file = arguments[1];
        const std::string database = "Provider=SQLite;Data Source=" + file;
        orvenmod::CreateSchema(database);
        orvenmod::Statements statements(database);
        statements.execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,"
            "fShortNumber) values(7,'01','中性笔',3,0,1,1,0,'.7.','01')");
        statements.execute("insert into ICItem(fItemId,fNumber,fName) values(7,'01','中性笔')");
        const std::string picked = pickGoods(file, "中性");
        std::cout << orvenmod::version() << " picked " << picked << '\n';
        return picked == "7" ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
