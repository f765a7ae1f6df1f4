// The measurements, a file each.
#pragma once

#include <string>
#include <vector>

#include "report.h"

namespace orvenmod::bench {

/// From so many on a list is to be independent of its length.
inline constexpr int kMany = 1000000;

/// What one size gave, in milliseconds, so that sizes can be compared.
struct ListTimes {
    int goods = 0;
    double bare = 0;
    double list = 0;
    double node = 0;
    double search = 0;
    double save = 0;
};

/// The first object of this process, which starts the toolkit: nothing may have started it before.
void measureFirstObject(Report& report);
/// Sorting a million rows and narrowing a hundred thousand, in memory.
void measureArranging(Report& report);

/// Rows of the list against the bare loop, their memory, and the commands that run the list again.
ListTimes measureList(Report& report, const std::string& folder, int goods);
/// From the entry call to the first painted rows. `bare` in milliseconds.
void measureWindow(Report& report, const std::string& folder, int goods, double bare);
/// The shown list dragged to any place.
void measureScrolling(Report& report, const std::string& folder, int goods);
/// A long list sorted, narrowed and summed, against the same on rows that are held.
void measureWalks(Report& report, const std::string& folder, int goods);
/// The tree with 1 thousand and 10 thousand categories.
void measureTree(Report& report, const std::string& folder);
/// Trees in windows on the Qt toolkit, with every node made visible.
void measureShownTrees(Report& report, const std::string& folder);
/// "Provider=SQLite;..." of a database with so many categories of goods.
std::string treeDatabase(const std::string& folder, int categories);
/// The commands of the class designer on 500 classes, against their statements alone.
void measureDesigner(Report& report, const std::string& folder);
/// Moves of subtrees of 1 thousand to 100 thousand rows among so many goods, against their statements in SQLite's loop.
void measureMoves(Report& report, const std::string& folder, int goods);
/// The guard over a catalogue of 200 fields on bills of 1 million rows, against its statements in SQLite's loop.
void measureGuard(Report& report, const std::string& folder);
/// The list of a dictionary of 100 thousand entries.
void measureDictionary(Report& report, const std::string& folder);
/// The editor of a class with 60 fields, 10 lookups of 10 thousand items and 5 thousand categories.
void measureEditor(Report& report, const std::string& folder);
/// A new item saved; the milliseconds.
double measureSave(Report& report, const std::string& folder, int goods);
/// A long list of goods brought in.
void measureImport(Report& report, const std::string& folder);
/// Contents of 64 MiB going in and coming back: the memory that they take.
void measureContents(Report& report, const std::string& folder);
/// The list as a workbook, in rows a second and its memory, and the first page of a long preview.
void measureOutput(Report& report, const std::string& folder);
/// A statement whose shape is cached.
void measureStatements(Report& report, const std::string& folder);
/// Rows and a command's cost on a server that speaks the dialect, against ODBC's own calls; a note where there is none.
void measureOdbc(Report& report);

/// The lists, saves and round trips on a PostgreSQL server that is started for it.
void measureServer(Report& report, const std::string& folder, const std::vector<int>& sizes);
/// The saves among these.
void measureServerSaves(Report& report, const std::string& folder, const std::vector<int>& sizes);

}  // namespace orvenmod::bench
