// What the tests of the class designer share: a stage that opens frmHSXM, the dialogs as an administrator works them,
// and a dump of the whole database to compare.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "designer/frmItem.h"
#include "frame/appstate.h"
#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/listgrid.h"
#include "platform/tree.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

inline constexpr const char* kClassSaved = "数据保存成功！";
inline constexpr const char* kFieldSaved = "数据保存成功!";
inline constexpr const char* kNoTransaction = "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。";

/// A new class as typed; an empty table keeps the proposal.
struct ClassInput {
    std::string id;
    std::string name;
    std::string table = {};
};

enum class FieldType { text, date, number, currency };

/// A new field as typed. An empty field name keeps the proposal; `lookup` is the entry of the list, 0 for none.
struct FieldInput {
    std::string name;
    std::string field = {};
    FieldType type = FieldType::text;
    int lookup = 0;
    std::string decimals = {};
    std::string maximum = {};
    std::string minimum = {};
    std::string fallback = {};
    bool required = false;
};

FieldInput numberField(const std::string& name, const std::string& field = "");

class DesignerStage : public Stage {
public:
    explicit DesignerStage(MakeScript makeScript = newMemoryScript);

    /// Opens frmHSXM, plays the steps and closes it; every box must have been answered.
    void open(const Steps& steps);

    // Within frmHSXM; each opens the dialog and plays the steps in it.
    void inNewClass(User& designer, const Steps& steps);
    void inNewField(User& designer, const Steps& steps);
    void inSetup(User& designer, const Steps& steps);

    // Within frmHSXM: the whole of a dialog, with its success.
    void makeClass(User& designer, const ClassInput& made);
    void makeField(User& designer, const FieldInput& made);

    /// As an administrator before this test: a class and its fields, made in the designer.
    void withClass(const ClassInput& made, const std::vector<FieldInput>& fields = {});
    /// A dictionary of two entries.
    void withDictionary(int id, const std::string& name);
};

// Within the dialogs.
void typeClass(User& dialog, const ClassInput& made);
void typeField(User& dialog, const FieldInput& made);

/// The cells of the designer's grid, a row a field; cells behind the last filled one are left out.
Rows gridRows(User& designer);
/// The keys of the tree's nodes in order.
Texts treeKeys(User& designer);

class DesignerTest : public ::testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    void open(const Steps& steps) { stage.open(steps); }

    DesignerStage stage;
};

}  // namespace orvenmod::test
