// What the tests of an import share: the editor's stage with its goods, files made by hand, and a list behind.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "editor/editortest.h"
#include "hierarchy/listwindow.h"
#include "platform/listgrid.h"

namespace orvenmod::test {

using Lines = std::vector<std::vector<std::string>>;

/// The list behind the import: notes that it was read again.
class NotedListWindow : public ListWindow {
public:
    platform::Tree& tv1() override { throw std::logic_error("no tree"); }
    platform::ListGrid& vsf1() override { throw std::logic_error("no list"); }
    void getListInfo(std::int16_t intType) override { refreshes.push_back(intType); }
    std::vector<int> refreshes;
};

/// A zip file of these parts.
void makePackage(const std::string& path, const std::vector<std::pair<std::string, std::string>>& parts);
/// An .xlsx whose first sheet's XML, its rows and what stands behind them, is this.
void makeSheet(const std::string& path, const std::string& rowsXml, const std::string& behind = "",
               const std::string& texts = "");
/// An .ods whose only sheet's XML is this.
void makeOpenDocument(const std::string& path, const std::string& rowsXml);
/// A compound file of one stream.
void makeCompound(const std::string& path, const std::string& stream, const std::string& content);
/// An .xls with a number in A1, which is merged with A2, and formulas behind it, a number, a text and an
/// error; and a number in D2.
void makeOldWorkbook(const std::string& path);
/// An .xlsx of texts.
void makeWorkbook(const std::string& path, const Lines& lines);

class ImportStage : public EditorStage {
public:
    explicit ImportStage(MakeScript makeScript = newMemoryScript);
    ImportStage(MakeScript makeScript, std::unique_ptr<Site> site);

    /// A workbook in the test's own folder.
    std::string workbook(const Lines& lines, const std::string& name = "list.xlsx");
    std::string text(const std::string& content, const std::string& name = "list.csv");
    /// Opens the window, plays the steps and closes it.
    void import(const Steps& steps);
    /// code|name|category|depth|path of the goods from 202 on.
    Texts added();

    NotedListWindow behind;
};

/// The shown rows of a list, from its first column on.
Rows shownRows(User& user, const std::string& grid, int columns);
/// Through the first two steps to the check.
void toCheck(User& user, const std::string& file);
std::string caption(User& user, const std::string& label);

class ImportTest : public ::testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    ImportStage stage;
};

}  // namespace orvenmod::test
