// Whatever is done to an arranged list in whatever order, it shows the rows that it should, each once.
#include <algorithm>
#include <map>
#include <random>

#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;
using Texts = std::vector<std::string>;

constexpr int kNumber = 3;  // the hidden column, by which rows are told apart
constexpr int kSteps = 400;

WindowDesign arrangedWindow() {
    WindowDesign design = listWindow(0);
    design.controls[0].arranges = true;
    design.controls[0].columns = {{.title = "代码", .width = 1500},
                                  {.title = "名称", .width = 2400},
                                  {.title = "规格", .width = 1500},
                                  {.title = "内码", .width = 900, .hidden = true}};
    design.controls[0].width = 8000;
    return design;
}

class RandomUser {
public:
    RandomUser(User& user, unsigned seed) : user_(user), grid_(user.control<ListGrid>("vsf1")), chance_(seed) {}

    void step() {
        switch (upTo(12)) {
            case 0:
                return bind();
            case 1:
                return user_.clickHeading("vsf1", upTo(2));
            case 2:
                return grid_.sort(upTo(2), static_cast<SortOrder>(upTo(2)));
            case 3:
                return narrow(words_.substr(0, static_cast<std::size_t>(upTo(1))) + word());
            case 4:
                return narrow(upTo(1) == 0 ? "" : words_ + word());
            case 5:
                grid_.arrange();
                return find();
            case 6:
                return remove();
            case 7:
                return write();
            case 8:
                return mark();
            case 9:
                return user_.dragHeading("vsf1", upTo(2), upTo(2));
            case 10:
                return user_.press("Ctrl+F");
            default:
                if (grid_.rowCount() > 1) user_.selectRow("vsf1", 1 + upTo(std::min(grid_.rowCount(), 6) - 2));
        }
    }

    void check() {
        Texts shown;
        for (int row = 1; row < grid_.rowCount(); ++row)
            shown.push_back(grid_.text(row, kNumber));
        std::ranges::sort(shown);
        EXPECT_EQ(shown, shown_);
        if (grid_.currentRow() == 0)
            EXPECT_EQ(grid_.rowCount(), 1);
        else
            EXPECT_LT(grid_.currentRow(), grid_.rowCount());
        EXPECT_EQ(grid_.narrowing(), words_);
    }

private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, std::max(most, 0))(chance_); }
    std::string word() { return std::string(1, static_cast<char>('a' + upTo(4))); }

    void bind() {
        std::vector<Texts> rows;
        rows_.clear();
        for (int row = upTo(140); row > 0; --row) {
            const Texts cells = {word() + word() + word(), word() + word(), word(), std::to_string(++given_)};
            rows.push_back(cells);
            rows_[cells[kNumber]] = cells;
        }
        if (rows.empty()) rows.push_back(rows_[std::to_string(given_)] = {"a", "b", "c", std::to_string(given_)});
        grid_.bind(std::make_shared<TextRows>(rows));
        shown_.clear();
        for (const auto& [number, cells] : rows_)
            shown_.push_back(number);
    }

    void narrow(const std::string& words) {
        words_ = words;
        grid_.narrow(words);
        find();
    }

    void find() {
        shown_.clear();
        for (const auto& [number, cells] : rows_) {
            const auto has = [&](const std::string& cell) { return cell.find(words_) != std::string::npos; };
            if (words_.empty() || std::any_of(cells.begin(), cells.begin() + kNumber, has)) shown_.push_back(number);
        }
    }

    void remove() {
        if (grid_.rowCount() < 2) return;
        const int row = 1 + upTo(grid_.rowCount() - 2);
        const std::string number = grid_.text(row, kNumber);
        grid_.removeRow(row);
        rows_.erase(number);
        std::erase(shown_, number);
    }

    void write() {
        if (grid_.rowCount() < 2) return;
        const int row = 1 + upTo(grid_.rowCount() - 2);
        const int column = upTo(2);
        const std::string text = upTo(3) == 0 ? "" : word() + word();
        rows_[grid_.text(row, kNumber)][static_cast<std::size_t>(column)] = text;
        grid_.setText(row, column, text);
    }

    void mark() {
        if (grid_.rowCount() < 2) return;
        const int row = 1 + upTo(grid_.rowCount() - 2);
        const bool wanted = upTo(1) == 0;
        grid_.setSelected(row, wanted);
        EXPECT_EQ(grid_.isSelected(row), wanted);
    }

    User& user_;
    ListGrid& grid_;
    std::mt19937 chance_;
    std::map<std::string, Texts> rows_;  // held, by their number
    Texts shown_;                        // numbers, sorted
    std::string words_;
    int given_ = 0;
};

TEST_F(ToolkitContract, anArrangedListShowsItsRowsWhateverIsDoneInWhateverOrder) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        use(arrangedWindow(), [seed](User& user) {
            RandomUser random(user, seed);
            for (int step = 0; step < kSteps; ++step) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
                random.step();
                random.check();
                if (HasFailure()) return;
            }
        });
    }
}

}  // namespace
}  // namespace orvenmod::test
