// The classes by the names of their members.
#include "entry/latebound.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <regex>

#include "entry/windows.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "support/sourcefolder.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using Texts = std::vector<std::string>;

constexpr std::int16_t kGoods = 3;
constexpr std::int16_t kPicker = 1;

class LateBound : public ::testing::Test {
protected:
    /// The number of what it fails with, 0 where it doesn't.
    template <class Use>
    static int failure(const Use& use) {
        try {
            use();
        } catch (const ConversionFailure& failure) {
            return failure.number();
        } catch (const CallFailure& failure) {
            return failure.number();
        }
        return 0;
    }
    static int putting(const char* property, const Variant& value) {
        LateObject item("Orvenmod.clsBasicInfo");
        return failure([&] { item.put(property, value); });
    }

    Stage stage;
};

TEST_F(LateBound, aPickerIsCalledAndReadByNameWithoutRegardToCase) {
    stage.database().addGoods();
    stage.script().onWindow("frmBasicInfoList", [](User& user) { user.doubleClickRow("vsf1", 3); });
    LateObject item("ORVENMOD.CLSBASICINFO");
    const std::vector<Variant> arguments = {"3", "", "", stage.connectionString(), kPicker};
    EXPECT_EQ(item.call("MAININTERFACE", arguments), Variant(false));
    EXPECT_EQ(item.get("fitemid"), Variant("103"));
    EXPECT_EQ(item.get("FNUMBER"), Variant("02.001"));
    EXPECT_EQ(item.get("fName"), Variant("墙壁开关"));
    EXPECT_EQ(item.get("fItemClassId"), Variant(kGoods));
    stage.finish();
}

TEST_F(LateBound, aPropertyTakesWhatItsTypeCanHold) {
    LateObject item("Orvenmod.clsBasicInfo");
    const std::pair<Variant, std::int16_t> numbers[] = {
        {"3", std::int16_t{3}},      {" -7 ", std::int16_t{-7}}, {2.5, std::int16_t{2}},
        {"3.5", std::int16_t{4}},    {true, std::int16_t{-1}},   {std::int32_t{12}, std::int16_t{12}},
        {Variant(), std::int16_t{0}}};
    for (const auto& [given, held] : numbers) {
        item.put("Status", given);
        EXPECT_EQ(item.get("status"), Variant(held));
    }
    const std::pair<Variant, std::string> texts[] = {{std::int16_t{3}, "3"}, {2.5, "2.5"},   {0.1 + 0.2, "0.3"},
                                                     {1e20, "1E+20"},        {true, "True"}, {"螺丝", "螺丝"},
                                                     {Variant(), ""}};
    for (const auto& [given, held] : texts) {
        item.put("fName", given);
        EXPECT_EQ(item.get("fName"), Variant(held));
    }
    item.put("UserRight", 2.5);
    EXPECT_EQ(item.get("UserRight"), Variant(2.5));
}

