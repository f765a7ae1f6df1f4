// A database of a test, with the suite's schema, and a folder of its own, which go away with it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "store/connection.h"
#include "support/rows.h"
#include "support/site.h"
#include "support/temporary.h"

namespace orvenmod::test {

/// "Provider=SQLite;Data Source=..." for the file.
std::string connectionStringFor(const std::string& file);

class Database {
public:
    Database();

    /// Of the embedded store alone.
    std::string file() const;
    std::string connectionString() const { return site_->connectionString(); }
    const TemporaryFolder& folder() const { return folder_; }

    /// What is told where another writer holds what is to be changed, until the Busy Timeout is over.
    std::string busyText() const;
    /// Everything in it, as text, to compare before and after.
    std::string dump() const { return site_->dump(); }

    void execute(const std::string& sql);
    Rows rows(const std::string& sql) { return rowsOf(*connection_, sql); }
    /// The first cell.
    std::string value(const std::string& sql);

    // What the suite and its administrators would have stored. `parent` 0 is the top of the tree.
    void addCategory(int itemClass, int id, const std::string& number, const std::string& name, int parent = 0);
    /// Also in the class's table.
    void addItem(int itemClass, int id, const std::string& number, const std::string& name, int parent = 0);
    void addStock(int item, int stock, const std::string& quantity);
    void grant(int user, const std::string& right);
    void hideColumn(int user, int itemClass, const std::string& field);
    void setStandingCondition(int user, int itemClass, const std::string& condition);

    /// Four goods in three categories, some in stock:
    ///   12 五金(01)        13 螺丝(01.01)   101 01.01.001 内六角螺丝  1234.5 in warehouse 1, 10 in 2
    ///                                       102 01.01.002 螺母        0 in warehouse 1
    ///   14 电器(02)                         103 02.001    墙壁开关    5 in warehouse 2
    ///                                       104 03        劳保手套    none
    void addGoods();

private:
    void addRow(int itemClass, int id, const std::string& number, const std::string& name, int parent, bool detail);

    TemporaryFolder folder_;
    std::unique_ptr<Site> site_;
    std::unique_ptr<store::Connection> connection_;
};

}  // namespace orvenmod::test
