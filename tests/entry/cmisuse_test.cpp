// Whatever a caller does wrong gives an error: each call with each thing wrong, told in a table, and at random.
#include <gtest/gtest.h>
#include <orvenmod/orvenmod_c.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "entry/windows.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

constexpr const char* kItems = "Orvenmod.clsBasicInfo";
constexpr const char* kBroken = "\xff\xfe";

/// Handles and places to try each call with.
struct Trial {
    orvenmod_object* items = nullptr;
    orvenmod_object* released = nullptr;
    orvenmod_object* made = nullptr;
    orvenmod_value value{};
    orvenmod_member member{};
    orvenmod_parameter parameter{};
    std::int32_t number = 0;
    const char* text = nullptr;
};

struct Misuse {
    const char* what;
    std::int32_t error;
    std::function<std::int32_t(Trial&)> call;
};

orvenmod_object* const kNoObject = nullptr;
const orvenmod_value kWrongType = {99, 0, 0, nullptr};
const orvenmod_value kNullText = {ORVENMOD_TEXT, 0, 0, nullptr};
const orvenmod_value kBrokenText = {ORVENMOD_TEXT, 0, 0, kBroken};
const orvenmod_value kWord = {ORVENMOD_TEXT, 0, 0, "abc"};
const orvenmod_value kLarge = {ORVENMOD_INT16, 40000, 0, nullptr};
const orvenmod_value kOne = {ORVENMOD_INT16, 1, 0, nullptr};
const std::array<orvenmod_value, 8> kOnes = {kOne, kOne, kOne, kOne, kOne, kOne, kOne, kOne};

