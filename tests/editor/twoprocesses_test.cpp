// Two clerks at two machines save into one database at once. The id is read and then moved on without a lock, so both
// can get the same one: the database refuses one of them, who presses again. And a machine can die in the middle.
#include <algorithm>
#include <fstream>
#include <iostream>

#include "editor/editortest.h"
#include "support/childprogram.h"
#include "support/serverdifferences.h"

namespace orvenmod::test {
namespace {

constexpr int kEach = 100;
constexpr int kLastId = 202;  // of the stage

struct ClerkAtWork {
    std::string name;
    int firstCode;
};

const ClerkAtWork kClerks[] = {{"甲", 1000}, {"乙", 5000}};

class EditorTwoProcesses : public EditorTest {
protected:
    EditorTwoProcesses() { std::ofstream(file_) << "plan"; }

    Texts argumentsOf(const ClerkAtWork& clerk, int items) {
        // Whoever waits for the other one's save must not give up on a slow machine.
        return {stage.connectionString() + ";Busy Timeout=120000", clerk.name, std::to_string(clerk.firstCode),
                std::to_string(items), file_};
    }

    // Lets both save at the same time; what they tell of their refused saves.
    Texts saveAtOnce() {
        ChildProgram first(ORVEN_SAVE_CHILD, argumentsOf(kClerks[0], kEach));
        ChildProgram second(ORVEN_SAVE_CHILD, argumentsOf(kClerks[1], kEach));
        Texts refused;
        for (ChildProgram* clerk : {&first, &second})
            EXPECT_EQ(clerk->line(), "ready");
        for (ChildProgram* clerk : {&first, &second})
            clerk->tell("go");
        for (ChildProgram* clerk : {&first, &second}) {
            while (const auto line = clerk->line()) {
                if (!line->starts_with("stored\t")) refused.push_back(*line);
            }
            EXPECT_EQ(clerk->end(), 0);
        }
        return refused;
    }

    int count(const std::string& rest) { return std::stoi(database().value("select count(*) from " + rest)); }

    // So many new items, each with its row in both tables, its attachment, and its place below its category: its path
    // is that of the category with its own id.
    void expectWholeItems(int items) {
        EXPECT_EQ(count("tblItem where fItemId>202"), items);
        EXPECT_EQ(count("ICItem where fItemId>202"), items);
        EXPECT_EQ(count("tblItem as a,ICItem as b where a.fItemId=b.fItemId and a.fNumber=b.fNumber and "
                        "a.fName=b.fName and a.fItemId>202"),
                  items);
        EXPECT_EQ(count("tblItemFJ"), items);
        EXPECT_EQ(count("tblItemFJ as a,tblItem as b where a.fItemId=b.fItemId and a.fName=b.fName and a.fEntryId=1 "
                        "and datalength(a.fFJ)=4"),
                  items);
        EXPECT_EQ(count("tblItem as a,tblItem as b where a.fItemId>202 and b.fItemId=a.fParentId and b.fItemId=13 and "
                        "b.fIsDetail=0 and a.fDepth=b.fDepth+1 and "
                        "a.fNBNumber=b.fNBNumber+cast(a.fItemId as varchar(10))+'.'"),
                  items);
        EXPECT_EQ(count("vICItem where fItemId>202 and fParentId=13 and fParentIdNumber='01.01'"), items);
    }

    const std::string file_ = database().folder().file("plan.pdf");
};

// Name, model and codes of every item that was typed, in the order of the names' bytes.
Rows typed() {
    Rows all;
    for (const ClerkAtWork& clerk : kClerks) {
        for (int item = 0; item < kEach; ++item) {
            const std::string shortCode = std::to_string(clerk.firstCode + item);
            all.push_back({clerk.name + std::to_string(item), clerk.name, "01.01." + shortCode, shortCode});
        }
    }
    std::sort(all.begin(), all.end());
    return all;
}

TEST_F(EditorTwoProcesses, saveAHundredItemsEachAndLoseDoubleOrHalveNone) {
    const Texts refused = saveAtOnce();
    RecordProperty("refused", static_cast<int>(refused.size()));
    std::cout << "refused saves: " << refused.size() << "\n";
    const std::string box = "refused\tcritical box: \t" + kTitle + "\t";
    for (const std::string& line : refused) {
        ASSERT_TRUE(line.starts_with(box)) << line;
        ASSERT_TRUE(line.ends_with("\tkept")) << line;
        const std::string told = line.substr(box.size(), line.rfind('\t') - box.size());
        EXPECT_TRUE(told.starts_with("违反了 PRIMARY KEY 约束") || isServersWordingOf(told, "不能插入重复键。"))
            << told;
    }

    // Both tables hold every item that was typed, once, and the rows of one id are of one item.
    Rows stored = database().rows(
        "select a.fName,a.fModel,b.fNumber,b.fShortNumber from ICItem as a,tblItem as b where a.fItemId=b.fItemId and "
        "a.fNumber=b.fNumber and a.fName=b.fName and b.fItemClassId=3 and b.fIsDetail=1 and a.fItemId>202");
    std::sort(stored.begin(), stored.end());
    EXPECT_EQ(stored, typed());
    expectWholeItems(2 * kEach);

    // Every press of the button took one step of the counter, the refused ones too.
    EXPECT_EQ(database().value("select fMaxNum from tblMaxNum where fTableName='tblItem'"),
              std::to_string(kLastId + 2 * kEach + static_cast<int>(refused.size())));
}

TEST_F(EditorTwoProcesses, aMachineThatDiesInTheMiddleLeavesNoHalfItem) {
    constexpr int kDeaths = 8;
    constexpr int kNeverDone = 900;
    for (int death = 0; death < kDeaths; ++death) {
        const int before = count("tblItem where fItemId>202");
        {
            const ClerkAtWork third{"丙" + std::to_string(death) + "-", 1000 * (death + 1)};
            ChildProgram clerk(ORVEN_SAVE_CHILD, argumentsOf(third, kNeverDone));
            ASSERT_EQ(clerk.line(), "ready");
            clerk.tell("go");
            while (count("tblItem where fItemId>202") < before + death + 1) {
            }
        }  // killed
        const int stored = count("tblItem where fItemId>202");
        EXPECT_LT(stored, before + kNeverDone);
        expectWholeItems(stored);
        EXPECT_EQ(count("tblMaxNum where fTableName='tblItem' and fMaxNum>=(select max(fItemId) from tblItem)"), 1);
    }
}

}  // namespace
}  // namespace orvenmod::test
