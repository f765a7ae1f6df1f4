#include "frame/scaling.h"

#include <gtest/gtest.h>

#include "frame/conversion.h"
#include "platform/controls.h"
#include "support/user.h"

namespace orvenmod::test {
namespace {

using platform::ControlDesign;
using platform::ControlKind;

platform::WindowDesign design(float width = 10000, float height = 5000) {
    platform::WindowDesign made;
    made.name = "frmScaled";
    made.width = width;
    made.height = height;
    const auto add = [&made](ControlKind kind, std::string_view name, std::string_view tag = "") {
        made.controls.push_back(
            {.kind = kind, .name = name, .left = 1000, .top = 500, .width = 2000, .height = 400, .tag = tag});
    };
    add(ControlKind::toolbar, "Toolbar1");
    add(ControlKind::button, "cmdPlain");
    add(ControlKind::button, "cmdLeft", " l ");
    add(ControlKind::button, "cmdTop", "t");
    add(ControlKind::button, "cmdRight", "r");
    add(ControlKind::button, "cmdAll", "xltry");
    add(ControlKind::combo, "PC");
    add(ControlKind::edit, "txtSearch");
    for (const char* name : {"txtChecker", "txtBiller", "txtBillNo", "thdate"})
        add(ControlKind::label, name);
    add(ControlKind::label, "stb1");
    add(ControlKind::imageList, "ImageList1");
    add(ControlKind::fileDialog, "cd1");
    made.menus.push_back({.name = "MenuFile", .caption = "文件(&F)"});
    return made;
}

class Scaling : public ::testing::Test {
protected:
    void load() {
        positions.assign(window->controls().size(), {});
        GetSourcePos(*window, positions);
    }
    void resize(float width, float height) {
        window->setInnerSize(width, height);
        SetNewPos(*window, positions);
    }
    platform::Control& control(const std::string& name) { return *window->find(name); }
    void expectPlace(const std::string& name, float left, float top, float width, float height) {
        const platform::Control& placed = control(name);
        EXPECT_NEAR(placed.left(), left, 0.5) << name;
        EXPECT_NEAR(placed.top(), top, 0.5) << name;
        EXPECT_NEAR(placed.width(), width, 0.5) << name;
        EXPECT_NEAR(placed.height(), height, 0.5) << name;
    }
    const ControlPos& positionOf(const std::string& name) {
        const auto& controls = window->controls();
        for (std::size_t i = 0; i < controls.size(); ++i) {
            if (controls[i]->name() == name) return positions[i];
        }
        throw std::out_of_range(name);
    }