// clang-format off
const std::vector<Misuse>& misuses() {
    constexpr std::int32_t kNull = ORVENMOD_E_INVALID_CALL;
    static const std::vector<Misuse> all = {
        {"create null", kNull, [](Trial& t) { return orvenmod_create(nullptr, &t.made); }},
        {"create into null", kNull, [](Trial&) { return orvenmod_create(kItems, nullptr); }},
        {"create broken", kNull, [](Trial& t) { return orvenmod_create(kBroken, &t.made); }},
        {"create unknown", ORVENMOD_E_CANNOT_CREATE, [](Trial& t) { return orvenmod_create("Orvenmod.clsNone", &t.made); }},
        {"release null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial&) { return orvenmod_release(kNoObject); }},
        {"release twice", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_release(t.released); }},
        {"release an address", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_release(reinterpret_cast<orvenmod_object*>(&t)); }},
        {"get of null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_get(kNoObject, "fName", &t.value); }},
        {"get of released", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_get(t.released, "fName", &t.value); }},
        {"get null", kNull, [](Trial& t) { return orvenmod_get(t.items, nullptr, &t.value); }},
        {"get into null", kNull, [](Trial& t) { return orvenmod_get(t.items, "fName", nullptr); }},
        {"get unknown", ORVENMOD_E_NO_SUCH_MEMBER, [](Trial& t) { return orvenmod_get(t.items, "fNone", &t.value); }},
        {"get broken", kNull, [](Trial& t) { return orvenmod_get(t.items, kBroken, &t.value); }},
        {"get a method", ORVENMOD_E_NO_SUCH_MEMBER, [](Trial& t) { return orvenmod_get(t.items, "mainInterface", &t.value); }},
        {"put of null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial&) { return orvenmod_put(kNoObject, "fName", &kWord); }},
        {"put of released", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_put(t.released, "fName", &kWord); }},
        {"put null", kNull, [](Trial& t) { return orvenmod_put(t.items, nullptr, &kWord); }},
        {"put no value", kNull, [](Trial& t) { return orvenmod_put(t.items, "fName", nullptr); }},
        {"put a null text", kNull, [](Trial& t) { return orvenmod_put(t.items, "fName", &kNullText); }},
        {"put a broken text", kNull, [](Trial& t) { return orvenmod_put(t.items, "fName", &kBrokenText); }},
        {"put no type", ORVENMOD_E_TYPE_MISMATCH, [](Trial& t) { return orvenmod_put(t.items, "fName", &kWrongType); }},
        {"put a word", ORVENMOD_E_TYPE_MISMATCH, [](Trial& t) { return orvenmod_put(t.items, "Status", &kWord); }},
        {"put too much", ORVENMOD_E_OVERFLOW, [](Trial& t) { return orvenmod_put(t.items, "Status", &kLarge); }},
        {"put unknown", ORVENMOD_E_NO_SUCH_MEMBER, [](Trial& t) { return orvenmod_put(t.items, "fNone", &kWord); }},
        {"call of null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_call(kNoObject, "mainInterface", nullptr, 0, &t.value); }},
        {"call of released", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_call(t.released, "mainInterface", nullptr, 0, &t.value); }},
        {"call null", kNull, [](Trial& t) { return orvenmod_call(t.items, nullptr, nullptr, 0, &t.value); }},
        {"call a property", ORVENMOD_E_NO_SUCH_MEMBER, [](Trial& t) { return orvenmod_call(t.items, "fName", nullptr, 0, &t.value); }},
        {"call without arguments", ORVENMOD_E_ARGUMENT_REQUIRED, [](Trial& t) { return orvenmod_call(t.items, "mainInterface", nullptr, 0, &t.value); }},
        {"call with null arguments", kNull, [](Trial& t) { return orvenmod_call(t.items, "mainInterface", nullptr, 5, &t.value); }},
        {"call with too many", ORVENMOD_E_WRONG_ARGUMENT_COUNT, [](Trial& t) { return orvenmod_call(t.items, "mainInterface", kOnes.data(), kOnes.size(), &t.value); }},
        {"call with no end", ORVENMOD_E_WRONG_ARGUMENT_COUNT, [](Trial& t) { return orvenmod_call(t.items, "mainInterface", kOnes.data(), std::numeric_limits<std::size_t>::max(), &t.value); }},
        {"call with no type", ORVENMOD_E_TYPE_MISMATCH, [](Trial& t) { return orvenmod_call(t.items, "mainInterface", &kWrongType, 1, &t.value); }},
        {"count of null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_member_count(kNoObject, &t.number); }},
        {"count into null", kNull, [](Trial& t) { return orvenmod_member_count(t.items, nullptr); }},
        {"member of released", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_member_at(t.released, 0, &t.member); }},
        {"member before the first", 9, [](Trial& t) { return orvenmod_member_at(t.items, -1, &t.member); }},
        {"member behind the last", 9, [](Trial& t) { return orvenmod_member_at(t.items, 12, &t.member); }},
        {"member into null", kNull, [](Trial& t) { return orvenmod_member_at(t.items, 0, nullptr); }},
        {"parameter of null", ORVENMOD_E_OBJECT_REQUIRED, [](Trial& t) { return orvenmod_parameter_at(kNoObject, 0, 0, &t.parameter); }},
        {"parameter behind the last", 9, [](Trial& t) { return orvenmod_parameter_at(t.items, 0, 7, &t.parameter); }},
        {"parameter of a property", 9, [](Trial& t) { return orvenmod_parameter_at(t.items, 1, 0, &t.parameter); }},
        {"parameter into null", kNull, [](Trial& t) { return orvenmod_parameter_at(t.items, 0, 0, nullptr); }},
        {"free of another's", kNull, [](Trial&) { return orvenmod_free("another's"); }},
        {"setting of null", kNull, [](Trial& t) { return orvenmod_get_setting(nullptr, "", "", "", &t.text); }},
        {"setting else null", kNull, [](Trial& t) { return orvenmod_get_setting("", "", "", nullptr, &t.text); }},
        {"setting into null", kNull, [](Trial&) { return orvenmod_get_setting("", "", "", "", nullptr); }},
        {"save null", kNull, [](Trial&) { return orvenmod_save_setting("Orvencom", "A", "k", nullptr); }},
        {"save broken", kNull, [](Trial&) { return orvenmod_save_setting("Orvencom", "A", "k", kBroken); }},
        {"delete null", kNull, [](Trial&) { return orvenmod_delete_setting("Orvencom", nullptr, ""); }},
        {"schema of null", kNull, [](Trial&) { return orvenmod_create_schema(nullptr); }},
        {"upgrade of null", kNull, [](Trial&) { return orvenmod_upgrade_schema(nullptr); }},
        {"version of null", kNull, [](Trial& t) { return orvenmod_schema_version(nullptr, &t.number); }},
        {"version into null", kNull, [](Trial&) { return orvenmod_schema_version("", nullptr); }},
        {"newest into null", kNull, [](Trial&) { return orvenmod_newest_schema_version(nullptr); }},
    };
    return all;
}
// clang-format on

