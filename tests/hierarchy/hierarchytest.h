// What the tests of categories, moves and guarded deletes share: a stage with the goods of Database::addGoods and a
// plain window in place of the item list.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hierarchy/itemcommands.h"
#include "hierarchy/listwindow.h"
#include "platform/controls.h"
#include "platform/listgrid.h"
#include "platform/tree.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

inline const std::string kSaved = "数据保存成功！";

/// A window "frmPlainList" with the tree tv1, the list vsf1 and a button for each command, named as its menu.
class PlainList : public ListWindow {
public:
    PlainList();

    void show();
    platform::Tree& tv1() override { return window_->get<platform::Tree>("tv1"); }
    platform::ListGrid& vsf1() override { return window_->get<platform::ListGrid>("vsf1"); }
    void getListInfo(std::int16_t intType) override;

    /// What getListInfo was asked for, in order.
    std::vector<int> asked;

private:
    void fillTree();
    void fillList();

    std::unique_ptr<platform::Window> window_;
    ItemCommands commands_;
};

/// User 7, an administrator, works on class 3.
class HierarchyStage : public Stage {
public:
    explicit HierarchyStage(MakeScript makeScript = newMemoryScript);

    /// Opens the plain list, plays the steps and closes it; every box must have been answered.
    void open(const Steps& steps);
    /// Opens the list and over it frmParent: for a new category, or for a change of one.
    void openNew(const Steps& steps);
    void openUpdate(int category, const Steps& steps);

    std::vector<int> asked;  ///< of the last list

    /// Leaves the catalogue of bill fields with fCustId of the heads, once for each family.
    void catalogueOneFieldAFamily();

    /// id, code, path, depth, parent, short code and name of the class's rows, by id.
    Rows items();
    /// id and code of the class's table.
    Rows goods();

private:
    void openDialog(const std::string& button, const std::string& node, const Steps& steps);
};

class HierarchyTest : public testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    void TearDown() override { stage.finish(); }

    HierarchyStage stage;
};

/// The text that a store gives for a rollback without a transaction.
std::string rollbackFailure(Stage& stage);

}  // namespace orvenmod::test
