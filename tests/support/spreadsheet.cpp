#include "support/spreadsheet.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <utility>

#include "support/temporary.h"

namespace orvenmod::test {

namespace {

namespace fs = std::filesystem;

using Cells = std::vector<std::vector<std::string>>;

// RFC 4180.
Cells parseCsv(const std::string& text) {
    Cells rows;
    std::vector<std::string> row;
    std::string cell;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c != '"') {
                cell += c;
            } else if (i + 1 < text.size() && text[i + 1] == '"') {
                cell += text[++i];
            } else {
                quoted = false;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',' || c == '\n') {
            row.push_back(std::exchange(cell, {}));
            if (c == '\n') rows.push_back(std::exchange(row, {}));
        } else {
            cell += c;
        }
    }
    return rows;
}

std::string contents(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

/// The file in another format, `filter` as LibreOffice names it; "" where it can't be read.
std::string converted(const std::string& file, const std::string& suffix, const std::string& filter) {
    const TemporaryFolder folder;
    const std::string log = folder.file("log");
    // The reader has a locale of its own, whatever that of the test.
    const bool page = fs::path(file).extension() == ".html";
    const std::string read = page ? "--infilter='HTML (StarCalc)' " : "";
    const std::string command = "LC_ALL=C.UTF-8 soffice -env:UserInstallation=file://" + folder.path() +
                                "/profile --headless " + read + "--convert-to '" + suffix + filter + "' --outdir '" +
                                folder.path() + "' '" + file + "' >'" + log + "' 2>&1";
    const int status = std::system(command.c_str());
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (status == 0 && entry.path().extension() == "." + suffix) return contents(entry.path());
    }
    ADD_FAILURE() << "no spreadsheet: " << file << ", status " << status << ":\n" << contents(log);
    return {};
}

/// All that the pattern's first group finds, in order.
std::vector<std::string> allOf(const std::string& text, const char* pattern) {
    const std::regex wanted(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator each(text.begin(), text.end(), wanted), end; each != end; ++each)
        found.push_back((*each)[1]);
    return found;
}

std::string firstOf(const std::string& text, const char* pattern) {
    const auto found = allOf(text, pattern);
    return found.empty() ? "" : found.front();
}

}  // namespace

Cells readSpreadsheet(const std::string& file, Reading reading, int sheet) {
    // The filter's options: separator, quote, UTF-8, first line, column formats, language, quote texts, special
    // numbers, as shown, formulas, spaces, sheet.
    const std::string options = std::string("44,34,76,1,,0,true,false,") +
                                (reading == Reading::asShown ? "true" : "false") + ",false,false," +
                                std::to_string(sheet);
    return parseCsv(converted(file, "csv", ":Text - txt - csv (StarCalc):" + options));
}

SheetLook readLook(const std::string& file) {
    const std::string page = converted(file, "html", "");
    SheetLook look;
    for (const std::string& width : allOf(page, "<colgroup width=\"(\\d+)\""))
        look.widths.push_back(std::stoi(width));
    for (const std::string& row : allOf(page, "<tr>([^]*?)</tr>")) {
        look.rows.emplace_back();
        for (const std::string& cell : allOf(row, "(<td[^]*?</td>)")) {
            look.rows.back().push_back({.alignment = firstOf(cell, "align=\"(\\w+)\""),
                                        .format = firstOf(cell, "sdnum=\"\\d+;\\d+;([^\"]*)\""),
                                        .number = firstOf(cell, "sdval=\"([^\"]*)\""),
                                        .bold = cell.find("<b>") != std::string::npos});
        }
    }
    return look;
}

Cells readSpreadsheetFormats(const std::string& file) {
    Cells formats;
    for (const auto& row : readLook(file).rows) {
        formats.emplace_back();
        for (const CellLook& cell : row)
            formats.back().push_back(cell.format);
    }
    return formats;
}

Cells readSpreadsheetChoices(const std::string& file) {
    Cells lists;
    for (const std::string& list :
         allOf(converted(file, "fods", ""), "table:condition=\"of:cell-content-is-in-list\\(([^)]*)\\)"))
        lists.push_back(allOf(list, "&quot;(.*?)&quot;"));
    return lists;
}

}  // namespace orvenmod::test
