// Lays the pages of a report out, one when it is asked for: rows are of one height, so that the number of pages and the
// rows of each are known without laying any out.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/report/reportdata.h"

namespace orvenmod::platform::report {

/// A text within a box of the page, on one line. A text that is too wide is shrunk and then cut by whoever draws it.
struct PlacedText {
    Box box;
    std::string text;  ///< without control characters
    double points = 9;
    bool bold = false;
    TextAlignment alignment = TextAlignment::left;
};

/// A page in millimetres from the corner of the paper.
struct Page {
    std::vector<Box> shaded;  ///< behind all others
    std::vector<Box> frames;  ///< the lines of the grid
    std::vector<PlacedText> texts;
};

class ReportPages {
public:
    /// The data outlives the pages. The paper may differ from the template's, where the user chose another.
    ReportPages(const ReportData& data, const Paper& paper, std::string date);

    /// At least 1.
    std::size_t count() const { return blocks_ * groups_.size(); }
    /// From 0. Throws std::out_of_range.
    Page page(std::size_t number) const;

private:
    struct Placed {
        const ReportColumn* column;
        double left;
        double width;
    };
    using Group = std::vector<Placed>;

    void groupColumns();
    double letterScale() const;
    std::size_t firstRow(std::size_t block) const;
    void placeBand(Page& page, const Band& band, double top, std::size_t number) const;
    void placeTitles(Page& page, const Group& group, double top) const;
    void placeRow(Page& page, const Group& group, std::size_t row, double top) const;
    std::string filled(std::string text, std::size_t number) const;

    const ReportData& data_;
    Paper paper_;
    std::string date_;
    double scale_ = 1;           ///< of the columns
    std::vector<Group> groups_;  ///< columns that stand on a page together
    std::size_t rows_ = 0;
    std::size_t firstRows_ = 1;  ///< on a page under the report headers
    std::size_t nextRows_ = 1;
    std::size_t blocks_ = 1;
    double headersHeight_ = 0;
};

}  // namespace orvenmod::platform::report
