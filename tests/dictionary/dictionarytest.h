// What the tests of the dictionary share: a stage with two dictionaries and the calls that open its windows as the
// entry class does.
//
//   501 单位   1 01 个   2 02 箱   3 03 吨
//   502 颜色   4 01 红
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/controls.h"
#include "platform/listgrid.h"
#include "platform/tree.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

inline const std::string kSaved = "数据保存成功！";
inline const std::string kChanged = "数据修改成功！";
inline const std::string kDeleted = "数据删除成功！";
inline const std::string kAskDelete = "确定要删除吗？";

/// User 7, an administrator.
class DictionaryStage : public Stage {
public:
    explicit DictionaryStage(MakeScript makeScript = newMemoryScript);

    /// The manager, as a host's mainInterface opens it.
    void openManager(const Steps& steps);
    /// The list of one dictionary, as a host's mainSingleInterface opens it.
    void openList(int dictionary, int isReturn, const Steps& steps);

    /// All entries by id: id, code, name, dictionary.
    Rows entries();
};

class DictionaryTest : public testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    void TearDown() override { stage.finish(); }

    DictionaryStage stage;
};

/// The data rows of the list: id, code and name.
Rows listRows(User& user);

}  // namespace orvenmod::test
