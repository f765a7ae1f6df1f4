// The data control: its own connection, and rows bound to a list grid.
#include "frame/adodc.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/memory/memorytoolkit.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using Texts = std::vector<std::string>;

platform::WindowDesign gridDesign() {
    platform::WindowDesign made;
    made.name = "frmGrid";
    made.controls.push_back({.kind = platform::ControlKind::listGrid, .name = "vsf1", .fixedColumns = 1});
    return made;
}

class DataControl : public ::testing::Test {
protected:
    DataControl() { stage.database().addGoods(); }
    void refresh(Adodc& data, const std::string& sql) {
        data.setRecordSource(sql);
        data.refresh();
    }

    Stage stage;
    std::unique_ptr<platform::Window> window = stage.script().toolkit().createWindow(gridDesign());
    platform::ListGrid& grid = window->get<platform::ListGrid>("vsf1");
};

TEST_F(DataControl, bindsTheRowsBehindTheFixedColumn) {
    Adodc data(grid);
    data.setConnectionString(stage.connectionString());
    refresh(data, "select fItemId,fName,fStatus from tblItem where fItemId=12");
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.columnCount(), 4);
    EXPECT_EQ(grid.value(1, 1), "12");
    EXPECT_EQ(grid.value(1, 2), "五金");
    EXPECT_EQ(grid.value(1, 3), "") << "null";
}

TEST_F(DataControl, keepsItsConnectionAndLetsItGoAtItsEnd) {
    {
        Adodc data(grid);
        data.setConnectionString(stage.connectionString());
        EXPECT_EQ(stage.connectionsAlive(), 0);
        refresh(data, "select fItemId from tblItem");
        data.setConnectionString(stage.connectionString());
        refresh(data, "select fItemId from tblItem where 1=2");
        EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "open"}));
        EXPECT_EQ(stage.connectionsAlive(), 1);
    }
    EXPECT_EQ(stage.connectionsAlive(), 0);
    EXPECT_EQ(grid.rowCount(), 1) << "the rows outlive the connection";
}

TEST_F(DataControl, anotherConnectionStringMakesAnotherConnection) {
    const Database other;
    Adodc data(grid);
    data.setConnectionString(stage.connectionString());
    refresh(data, "select fItemId from tblItem");
    EXPECT_EQ(grid.rowCount(), 8);
    data.setConnectionString(other.connectionString());
    data.refresh();
    EXPECT_EQ(grid.rowCount(), 1);
    EXPECT_EQ(stage.connectionsAlive(), 1);
}

TEST_F(DataControl, aFailedQueryKeepsTheRows) {
    Adodc data(grid);
    data.setConnectionString(stage.connectionString());
    refresh(data, "select fItemId from tblItem");
    EXPECT_THROW(refresh(data, "select fNone from tblItem"), store::Failure);
    EXPECT_EQ(grid.rowCount(), 8);
    refresh(data, "select fItemId from tblItem where fItemId<13");
    EXPECT_EQ(grid.rowCount(), 2);
}

TEST_F(DataControl, aFailedConnectionIsTriedAgain) {
    Adodc data(grid);
    data.setConnectionString(stage.connectionString());
    data.setRecordSource("select fItemId from tblItem");
    stage.faults().failAt = 1;
    EXPECT_THROW(data.refresh(), store::Failure);
    EXPECT_EQ(stage.connectionsAlive(), 0);
    data.refresh();
    EXPECT_EQ(grid.rowCount(), 8);
}

TEST_F(DataControl, windowsPaintWhileAStatementTakesLong) {
    const auto& toolkit = dynamic_cast<platform::memory::MemoryToolkit&>(stage.script().toolkit());
    Adodc data(grid);
    data.setConnectionString(stage.connectionString());
    refresh(data, "select fItemId from tblItem");
    const int before = toolkit.paints();
    ASSERT_TRUE(stage.progress());
    stage.progress()();
    EXPECT_EQ(toolkit.paints(), before + 1);
}

}  // namespace
}  // namespace orvenmod::test
