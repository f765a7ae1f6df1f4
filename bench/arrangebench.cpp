// Sorting and narrowing a list, against what a user waits for without noticing.
#include <memory>
#include <string>

#include "benches.h"
#include "platform/model/listgridmodel.h"

namespace orvenmod::bench {
namespace {

using namespace platform;
using model::ListGridModel;

constexpr int kColumns = 10;
constexpr int kCode = 0;
constexpr int kName = 1;
constexpr int kAmount = 4;

/// Every code and name another one; rows in no order.
class ManyGoods : public RowSource {
public:
    explicit ManyGoods(std::size_t rows) {
        static const char* const kKinds[] = {"内六角圆柱头螺丝", "弹簧垫圈", "深沟球轴承",
                                             "墙壁开关",         "劳保手套", "重型货架"};
        for (std::size_t row = 0; row < rows; ++row) {
            const std::size_t at = (row * 7919) % rows;
            codes_.push_back("01.02." + std::to_string(1000000 + at));
            names_.push_back(kKinds[at % 6] + std::string(" M") + std::to_string(at));
            amounts_.push_back(std::to_string(at % 99991) + "." + std::to_string(at % 100));
        }
    }
    std::size_t rowCount() const override { return codes_.size(); }
    int columnCount() const override { return kColumns; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        if (column == kCode) return codes_[row];
        return column < kAmount ? names_[row] : amounts_[row];
    }

private:
    std::vector<std::string> codes_, names_, amounts_;
};

ListGridModel listOf(std::size_t rows) {
    ListGridModel list({}, 0);
    list.bind(std::make_shared<ManyGoods>(rows));
    for (int column = kAmount; column < kColumns; ++column)
        list.column(column).kind = ColumnKind::number;
    return list;
}

}  // namespace

void measureArranging(Report& report) {
    constexpr double kSecond = 1000;
    constexpr double kKey = 50;
    {
        ListGridModel list = listOf(1000000);
        const auto sorting = [&](const char* what, int column, SortOrder order) {
            report.ratio(what, leastOf(1, [&] { list.sort(column, order); }), "a second", kSecond, 1.0, "ms");
        };
        list.sort(kCode, SortOrder::ascending);  // the collation is loaded once
        sorting("a million rows sorted by name", kName, SortOrder::ascending);
        sorting("and the other way round", kName, SortOrder::descending);
        sorting("a million rows sorted by code", kCode, SortOrder::ascending);
        sorting("a million rows sorted by amount", kAmount, SortOrder::ascending);
    }
    ListGridModel list = listOf(100000);
    list.sort(kName, SortOrder::ascending);
    report.ratio("the line over 100000 rows opens", leastOf(1, [&] { list.readyNarrowing(); }), "a second", kSecond,
                 1.0, "ms");
    double slowest = 0;
    for (const std::string& line : {std::string("nlj m77"), std::string("内六角 12"), std::string("zzzz")}) {
        for (std::size_t keys = 1; keys <= line.size(); ++keys) {
            if (keys < line.size() && (static_cast<unsigned char>(line[keys]) & 0xC0) == 0x80) continue;
            slowest = std::max(slowest, leastOf(1, [&] { list.narrow(line.substr(0, keys)); }));
        }
        list.narrow("");
    }
    report.ratio("a key that narrows 100000 rows, the slowest", slowest, "50 ms", kKey, 1.0, "ms");
}

}  // namespace orvenmod::bench