class CMisuse : public ::testing::Test {
protected:
    CMisuse() {
        EXPECT_EQ(orvenmod_create(kItems, &trial.items), 0);
        EXPECT_EQ(orvenmod_create(kItems, &trial.released), 0);
        EXPECT_EQ(orvenmod_release(trial.released), 0);
        windows().frmBasicInfoList = {};
    }
    ~CMisuse() override {
        windows() = own;
        EXPECT_EQ(orvenmod_release(trial.items), 0);
    }

    Stage stage;
    Windows own = windows();
    Trial trial;
};

TEST_F(CMisuse, aTextOfBytesThatAreNoCharacterIsRefused) {
    const std::pair<const char*, const char*> broken[] = {{"a byte that continues nothing", "a\x80"},
                                                          {"an end that is missing", "\xE8\x9E"},
                                                          {"a half character", "\xED\xA0\x80"},
                                                          {"two bytes for a quotation mark", "\xC0\xA7"},
                                                          {"three bytes for one", "\xE0\x80\xA7"},
                                                          {"four bytes for one", "\xF0\x80\x80\xA7"},
                                                          {"a character beyond the last", "\xF4\x90\x80\x80"}};
    for (const auto& [what, text] : broken) {
        const orvenmod_value value = {ORVENMOD_TEXT, 0, 0, text};
        EXPECT_EQ(orvenmod_put(trial.items, "fName", &value), ORVENMOD_E_INVALID_CALL) << what;
    }
    for (const char* text : {"", "a", "\x7F", "\xC2\x80", "\xE0\xA0\x80", "\xEF\xBF\xBF", "螺丝", "\xF0\x90\x80\x80",
                             "\xF4\x8F\xBF\xBF"}) {
        const orvenmod_value value = {ORVENMOD_TEXT, 0, 0, text};
        EXPECT_EQ(orvenmod_put(trial.items, "fName", &value), 0) << text;
    }
}

TEST_F(CMisuse, everyWrongCallGivesItsErrorAndHandsOutNothing) {
    for (const Misuse& misuse : misuses()) {
        trial.value = kWord;
        trial.text = "before";
        trial.made = trial.items;
        EXPECT_EQ(misuse.call(trial), misuse.error) << misuse.what;
        EXPECT_EQ(orvenmod_error_number(), misuse.error) << misuse.what;
        EXPECT_STRNE(orvenmod_error_text(), "") << misuse.what;
        EXPECT_TRUE(trial.value.type == ORVENMOD_NOTHING || trial.value.text == kWord.text) << misuse.what;
    }
}

/// One caller who does anything at all, with what calls gave him, kept, or made up.
class Fool {
public:
    Fool(std::uint32_t seed, std::string database) : random_(seed), database_(std::move(database)) {}

