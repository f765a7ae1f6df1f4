// A report's page as a template file tells it. The file is UTF-8 text, one statement a line, words separated by blanks;
// a word with blanks stands in double quotes, a quote in it doubled; # starts a comment. Lengths are millimetres.
//
//     report 1                                   first; the version of the format
//     page A4 landscape                          A3 A4 A5 B5 Letter, or WIDTH HEIGHT
//     margins LEFT TOP RIGHT BOTTOM
//     font POINTS ["FAMILY"]
//     columns fit                                or break: columns wider than the page shrink, or go on over pages
//     title HEIGHT                               the row of column titles, repeated on every page
//     row HEIGHT                                 a row of the detail grid
//     header HEIGHT                              a report header, above the grid on the first page; may come again
//     footer HEIGHT                              a page footer, on every page
//     text NAME LEFT TOP WIDTH HEIGHT [size POINTS] [bold] [left|centre|right] ["TEXT"]
//                                                within the header or footer before it; NAME "-" for none
//
// A text may hold {page}, {pages}, {date} and {title}. docs/report-template.md tells it to the suite's makers.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::platform::report {

enum class TextAlignment { left, centre, right };
enum class WideColumns { fit, breakPages };

/// In millimetres.
struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// The paper as it lies, in millimetres.
struct Paper {
    double width = 210;
    double height = 297;
    double left = 15;
    double top = 15;
    double right = 15;
    double bottom = 15;
    double innerWidth() const { return width - left - right; }
    double innerHeight() const { return height - top - bottom; }
    bool operator==(const Paper&) const = default;
};

struct TemplateText {
    std::string name;  ///< "" for none
    Box box;           ///< within its band
    double points = 0;
    bool bold = false;
    TextAlignment alignment = TextAlignment::left;
    std::string text;
    bool literal = false;  ///< set by code: its braces mean nothing
};

/// A report header or the page footer.
struct Band {
    double height = 0;
    std::vector<TemplateText> texts;
};

struct Template {
    Paper paper;
    double points = 9;
    std::string family;  ///< "" for the toolkit's own
    WideColumns wideColumns = WideColumns::fit;
    double titleHeight = 8;
    double rowHeight = 6.5;
    std::vector<Band> headers;
    Band footer;
};

/// Throws std::runtime_error, in Chinese, with the number of the line and what was expected there.
Template parseTemplate(const std::string& content);
/// The same for a file, which the message names too.
Template loadTemplate(const std::string& path);

}  // namespace orvenmod::platform::report
