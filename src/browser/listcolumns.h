// What a user made of the list's columns: their widths, their order and the sorting, kept in the settings for each user
// and class. Only what differs from the list's metadata is kept, by the fields' names, so that a changed title or a new
// field shows as the metadata has it:
//
//   width fName 3000;order fName,fNumber,fModel;sort fMinQty descending
//
// A text that makes no sense is no state at all.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "browser/listquery.h"
#include "platform/listgrid.h"

namespace orvenmod {

/// The kept text's meaning.
struct KeptColumns {
    std::map<std::string, int> widths;  ///< twips
    std::vector<std::string> order;     ///< empty for the metadata's
    std::string sorted;                 ///< a field, "" for the told order
    platform::SortOrder sortOrder = platform::SortOrder::told;
    bool operator==(const KeptColumns&) const = default;
};

std::string toText(const KeptColumns& kept);
/// Nothing kept where any part of the text makes no sense.
KeptColumns keptColumns(const std::string& text);

class ListColumns {
public:
    explicit ListColumns(platform::ListGrid& grid) : grid_(grid) {}

    /// Reads what was kept for the user and the class of AppState.
    void load();
    /// Keeps what the user made of the columns since, for those that are shown.
    void save();

    /// Before the rows are read again: what the user did to the columns since they were dressed.
    void note();
    /// Behind the dressing by the spec: brings it back.
    void apply(const ColumnSpec& spec);
    /// When all rows stand: sorts them as they were, the first one current.
    void arrange();
    /// To the other side of the shown column left (-1) or right (1) of it; one that has none stays.
    void move(int column, int side);
    /// By so many steps of three characters' width, narrower below 0.
    void widen(int column, int steps);
    /// Back to the metadata's.
    void reset();

private:
    struct Field {
        std::string name;
        int width;  ///< the metadata's
    };
    std::vector<std::string> wantedOrder() const;
    std::vector<std::string> toldOrder() const;
    void place(const std::vector<std::string>& order);
    int columnOf(const std::string& field) const;

    platform::ListGrid& grid_;
    std::vector<Field> fields_;  // those shown, in the metadata's order
    KeptColumns kept_;
    std::string stored_;
    bool sorts_ = false;    // the kept sorting isn't the grid's yet
    bool givenUp_ = false;  // the user has cancelled it
};

}  // namespace orvenmod
