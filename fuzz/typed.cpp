// Numbers, days and entries as they are typed: understood or refused in words, and what was understood is understood
// again as the same.
#include <optional>
#include <string>

#include "frame/conversion.h"
#include "fuzz/fuzz.h"
#include "platform/model/cellinput.h"
#include "platform/numberformat.h"
#include "store/tsql/dates.h"
#include "store/tsql/error.h"

namespace {

using namespace orvenmod;

template <typename Read>
void again(const std::string& typed, Read read) {
    const platform::model::CellInput first = read(typed);
    if (!first.refusal.empty()) return;
    const platform::model::CellInput second = read(first.text);
    fuzz::check(second.refusal.empty() && second.text == first.text, "what a cell keeps it takes");
}

template <typename Convert>
void convertedOrRefused(Convert convert) {
    try {
        convert();
    } catch (const ConversionFailure&) {
    } catch (const store::tsql::Error&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string typed(fuzz::textOf(data, size));
    platform::NumberRule rule;
    rule.decimals = 4;
    again(typed, [&](const std::string& text) { return platform::model::readNumber(text, rule); });
    again(typed, [](const std::string& text) { return platform::model::readDate(text, platform::Date{2026, 11, 20}); });
    platform::model::readItem(typed, {"甲", "乙丙", typed});
    platform::model::onOneLine(typed);
    for (const char* format : {"#,##0.00", "#,###.##", "0", ""})
        platform::formatNumber(typed, format);
    platform::formatNumber("1234.5", typed);
    convertedOrRefused([&] { toInt16(typed); });
    convertedOrRefused([&] { toInt32(typed); });
    convertedOrRefused([&] { toDouble(typed); });
    leadingNumber(typed);
    isNumeric(typed);
    for (const auto kind : {store::tsql::Kind::datetime, store::tsql::Kind::date, store::tsql::Kind::time})
        convertedOrRefused([&] { store::tsql::readDate(typed, kind); });
    return 0;
}