TEST_F(LateBound, aValueThatDoesNotFitIsAMismatchOrAnOverflow) {
    EXPECT_EQ(putting("Status", "abc"), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(putting("Status", ""), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(putting("Status", std::make_shared<int>(1)), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(putting("fName", std::make_shared<int>(1)), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(putting("Status", "40000"), ConversionFailure::kOverflow);
    EXPECT_EQ(putting("Status", std::int32_t{-32769}), ConversionFailure::kOverflow);
    EXPECT_EQ(putting("Status", std::numeric_limits<double>::infinity()), ConversionFailure::kOverflow);
    EXPECT_EQ(putting("Status", std::nan("")), ConversionFailure::kOverflow);
}

TEST_F(LateBound, aFailedPutLeavesTheProperty) {
    LateObject item("Orvenmod.clsBasicInfo");
    item.put("Status", 5);
    EXPECT_EQ(failure([&] { item.put("Status", "abc"); }), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(item.get("Status"), Variant(std::int16_t{5}));
}

TEST_F(LateBound, argumentsAreConvertedAsPropertiesAre) {
    const Windows own = windows();
    windows().frmJCZLList = [] { appState().gRetName = "箱"; };
    LateObject dictionary("Orvenmod.clsJCZL");
    dictionary.call("mainSingleInterface", std::vector<Variant>{true, "60", 7});
    EXPECT_EQ(appState().gIsReturn, -1);
    EXPECT_EQ(appState().gItemClassId, 60);
    EXPECT_EQ(appState().gConnStr, "7");
    EXPECT_EQ(dictionary.get("fName"), Variant("箱"));
    windows() = own;
}

TEST_F(LateBound, anArgumentThatDoesNotFitStartsNothing) {
    LateObject item("Orvenmod.clsBasicInfo");
    const auto calling = [&](std::vector<Variant> arguments) {
        return failure([&] { item.call("mainInterface", arguments); });
    };
    const std::string database = stage.connectionString();
    EXPECT_EQ(calling({"abc", "", "", database, kPicker}), ConversionFailure::kTypeMismatch);
    EXPECT_EQ(calling({40000, "", "", database, "abc"}), ConversionFailure::kOverflow) << "the first one is told";
    EXPECT_EQ(calling({kGoods, "", "", database}), CallFailure::kArgumentNotOptional);
    EXPECT_EQ(calling({kGoods, Variant(), "", database, kPicker}), CallFailure::kArgumentNotOptional);
    EXPECT_EQ(calling({kGoods, "", "", database, kPicker, 0, "", ""}), CallFailure::kWrongArgumentCount);
    EXPECT_TRUE(stage.operations().empty());
}

TEST_F(LateBound, argumentsLeftOutInTheMiddleAreAbsent) {
    stage.script().onWindow("frmBasicInfoList", [](User&) {
        EXPECT_EQ(appState().gItemCalled, 0);
        EXPECT_EQ(appState().gParamSQL, " and 1=1");
    });
    LateObject item("Orvenmod.clsBasicInfo");
    appState().gItemCalled = 5;
    item.call("mainInterface", std::vector<Variant>{kGoods, "", "", stage.connectionString(), kPicker, {}, " and 1=1"});
    stage.finish();
}

TEST_F(LateBound, aNameThatNoMemberOfThatKindHasIsRefused) {
    LateObject item("Orvenmod.clsBasicInfo");
    EXPECT_EQ(failure([&] { item.get("fNone"); }), CallFailure::kNoSuchMember);
    EXPECT_EQ(failure([&] { item.get("mainInterface"); }), CallFailure::kNoSuchMember);
    EXPECT_EQ(failure([&] { item.put("", 1); }), CallFailure::kNoSuchMember);
    EXPECT_EQ(failure([&] { item.put("mainInterface", 1); }), CallFailure::kNoSuchMember);
    EXPECT_EQ(failure([&] { item.call("fItemId", {}); }), CallFailure::kNoSuchMember);
    EXPECT_EQ(failure([] { LateObject("Orvenmod.clsNone"); }), CallFailure::kCannotCreate);
}

// "property text fItemId", "method mainInterface(int16 intFitemClassId, ...)".
std::string described(const Member& member) {
    const std::map<ValueType, std::string> words = {
        {ValueType::text, "text"}, {ValueType::int16, "int16"}, {ValueType::any, "any"}};
    if (member.kind == MemberKind::property) return "property " + words.at(member.types.front()) + " " + member.name;
    std::string text = std::string("method ") + member.name + "(";
    for (std::size_t at = 0; at < member.types.size(); ++at)
        text += (at == 0 ? "" : ", ") + words.at(member.types[at]) + " " + member.parameters[at];
    return text + ")";
}

std::string typeWord(const std::string& declared) {
    if (declared.find("Variant") != std::string::npos) return "any";
    return declared.find("int16_t") != std::string::npos ? "int16" : "text";
}

/// The members that a public header declares, as `described` words them.
Texts declared(const std::string& header) {
    std::string text = Stage::contents(sourceFile("include/orvenmod/" + header));
    text = std::regex_replace(text, std::regex("//[^\n]*"), "");
    text = text.substr(text.find("public:"));
    text = text.substr(0, std::min(text.find("private:"), text.find("};")));
    Texts all;
    const std::regex methods(R"(bool\s+(\w+)\(([^)]*)\);)");
    const std::regex parameter(R"((std::\w+|Variant)&\s+(\w+))");
    for (std::sregex_iterator each(text.begin(), text.end(), methods), end; each != end; ++each) {
        const std::string parameters = (*each)[2];
        std::string list;
        for (std::sregex_iterator one(parameters.begin(), parameters.end(), parameter); one != end; ++one)
            list += (list.empty() ? "" : ", ") + typeWord((*one)[1]) + " " + (*one)[2].str();
        all.push_back("method " + (*each)[1].str() + "(" + list + ")");
    }
    const std::regex properties(R"(\n\s*(std::string|std::int16_t|Variant)\s+(\w+)(?:\s*=\s*\w+)?;)");
    for (std::sregex_iterator each(text.begin(), text.end(), properties), end; each != end; ++each)
        all.push_back("property " + typeWord((*each)[1]) + " " + (*each)[2].str());
    return all;
}

TEST(ClassTable, namesEveryMemberOfThePublicHeadersAndNoOther) {
    const std::map<std::string, std::string> headers = {{"Orvenmod.clsBasicInfo", "clsBasicInfo.h"},
                                                        {"Orvenmod.clsJCZL", "clsJCZL.h"},
                                                        {"Orvenmod.clsHSXMManage", "clsHSXMManage.h"}};
    ASSERT_EQ(boundClasses().size(), headers.size());
    for (const BoundClass& each : boundClasses()) {
        Texts members;
        for (const Member& member : each.members)
            members.push_back(described(member));
        EXPECT_THAT(members, testing::UnorderedElementsAreArray(declared(headers.at(each.name)))) << each.name;
    }
}

}  // namespace
}  // namespace orvenmod::test
