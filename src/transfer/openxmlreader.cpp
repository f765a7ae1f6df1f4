// Workbooks of Office Open XML, .xlsx: a part a sheet, beside it the texts that all sheets share and the formats that
// tell a day from a number.
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <stdexcept>

#include "platform/numberformat.h"
#include "transfer/daynumber.h"
#include "transfer/package.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr std::size_t kRowsAStep = 500;
constexpr int kLastColumn = 16384;  // XFD

int numberOf(std::string_view text, int fallback = 0) {
    int number = fallback;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::string folderOf(const std::string& part) {
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? "" : part.substr(0, slash + 1);
}

struct Relation {
    std::string type;  ///< the last word of it
    std::string part;
};

/// What a part refers to, by the ids that it uses.
std::map<std::string, Relation> relationsOf(const Package& package, const std::string& part) {
    std::map<std::string, Relation> relations;
    const std::string folder = folderOf(part);
    const auto xml = package.open(folder + "_rels/" + part.substr(folder.size()) + ".rels");
    while (xml && xml->next()) {
        if (!xml->isStart() || xml->name() != "Relationship") continue;
        const std::string type = xml->attribute("Type");
        const std::string target = xml->attribute("Target");
        const std::string path = target.starts_with('/') ? target.substr(1) : folder + target;
        relations[xml->attribute("Id")] = {type.substr(type.rfind('/') + 1),
                                           std::filesystem::path(path).lexically_normal().string()};
    }
    return relations;
}

std::string partOfType(const std::map<std::string, Relation>& relations, std::string_view type) {
    for (const auto& [id, relation] : relations) {
        if (relation.type == type) return relation.part;
    }
    return "";
}

/// The text of the element that was opened: its runs, without the reading aids beside them.
std::string textWithin(XmlPart& xml) {
    std::string text;
    if (xml.isEmpty()) return text;
    const int depth = xml.depth();
    bool more = xml.next();
    while (more && !(xml.isEnd() && xml.depth() == depth)) {
        if (xml.isStart() && xml.name() == "rPh") {
            more = xml.nextBeyond();
            continue;
        }
        if (xml.isText()) text += xml.text();
        more = xml.next();
    }
    return text;
}

class Book {
public:
    /// The texts that its sheets share go to `rows`.
    Book(const Package& package, int chosen, SheetRows& rows, const WhileReading& meanwhile) : package_(package) {
        part_ = partOfType(relationsOf(package, ""), "officeDocument");
        const auto relations = relationsOf(package, part_);
        readSheets(relations);
        const std::string texts = partOfType(relations, "sharedStrings");
        textBytes_ = texts.empty() ? 0 : package.size(texts);
        bytes_ = textBytes_ + (names_.empty() ? 0 : package.size(part(static_cast<std::size_t>(chosen))));
        readTexts(texts, rows, meanwhile);
        readFormats(partOfType(relations, "styles"));
    }

    const std::vector<std::string>& names() const { return names_; }
    const std::string& part(std::size_t sheet) const { return parts_.at(sheet); }
    bool isDay(int format) const {
        return format >= 0 && static_cast<std::size_t>(format) < days_.size() &&
               days_[static_cast<std::size_t>(format)];
    }
    DayZero dayZero() const { return dayZero_; }
    /// Of the texts, and with those of the chosen sheet.
    std::uint64_t textBytes() const { return textBytes_; }
    std::uint64_t bytes() const { return bytes_; }

private:
    void readSheets(const std::map<std::string, Relation>& relations) {
        const auto xml = package_.open(part_);
        while (xml && xml->next()) {
            if (!xml->isStart()) continue;
            if (xml->name() == "workbookPr") {
                const std::string flag = xml->attribute("date1904");
                if (flag == "1" || flag == "true") dayZero_ = DayZero::of1904;
            }
            if (xml->name() != "sheet") continue;
            const auto relation = relations.find(xml->attribute("id"));
            if (relation == relations.end() || relation->second.type != "worksheet") continue;
            names_.push_back(xml->attribute("name"));
            parts_.push_back(relation->second.part);
        }
    }

    void readTexts(const std::string& part, SheetRows& rows, const WhileReading& meanwhile) {
        const auto xml = part.empty() ? nullptr : package_.open(part);
        while (xml && xml->next()) {
            if (!xml->isStart() || xml->name() != "si") continue;
            rows.addShared(textWithin(*xml));
            if (rows.sharedCount() % kRowsAStep == 0) meanwhile(xml->position(), bytes_);
        }
    }

    void readFormats(const std::string& part) {
        const auto xml = part.empty() ? nullptr : package_.open(part);
        std::map<int, std::string> codes;
        bool ofCells = false;
        while (xml && xml->next()) {
            if (xml->name() == "cellXfs") ofCells = xml->isStart();
            if (!xml->isStart()) continue;
            if (xml->name() == "numFmt") codes[numberOf(xml->attribute("numFmtId"))] = xml->attribute("formatCode");
            if (!ofCells || xml->name() != "xf") continue;
            const int id = numberOf(xml->attribute("numFmtId"));
            const auto own = codes.find(id);
            days_.push_back(own == codes.end() ? isDayFormat(id) : isDayFormat(own->second));
        }
    }

    const Package& package_;
    std::string part_;
    std::vector<std::string> names_;
    std::vector<std::string> parts_;
    std::uint64_t textBytes_ = 0;
    std::uint64_t bytes_ = 0;
    std::vector<bool> days_;
    DayZero dayZero_ = DayZero::of1900;
};

struct Address {
    int row = 0;
    int column = 0;
};

/// "AB12", from 0; a column that no sheet has is none.
Address addressOf(std::string_view text) {
    int column = 0;
    std::size_t at = 0;
    for (; at < text.size() && text[at] >= 'A' && text[at] <= 'Z'; ++at)
        column = column > kLastColumn ? kLastColumn + 1 : column * 26 + (text[at] - 'A' + 1);
    if (column > kLastColumn) column = 0;
    return {numberOf(text.substr(at)) - 1, column - 1};
}

class Sheet {
public:
    Sheet(const Book& book, SheetRows& rows, const WhileReading& meanwhile)
        : book_(book), rows_(rows), meanwhile_(meanwhile) {}

    void read(XmlPart& xml) {
        while (xml.next()) {
            if (!xml.isStart()) continue;
            if (xml.name() == "row") beginRow(xml);
            if (xml.name() == "c") readCell(xml);
            if (xml.name() == "mergeCell") noteMerged(xml.attribute("ref"));
        }
        rows_.finish();
    }

private:
    void beginRow(const XmlPart& xml) {
        at_.row = numberOf(xml.attribute("r"), at_.row + 2) - 1;
        at_.column = -1;
        if (at_.row >= static_cast<int>(kMostSheetRows)) throw std::length_error("rows");
        if (static_cast<std::size_t>(at_.row) % kRowsAStep == 0)
            meanwhile_(book_.textBytes() + xml.position(), book_.bytes());
    }

    void readCell(XmlPart& xml) {
        const std::string reference = xml.attribute("r");
        if (reference.empty()) {
            ++at_.column;
        } else {
            at_.column = addressOf(reference).column;
        }
        const std::string type = xml.attribute("t");
        const int format = numberOf(xml.attribute("s"));
        bool formula = false;
        std::string value;
        const int depth = xml.depth();
        if (!xml.isEmpty()) {
            while (xml.next() && !(xml.isEnd() && xml.depth() == depth)) {
                if (!xml.isStart()) continue;
                if (xml.name() == "f") formula = true;
                if (xml.name() == "v" || xml.name() == "is") value = textWithin(xml);
            }
        }
        if (at_.row < 0 || at_.column < 0) return;
        const auto row = static_cast<std::size_t>(at_.row);
        if (type == "s" && !value.empty())
            return rows_.putShared(row, at_.column, static_cast<std::size_t>(numberOf(value, -1)));
        SheetCell cell =
            value.empty() && formula && type != "str" ? SheetCell{CellKind::uncomputed} : cellOf(type, value, format);
        if (!cell.isEmpty()) rows_.put(row, at_.column, std::move(cell));
    }

    SheetCell cellOf(const std::string& type, const std::string& value, int format) const {
        if (value.empty()) return {};
        if (type == "str" || type == "inlineStr" || type == "b") return {CellKind::text, value};
        if (type == "e") return {CellKind::error, value};
        if (type == "d") return {CellKind::date, dayText(value)};
        double number = 0;
        const auto parsed = std::from_chars(value.data(), value.data() + value.size(), number);
        if (parsed.ec != std::errc()) return {CellKind::text, value};
        if (book_.isDay(format)) {
            std::string day = dayText(number, book_.dayZero());
            if (!day.empty()) return {CellKind::date, std::move(day)};
        }
        return {CellKind::number, platform::plainNumber(number)};
    }

    // The merged cells are told behind all rows.
    void noteMerged(const std::string& range) {
        const std::size_t colon = range.find(':');
        if (colon == std::string::npos) return;
        rows_.finish();
        const Address first = addressOf(std::string_view(range).substr(0, colon));
        const Address last = addressOf(std::string_view(range).substr(colon + 1));
        rows_.markMerged(static_cast<std::size_t>(std::max(first.row, 0)), first.column,
                         static_cast<std::size_t>(std::max(last.row, 0)), last.column);
    }

    const Book& book_;
    SheetRows& rows_;
    const WhileReading& meanwhile_;
    Address at_{-1, -1};
};

}  // namespace

void readOpenXml(const Package& package, SheetFile& file, int chosen, const WhileReading& meanwhile) {
    const Book book(package, chosen, file.rows, meanwhile);
    file.sheets = book.names();
    if (file.sheets.empty()) return;
    const auto xml = package.open(book.part(static_cast<std::size_t>(chosen)));
    if (xml) Sheet(book, file.rows, meanwhile).read(*xml);
}

}  // namespace orvenmod
