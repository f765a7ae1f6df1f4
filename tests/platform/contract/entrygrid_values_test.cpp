// What cells of numbers and days take, in which forms, and what they say where they refuse.
#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

class CellValues : public ToolkitContract {
protected:
    /// One cell of that type.
    void inCell(CellType type, const NumberRule& rule, const std::function<void(User&, EntryGrid&)>& steps) {
        ControlDesign design = drawn(ControlKind::entryGrid, "fps1", 0, 5000);
        design.width = 8000;
        design.columns = {{.title = "值", .width = 2500, .type = type}};
        toolkit.setClock([] { return Date{2026, 11, 22}; });
        use(
            windowWith({design}),
            [&](Window& window) {
                window.get<EntryGrid>("fps1").setRowCount(1);
                window.get<EntryGrid>("fps1").setNumberRule(1, 0, rule);
            },
            [&](User& user) { steps(user, user.control<EntryGrid>("fps1")); });
    }

    static void expectTaken(User& user, const std::string& typed, const std::string& text) {
        auto& grid = user.control<EntryGrid>("fps1");
        grid.setText(1, 1, "");
        user.typeCell("fps1", 1, 1, typed);
        EXPECT_EQ(grid.text(1, 1), text) << typed;
        EXPECT_EQ(grid.refusal(), "") << typed;
    }

    static void expectRefused(User& user, const std::string& typed, const std::string& why) {
        auto& grid = user.control<EntryGrid>("fps1");
        user.typeCell("fps1", 1, 1, typed);
        EXPECT_TRUE(grid.cellOpen()) << typed;
        EXPECT_EQ(grid.openText(), typed);
        EXPECT_EQ(grid.refusal(), why) << typed;
        user.press("Esc");
    }
};

TEST_F(CellValues, aNumberIsKeptInItsPlainForm) {
    inCell(CellType::number, {}, [](User& user, EntryGrid&) {
        expectTaken(user, "7.", "7");
        expectTaken(user, ".5", "0.5");
        expectTaken(user, "-.5", "-0.5");
        expectTaken(user, "1.50", "1.50");
        expectTaken(user, "+12", "12");
        expectTaken(user, "1,234.5", "1234.5");
        expectTaken(user, "-1,234,567", "-1234567");
        expectTaken(user, "１２３．５", "123.5");
        expectTaken(user, "－１，２３４", "-1234");
        expectTaken(user, "12。5", "12.5");
        expectTaken(user, "  8 ", "8");
        expectTaken(user, "", "");
    });
}

TEST_F(CellValues, whatIsNoNumberIsRefused) {
    inCell(CellType::number, {}, [](User& user, EntryGrid&) {
        for (const char* typed : {"abc", "1x", "-", ".", "1,23", "1,2345", ",123", "1.2.3", "1e5", "--1", "1 2"})
            expectRefused(user, typed, "请输入数字");
    });
}

TEST_F(CellValues, surplusDecimalsAreRefused) {
    inCell(CellType::number, {.decimals = 2}, [](User& user, EntryGrid& grid) {
        expectRefused(user, "3.145", "请输入数字，最多 2 位小数");
        grid.setNumberRule(1, 0, {.decimals = 0});
        expectRefused(user, "2.5", "请输入整数");
        expectTaken(user, "25", "25");
    });
}

TEST_F(CellValues, aNumberBeyondItsLimitsIsRefused) {
    inCell(CellType::number, {.decimals = 1, .minimum = 10, .maximum = 100}, [](User& user, EntryGrid& grid) {
        for (const char* typed : {"5", "150", "-12", "100.1", "9.9", "0", "99999999999999999999"})
            expectRefused(user, typed, "请输入 10 到 100 之间的数");
        expectRefused(user, "50.55", "请输入 10 到 100 之间的数，最多 1 位小数");
        expectTaken(user, "10", "10");
        expectTaken(user, "100.0", "100.0");
        grid.setNumberRule(1, 0, {.decimals = 0, .minimum = 0});
        expectRefused(user, "-1", "请输入不小于 0 的整数");
        expectTaken(user, "-0", "-0");
        grid.setNumberRule(1, 0, {.decimals = 2, .maximum = 99.95});
        expectRefused(user, "99.96", "请输入不大于 99.95 的数");
        expectTaken(user, "99.95", "99.95");
    });
}

TEST_F(CellValues, limitsHoldForDigitsThatABinaryNumberHasNot) {
    inCell(CellType::currency, {}, [](User& user, EntryGrid&) {
        expectTaken(user, "922337203685477", "922337203685477");
        expectRefused(user, "922337203685477.0001", "请输入不大于 922337203685477 的数");
        expectTaken(user, "12.75", "12.75");
        expectRefused(user, "12x.75", "请输入数字");
    });
}

TEST_F(CellValues, aDayIsUnderstoodInTheUsualForms) {
    inCell(CellType::date, {}, [](User& user, EntryGrid&) {
        for (const char* typed : {"20260304", "2026-3-4", "2026/3/4", "2026.3.4", "2026-03-04", "26-3-4", "26/03/04",
                                  "3-4", "3/4", "２０２６－３－４", "2026年3月4日", "3月4日", " 2026-3-4 "})
            expectTaken(user, typed, "2026-03-04");
        expectTaken(user, "2024-2-29", "2024-02-29");
        expectTaken(user, "00-1-1", "2000-01-01");
        expectTaken(user, "1753-1-1", "1753-01-01");
        expectTaken(user, "", "");
    });
}

TEST_F(CellValues, anythingElseIsNoDay) {
    inCell(CellType::date, {}, [](User& user, EntryGrid& grid) {
        grid.setText(1, 1, "2026-11-20");
        for (const char* typed :
             {"2026-02-30", "2026-2-29",  "2-29",     "2026",      "202603",     "260304",       "2026-3",
              "126-3-4",    "6-3-4",      "2026-3/4", "2026-3-4x", "-1-1-1",     "2026--3-4",    "0000-1-1",
              "0202-3-4",   "1752-12-31", "abc",      "0",         "2026-3-4-5", "2026-3-4 8:00"}) {
            expectRefused(user, typed, "请输入日期，如 2026-03-04");
            EXPECT_EQ(grid.text(1, 1), "2026-11-20") << typed;
        }
    });
}

}  // namespace
}  // namespace orvenmod::test
