// What the parts of the sample share: ids, a fixed row of random numbers, and statements put together from values.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvenmod::sample {

/// A value as a statement writes it: numbers bare, texts in quotes.
class Literal {
public:
    Literal(int number) : text_(std::to_string(number)) {}                    // NOLINT(google-explicit-constructor)
    Literal(std::string_view text) : text_("'" + std::string(text) + "'") {}  // NOLINT(google-explicit-constructor)
    Literal(const std::string& text) : Literal(std::string_view(text)) {}     // NOLINT(google-explicit-constructor)
    Literal(const char* text) : Literal(std::string_view(text)) {}            // NOLINT(google-explicit-constructor)
    /// An amount in hundredths.
    static Literal hundredths(std::int64_t value);

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// A category or an item, as others hang below it or point to it.
struct Node {
    int id = 0;
    std::string number;
    std::string path;
    int depth = 0;
};

class SampleWriter {
public:
    using Execute = std::function<void(const std::string& sql)>;

    explicit SampleWriter(Execute execute) : execute_(std::move(execute)) {}

    void execute(const std::string& sql) { execute_(sql); }
    void insert(std::string_view table, std::string_view columns, std::initializer_list<Literal> values);

    /// Adds a row of tblItem below `parent` (an empty Node for the top).
    Node addCategory(int itemClass, const Node& parent, const std::string& shortNumber, const std::string& name);
    Node addItem(int itemClass, const Node& parent, const std::string& shortNumber, const std::string& name);
    int addDictionaryEntry(int dictionary, const std::string& number, const std::string& name);
    /// Writes where the counters stand; the last call.
    void saveCounters();

    /// From 0 to bound - 1.
    int random(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

private:
    enum class Row { category, item };

    Node addRow(int itemClass, const Node& parent, const std::string& shortNumber, const std::string& name, Row row);

    Execute execute_;
    std::mt19937 random_{20240607};
    int lastItem_ = 0;
    int lastEntry_ = 0;
};

/// "0042" for 42 and width 4.
std::string padded(int number, int width);

/// What bills and stock point to.
struct SampleIds {
    std::vector<int> customers, suppliers, accounts, stocks, stockPlaces, goods;
    std::vector<int> units, colours, settlements, kinds;
    std::vector<int> goodsPrices;  ///< hundredths, parallel to goods
};

void addDictionaries(SampleWriter& writer, SampleIds& ids);
void addPartners(SampleWriter& writer, SampleIds& ids);
void addWarehouses(SampleWriter& writer, SampleIds& ids);
void addGoods(SampleWriter& writer, SampleIds& ids, int count);
void addBills(SampleWriter& writer, const SampleIds& ids);
void addSettingsAndStockView(SampleWriter& writer);
void addUsers(SampleWriter& writer);

}  // namespace orvenmod::sample
