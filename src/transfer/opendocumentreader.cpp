// Workbooks of OpenDocument, .ods: one part holds all sheets, and a cell or row that repeats stands once.
#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "platform/numberformat.h"
#include "transfer/daynumber.h"
#include "transfer/package.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr std::size_t kRowsAStep = 500;
// What repeats beyond this is the sheet's empty rest.
constexpr int kMostRepeats = 1048576;
constexpr int kMostBlanks = 255;
// Bytes of cells that stand once for many; those of a list differ.
constexpr std::size_t kMostRepeated = 256UL << 20;

int repeats(const XmlPart& xml, const char* name) {
    const std::string text = xml.attribute(name);
    int number = 1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::clamp(number, 1, kMostRepeats);
}

/// The paragraphs of the cell that was opened, without its comments.
std::string textWithin(XmlPart& xml) {
    std::string text;
    if (xml.isEmpty()) return text;
    const int depth = xml.depth();
    bool first = true;
    bool more = xml.next();
    while (more && !(xml.isEnd() && xml.depth() == depth)) {
        if (xml.isStart() && xml.name() == "annotation") {
            more = xml.nextBeyond();
            continue;
        }
        if (xml.isStart()) {
            const std::string_view name = xml.name();
            if (name == "p" && !std::exchange(first, false)) text += '\n';
            if (name == "s") text.append(static_cast<std::size_t>(std::min(repeats(xml, "c"), kMostBlanks)), ' ');
            if (name == "tab") text += '\t';
            if (name == "line-break") text += '\n';
        }
        // Blanks between the paragraphs' marks are none of the text.
        if (xml.isText() && xml.depth() > depth + 1) text += xml.text();
        more = xml.next();
    }
    return text;
}

SheetCell cellOf(XmlPart& xml) {
    // The error's own attribute bears the same name in another namespace; the library's order puts it last.
    const std::string type = xml.attribute("value-type");
    const std::string value = xml.attribute("value");
    const std::string day = xml.attribute("date-value");
    const std::string flag = xml.attribute("boolean-value");
    const std::string string = xml.attribute("string-value");
    const bool formula = !xml.attribute("formula").empty();
    const std::string text = textWithin(xml);
    if (!day.empty()) return {CellKind::date, dayText(day)};
    if (!flag.empty()) return {CellKind::text, flag == "true" ? "1" : "0"};
    if (!value.empty() && !(formula && text.starts_with("#"))) {
        double number = 0;
        const auto parsed = std::from_chars(value.data(), value.data() + value.size(), number);
        if (parsed.ec == std::errc()) return {CellKind::number, platform::plainNumber(number)};
    }
    if (formula && (text.starts_with("#") || text.starts_with("Err:"))) return {CellKind::error, text};
    const std::string& shown = string.empty() ? text : string;
    if (!shown.empty()) return {CellKind::text, shown};
    return formula && type.empty() ? SheetCell{CellKind::uncomputed} : SheetCell{};
}

class Table {
public:
    Table(SheetRows& rows, std::uint64_t size, const WhileReading& meanwhile)
        : rows_(rows), size_(size), meanwhile_(meanwhile) {}

    void read(XmlPart& xml) {
        if (xml.isEmpty()) return;
        const int depth = xml.depth();
        while (xml.next() && !(xml.isEnd() && xml.depth() == depth)) {
            if (xml.isStart() && xml.name() == "table-row") readRow(xml);
        }
        rows_.finish();
    }

private:
    void readRow(XmlPart& xml) {
        if (row_ % kRowsAStep == 0) meanwhile_(xml.position(), size_);
        const auto rows = static_cast<std::size_t>(repeats(xml, "number-rows-repeated"));
        std::vector<std::pair<int, SheetCell>> cells;
        readCells(xml, cells);
        if (!cells.empty() && row_ + rows > kMostSheetRows) throw std::length_error("rows");
        for (const auto& [column, cell] : cells)
            noteRepeated(cell, rows - 1);
        for (std::size_t copy = 0; copy < rows && !cells.empty(); ++copy) {
            if (copy > 0 && copy % kRowsAStep == 0) meanwhile_(xml.position(), size_);
            for (const auto& [column, cell] : cells)
                rows_.put(row_ + copy, column, cell);
        }
        row_ += rows;
    }

    void noteRepeated(const SheetCell& cell, std::size_t times) {
        repeated_ += (cell.text.size() + 2) * times;
        if (repeated_ > kMostRepeated) throw std::length_error("repeated cells");
    }

    void readCells(XmlPart& xml, std::vector<std::pair<int, SheetCell>>& cells) {
        if (xml.isEmpty()) return;
        const int depth = xml.depth();
        int column = 0;
        while (xml.next() && !(xml.isEnd() && xml.depth() == depth)) {
            if (!xml.isStart()) continue;
            const bool covered = xml.name() == "covered-table-cell";
            if (!covered && xml.name() != "table-cell") continue;
            const int copies = repeats(xml, "number-columns-repeated");
            SheetCell cell = cellOf(xml);
            if (covered && cell.isEmpty()) cell.kind = CellKind::merged;
            if (!cell.isEmpty()) noteRepeated(cell, static_cast<std::size_t>(std::min(copies, kMostColumns) - 1));
            for (int copy = 0; copy < copies && !cell.isEmpty() && column + copy <= kMostColumns; ++copy)
                cells.emplace_back(column + copy, cell);
            column += copies;
        }
    }

    SheetRows& rows_;
    std::uint64_t size_;
    const WhileReading& meanwhile_;
    std::size_t row_ = 0;
    std::size_t repeated_ = 0;
};

}  // namespace

void readOpenDocument(const Package& package, SheetFile& file, int chosen, const WhileReading& meanwhile) {
    const auto xml = package.open("content.xml");
    bool more = xml && xml->next();
    while (more) {
        if (!xml->isStart() || xml->name() != "table") {
            more = xml->next();
            continue;
        }
        file.sheets.push_back(xml->attribute("name"));
        if (static_cast<int>(file.sheets.size()) - 1 == chosen) {
            Table(file.rows, package.size("content.xml"), meanwhile).read(*xml);
            more = xml->next();
        } else {
            more = xml->nextBeyond();
        }
    }
}

}  // namespace orvenmod
