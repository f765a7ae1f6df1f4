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

/// The file in another form.
std::string converted(const std::string& file, const std::string& suffix, const std::string& filter) {
    const TemporaryFolder folder;
    const std::string command = "soffice -env:UserInstallation=file://" + folder.path() +
                                "/profile --headless --convert-to '" + suffix + filter + "' --outdir '" +
                                folder.path() + "' '" + file + "' >'" + folder.file("log") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (entry.path().extension() != "." + suffix) continue;
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        return text.str();
    }
    ADD_FAILURE() << "no spreadsheet: " << file;
    return "";
}

}  // namespace

Cells readSpreadsheet(const std::string& file, Reading reading) {
    // The filter's options: separator, quote, UTF-8, first line, column formats, language, quote texts, special
    // numbers, as shown, formulas, spaces, sheet.
    const std::string options =
        std::string("44,34,76,1,,0,true,false,") + (reading == Reading::asShown ? "true" : "false") + ",false,false,1";
    return parseCsv(converted(file, "csv", ":Text - txt - csv (StarCalc):" + options));
}

Cells readSpreadsheetFormats(const std::string& file) {
    // As HTML a cell bears its format behind two languages: <td sdnum="2052;0;@">.
    static const std::regex kCell(R"(<tr|<td[^>]*>)");
    static const std::regex kFormat(R"re(sdnum="[^;"]*;[^;"]*;([^"]*)")re");
    const std::string page = converted(file, "html", "");
    Cells rows;
    for (auto at = std::sregex_iterator(page.begin(), page.end(), kCell); at != std::sregex_iterator(); ++at) {
        const std::string tag = at->str();
        if (tag == "<tr") {
            rows.emplace_back();
            continue;
        }
        std::smatch format;
        rows.back().push_back(std::regex_search(tag, format, kFormat) ? format[1].str() : "");
    }
    return rows;
}

}  // namespace orvenmod::test
