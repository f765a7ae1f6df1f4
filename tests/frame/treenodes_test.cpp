// Nodes of a tree by key and by place.
#include "frame/treenodes.h"

#include <gtest/gtest.h>

#include "frame/conversion.h"
#include "platform/memory/memorytoolkit.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

TEST(TreeNodes, aKeyIsALetterAndAnId) {
    EXPECT_EQ(keyNumber("D12"), 12);
    EXPECT_EQ(keyNumber("D0"), 0);
    EXPECT_EQ(keyText("D012"), "012");
}

TEST(TreeNodes, aKeyWithoutAnIdIsThatOfTheRoot) {
    EXPECT_EQ(keyNumber("D"), 0);
    EXPECT_EQ(keyNumber(""), 0);
    EXPECT_EQ(keyText("D"), "");
    EXPECT_EQ(keyText(""), "");
}

TEST(TreeNodes, anIdThatIsNoNumberIsAFailure) { EXPECT_THROW(keyNumber("Dx"), ConversionFailure); }

TEST(TreeNodes, theSelectionIsTakenByPlaceAndKeptWhereThePlaceIsGone) {
    Stage stage;
    platform::WindowDesign design;
    design.name = "frmTree";
    design.controls.push_back({.kind = platform::ControlKind::tree, .name = "tv1"});
    const auto window = stage.script().toolkit().createWindow(design);
    auto& tree = window->get<platform::Tree>("tv1");
    EXPECT_EQ(selectedIndex(tree), 0);
    tree.add("", "D0", "全部", "");
    tree.add("D0", "D7", "文具", "");
    selectIndex(tree, 2);
    EXPECT_EQ(tree.selected(), "D7");
    EXPECT_EQ(selectedIndex(tree), 2);
    selectIndex(tree, 3);
    selectIndex(tree, 0);
    EXPECT_EQ(tree.selected(), "D7");
}

}  // namespace
}  // namespace orvenmod::test