    std::unique_ptr<Script> script = newMemoryScript();
    std::unique_ptr<platform::Window> window = script->toolkit().createWindow(design());
    std::vector<ControlPos> positions;
};

TEST_F(Scaling, aPositionIsRecordedAsFractionsAndDistances) {
    load();
    const ControlPos& plain = positionOf("cmdPlain");
    EXPECT_FLOAT_EQ(plain.sngLeft, 0.1F);
    EXPECT_FLOAT_EQ(plain.sngTop, 0.1F);
    EXPECT_FLOAT_EQ(plain.sngWidth, 0.2F);
    EXPECT_FLOAT_EQ(plain.sngHeight, 0.08F);
    EXPECT_FLOAT_EQ(plain.sngRight, 7000);
    EXPECT_FLOAT_EQ(plain.sngBottom, 4100);
}

TEST_F(Scaling, comboBoxesHaveNoHeightAndNoDistances) {
    load();
    const ControlPos& combo = positionOf("PC");
    EXPECT_FLOAT_EQ(combo.sngLeft, 0.1F);
    EXPECT_FLOAT_EQ(combo.sngWidth, 0.2F);
    EXPECT_FLOAT_EQ(combo.sngTop, 0.1F);
    EXPECT_EQ(combo.sngHeight, 0);
    EXPECT_EQ(combo.sngRight, 0);
    EXPECT_EQ(combo.sngBottom, 0);
}

TEST_F(Scaling, editBoxesHaveAHeightButNoDistances) {
    load();
    const ControlPos& edit = positionOf("txtSearch");
    EXPECT_FLOAT_EQ(edit.sngHeight, 0.08F);
    EXPECT_EQ(edit.sngRight, 0);
    EXPECT_EQ(edit.sngBottom, 0);
}

TEST_F(Scaling, whatHasNoPositionTakesUpAnIndexAndStaysZero) {
    load();
    for (const char* name : {"Toolbar1", "stb1", "ImageList1", "cd1", "MenuFile"}) {
        const ControlPos& position = positionOf(name);
        EXPECT_EQ(position.sngLeft + position.sngTop + position.sngWidth + position.sngHeight + position.sngRight +
                      position.sngBottom,
                  0)
            << name;
    }
    EXPECT_NE(positionOf("cmdPlain").sngLeft, 0);
}

TEST_F(Scaling, atItsDesignSizeEverythingStaysWhereItIs) {
    load();
    resize(10000, 5000);
    expectPlace("cmdPlain", 1000, 500, 2000, 400);
    expectPlace("cmdLeft", 1000, 500, 2000, 400);
    expectPlace("cmdTop", 1000, 500, 2000, 400);
    expectPlace("txtBillNo", 1000, 500, 2000, 400);
}

TEST_F(Scaling, aControlKeptAtTheRightEdgeMovesEightyUnitsFromItsDesignPlace) {
    load();
    resize(10000, 5000);
    expectPlace("cmdRight", 920, 500, 2000, 400);
}

TEST_F(Scaling, controlsFollowTheWindow) {
    load();
    resize(20000, 10000);
    expectPlace("cmdPlain", 2000, 1000, 4000, 800);
    expectPlace("cmdLeft", 1000, 1000, 4000, 800);
    expectPlace("cmdTop", 2000, 500, 4000, 800);
    expectPlace("cmdRight", 20000 - 7000 - 4000 - 80, 1000, 4000, 800);
}

TEST_F(Scaling, lettersOfTheTagAreFoundAnywhereInIt) {
    load();
    resize(20000, 10000);
    expectPlace("cmdAll", 20000 - 7000 - 4000 - 80, 500, 4000, 800);
}

TEST_F(Scaling, theFieldsOfABillsHeadKeepTheirWidth) {
    load();
    resize(20000, 10000);
    for (const char* name : {"txtChecker", "txtBiller", "txtBillNo", "thdate"})
        expectPlace(name, 2000, 1000, 2000, 800);
}

TEST_F(Scaling, anEditBoxHasAFixedHeight) {
    load();
    resize(20000, 10000);
    expectPlace("txtSearch", 2000, 1000, 4000, 315);
}

TEST_F(Scaling, aComboBoxKeepsItsOwnHeight) {
    load();
    const float own = control("PC").height();
    resize(20000, 10000);
    expectPlace("PC", 2000, 1000, 4000, own);
}

TEST_F(Scaling, theControlsWithoutAPositionAreLeftAlone) {
    load();
    resize(20000, 10000);
    expectPlace("stb1", 1000, 500, 2000, 400);
    expectPlace("ImageList1", 1000, 500, 2000, 400);
}

TEST_F(Scaling, controlsShrinkWithoutALowerLimit) {
    load();
    resize(10, 5);
    expectPlace("cmdPlain", 1, 0.5F, 2, 0.4F);
}

TEST_F(Scaling, aControlAddedAfterTheLoadIsAFailure) {
    load();
    positions.resize(5);
    EXPECT_THROW(resize(20000, 10000), std::out_of_range);
}

TEST_F(Scaling, anInnerSizeOfZeroFailsAtLoad) {
    window->setInnerSize(0, 5000);
    EXPECT_THROW(load(), ConversionFailure);
    window->setInnerSize(10000, 0);
    EXPECT_THROW(load(), ConversionFailure);
}

TEST_F(Scaling, anInnerSizeBeyondSixteenBitsFails) {
    window->setInnerSize(32768, 5000);
    EXPECT_THROW(load(), ConversionFailure);
    window->setInnerSize(10000, 5000);
    load();
    EXPECT_NO_THROW(resize(32767, 5000));
    EXPECT_THROW(resize(32768, 5000), ConversionFailure);
    EXPECT_THROW(resize(10000, 32768), ConversionFailure);
}

}  // namespace
}  // namespace orvenmod::test
