// What words find.
#include "platform/model/narrowing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/model/chinese.h"

namespace orvenmod::platform::model {
namespace {

bool finds(const std::string& typed, const std::vector<std::string>& cells) {
    SoughtTexts texts(1);
    texts.beginRow(0);
    for (const std::string& cell : cells)
        texts.addCell(cell);
    texts.endRow(0);
    return std::ranges::all_of(soughtWords(typed), [&](const SoughtWord& word) { return word.in(texts.row(0)); });
}

TEST(Narrowing, findsChineseByItsLetters) {
    for (const char* typed :
         {"nlj", "neiliujiao", "NLJ", "neil", "n", "liujiao", "lj", "内六角", "六角", "内lj", "neiliuj"})
        EXPECT_TRUE(finds(typed, {"内六角"})) << typed;
    for (const char* typed : {"nj", "ln", "neijiao", "内角", "x", "neiliujiaoo"})
        EXPECT_FALSE(finds(typed, {"内六角"})) << typed;
}

TEST(Narrowing, findsACharacterByEachOfItsReadings) {
    for (const char* typed : {"zl", "zhongliang", "cl", "chongliang"})
        EXPECT_TRUE(finds(typed, {"重量"})) << typed;
    for (const char* typed : {"cd", "zd", "changdu", "zhangdu"})
        EXPECT_TRUE(finds(typed, {"长度"})) << typed;
    for (const char* typed : {"ls", "lvse", "luse"})
        EXPECT_TRUE(finds(typed, {"绿色"})) << typed;
    for (const char* typed : {"elel", "erlingerliu"})
        EXPECT_TRUE(finds(typed, {"二〇二六"})) << typed;
}

TEST(Narrowing, goesOnFromLettersToChinese) {
    EXPECT_TRUE(finds("m8nlj", {"M8内六角"}));
    EXPECT_TRUE(finds("角m8", {"内六角M8x20"}));
    EXPECT_FALSE(finds("m8j", {"M8内六角"}));
}

TEST(Narrowing, findsEveryWordAnywhereButNoneAcrossCells) {
    EXPECT_TRUE(finds("20 nlj", {"01.002", "内六角", "M8x20"}));
    EXPECT_TRUE(finds("  M8   01 ", {"01.002", "内六角", "m8x20"}));
    EXPECT_FALSE(finds("20 nlj 30", {"01.002", "内六角", "M8x20"}));
    EXPECT_FALSE(finds("002内", {"01.002", "内六角"}));
    EXPECT_TRUE(finds("", {"01.002"}));
}

TEST(Narrowing, findsANumberWithItsCommasAndWithout) {
    for (const char* typed : {"1234567", "1,234,567.5", "1234567.5", "34567", "-1234", "1,23"})
        EXPECT_TRUE(finds(typed, {"-1,234,567.5"})) << typed;
    EXPECT_TRUE(finds("1234%", {"1,234%"}));
    for (const char* list : {"12,34", "1,2345", "1,234,5", ",234", "M1,234", "1,234 5"})
        EXPECT_FALSE(finds("1234", {list}) || finds("234 5 12345", {list})) << list;
}

TEST(Narrowing, takesNoNoticeOfCaseAndWidth) {
    EXPECT_TRUE(finds("m8", {"Ｍ８"}));
    EXPECT_TRUE(finds("Ｍ８", {"m8"}));
    EXPECT_TRUE(finds("É", {"é"}));
}

TEST(Narrowing, readsAVeryLongWordByItsBeginning) {
    const std::string word(100, 'a');
    EXPECT_TRUE(finds(word, {word}));
    EXPECT_FALSE(finds(word, {std::string(50, 'a')}));
}

TEST(Chinese, readsWhatIsNotChineseNotAtAll) {
    EXPECT_TRUE(readingsOf(u'a').empty());
    EXPECT_TRUE(readingsOf(u'。').empty());
    EXPECT_EQ(readingsOf(u'内'), std::vector<std::string>{"nei"});
}

TEST(Chinese, readsACharacterAsItIsUsuallyReadAndAsInNames) {
    const std::vector<std::pair<char16_t, std::vector<std::string>>> several = {
        {u'重', {"zhong", "chong"}}, {u'曾', {"ceng", "zeng"}},   {u'单', {"dan", "shan"}},
        {u'解', {"jie", "xie"}},     {u'仇', {"chou", "qiu"}},    {u'区', {"qu", "ou"}},
        {u'查', {"cha", "zha"}},     {u'长', {"zhang", "chang"}}, {u'乐', {"le", "yue"}},
        {u'翟', {"di", "zhai"}},     {u'种', {"zhong", "chong"}}, {u'粘', {"zhan", "nian"}},
    };
    for (const auto& [character, readings] : several)
        EXPECT_EQ(readingsOf(character), readings);
    // Those by another tone alone are one.
    EXPECT_EQ(readingsOf(u'任'), std::vector<std::string>{"ren"});
    // No data of the library has "hang".
    EXPECT_EQ(readingsOf(u'行'), std::vector<std::string>{"xing"});
    EXPECT_TRUE(finds("zq cqg zhangqg chqg", {"曾强", "长庆钢"}));
}

}  // namespace
}  // namespace orvenmod::platform::model
