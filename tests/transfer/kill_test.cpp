// A process that is killed in the middle of an import leaves whole rows only, and a second import finishes the work.
#include "support/childprogram.h"
#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

constexpr int kRows = 1100;

TEST(ImportKill, wholeRowsStayAndASecondImportFinishes) {
    // Within the first transaction, at its commit, behind it, and in the last.
    for (const int count : {2, 900, 3001, 3003, 6590}) {
        SCOPED_TRACE(count);
        ImportStage stage;
        Lines lines = {{"短代码", "名称"}};
        for (int row = 0; row < kRows; ++row)
            lines.push_back({"N" + std::to_string(row), "货" + std::to_string(row)});
        const std::string file = stage.workbook(lines);
        ChildProgram killed(ORVEN_IMPORT_CHILD, {stage.connectionString(), file, std::to_string(count)});
        EXPECT_EQ(killed.end(), -1);
        const std::size_t stored = stage.added().size();
        EXPECT_EQ(stored % 500, 0U);
        EXPECT_LT(stored, static_cast<std::size_t>(kRows));
        EXPECT_EQ(stage.database().value("select count(*) from ICItem where fItemId>202"), std::to_string(stored));
        stage.import([&](User& user) {
            toCheck(user, file);
            user.click("cmdNext");
            EXPECT_EQ(caption(user, "lblResult"),
                      "新增 " + std::to_string(kRows - static_cast<int>(stored)) + " 行，修改 0 行，拒绝 0 行。");
        });
        EXPECT_EQ(stage.added().size(), static_cast<std::size_t>(kRows));
        EXPECT_EQ(stage.database().value("select count(*) from ICItem where fItemId>202"), std::to_string(kRows));
    }
}

}  // namespace
}  // namespace orvenmod::test