    void act() {
        orvenmod_value value{};
        switch (upTo(8)) {
            case 0:
                made(orvenmod_create(name(), pick(2) ? nullptr : &last_));
                break;
            case 1:
                if (pick(5)) orvenmod_release(object());
                break;
            case 2:
                if (orvenmod_get(object(), name(), &value) == 0) keep(value.text);
                break;
            case 3:
                value = given();
                if (orvenmod_put(object(), name(), pick(9) ? nullptr : &value) == 0) ++puts_;
                break;
            case 4:
                call();
                break;
            case 5:
                orvenmod_free(pick(2) || texts_.empty() ? database_.c_str() : texts_[upTo(texts_.size() - 1)]);
                break;
            case 6:
                describe();
                break;
            case 7:
                set();
                break;
            default:
                orvenmod_error_text();
        }
    }
    /// Whether some of it was right by chance.
    bool hasSucceeded() const { return puts_ > 0 && calls_ > 0 && !texts_.empty(); }
    /// What he forgot.
    void leave() {
        for (const char* text : texts_)
            orvenmod_free(text);
        for (orvenmod_object* each : objects_)
            orvenmod_release(each);
    }

private:
    std::size_t upTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(random_); }
    bool pick(std::size_t oneIn) { return upTo(oneIn) == 0; }
    std::int32_t anyNumber() { return static_cast<std::int32_t>(random_()); }

    const char* name() {
        static constexpr std::array<const char*, 12> kNames = {kItems,
                                                               "orvenmod.clsjczl",
                                                               "Orvenmod.clsHSXMManage",
                                                               "mainInterface",
                                                               "mainSingleInterface",
                                                               "fName",
                                                               "status",
                                                               "UserRight",
                                                               "DBConnection",
                                                               "",
                                                               kBroken,
                                                               nullptr};
        return kNames[upTo(kNames.size() - 1)];
    }
    orvenmod_object* object() {
        if (objects_.empty() || pick(9)) return reinterpret_cast<orvenmod_object*>(upTo(1) * random_());
        const std::size_t recent = std::min<std::size_t>(objects_.size(), 6);
        return objects_[objects_.size() - 1 - upTo(recent - 1)];  // released ones too
    }
    orvenmod_value given() {
        static constexpr std::array<double, 6> kNumbers = {
            0, 1.5, -32768.5, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
        const char* texts[] = {name(), database_.c_str(), "1", "-40000", "1e9"};
        return {static_cast<std::int32_t>(upTo(6)), pick(2) ? anyNumber() : 1, kNumbers[upTo(kNumbers.size() - 1)],
                texts[upTo(4)]};
    }
    void call() {
        std::vector<orvenmod_value> arguments;
        for (std::size_t count = upTo(8); arguments.size() < count;)
            arguments.push_back(given());
        orvenmod_value result{};
        if (orvenmod_call(object(), pick(1) ? "mainInterface" : name(), arguments.data(), arguments.size(),
                          pick(2) ? nullptr : &result) == 0)
            ++calls_;
        keep(result.text);
    }
    void describe() {
        std::int32_t count = 0;
        orvenmod_member member{};
        orvenmod_parameter parameter{};
        orvenmod_object* const one = object();
        orvenmod_member_count(one, &count);
        orvenmod_member_at(one, pick(2) ? anyNumber() : 0, &member);
        orvenmod_parameter_at(one, pick(2) ? anyNumber() : 0, pick(2) ? anyNumber() : 0, &parameter);
    }
    void set() {
        const char* value = nullptr;
        orvenmod_save_setting(name(), name(), name(), name());
        if (orvenmod_get_setting(name(), name(), name(), name(), &value) == 0) keep(value);
        orvenmod_delete_setting("Orvenmod", name(), name());
    }
    void made(std::int32_t error) {
        if (error == 0) objects_.push_back(last_);
    }
    void keep(const char* text) {
        if (text != nullptr) texts_.push_back(text);
    }

    std::mt19937 random_;
    std::string database_;
    int puts_ = 0;
    int calls_ = 0;
    orvenmod_object* last_ = nullptr;
    std::vector<orvenmod_object*> objects_;
    std::vector<const char*> texts_;
};

TEST_F(CMisuse, aCallerWhoDoesAnythingAtAllGetsErrorsAndNoCrash) {
    windows().frmHSXM = {};
    windows().frmJCBasicInfo = {};
    windows().frmJCZLList = {};
    constexpr int kActs = 4000;
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Fool fool(seed, stage.connectionString());
        for (int act = 0; act < kActs; ++act)
            fool.act();
        EXPECT_TRUE(fool.hasSucceeded());
        fool.leave();
    }
    orvenmod_value value;
    EXPECT_EQ(orvenmod_get(trial.items, "fName", &value), 0) << "what others hold is as it was";
    orvenmod_free(value.text);
}

}  // namespace
}  // namespace orvenmod::test
