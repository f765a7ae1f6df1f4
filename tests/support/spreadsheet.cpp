#include "support/spreadsheet.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
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

}  // namespace

Cells readSpreadsheet(const std::string& file, Reading reading) {
    const TemporaryFolder folder;
    // The filter's options: separator, quote, UTF-8, first line, column formats, language, quote texts, special
    // numbers, as shown, formulas, spaces, sheet.
    const std::string options =
        std::string("44,34,76,1,,0,true,false,") + (reading == Reading::asShown ? "true" : "false") + ",false,false,1";
    const std::string command = "soffice -env:UserInstallation=file://" + folder.path() +
                                "/profile --headless --convert-to 'csv:Text - txt - csv (StarCalc):" + options +
                                "' --outdir '" + folder.path() + "' '" + file + "' >'" + folder.file("log") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (entry.path().extension() != ".csv") continue;
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        return parseCsv(text.str());
    }
    ADD_FAILURE() << "no spreadsheet: " << file;
    return {};
}

}  // namespace orvenmod::test
