// The database's tables and views as the translator asks for them, read from SQLite's own tables and kept until the
// schema changes.
//
// SQLite keeps no types but the words that a column was declared with, and for a view's columns not even these:
//
//   table   "fprice" decimal(18,4)               decimal(18,4), by parseType
//           "ftotal" DOUBLE                      float: a word that isn't the dialect's goes by SQLite's affinity
//   view    /*orven create view v as select ..*/ the kept text is bound again, and its columns' types are the view's
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "store/sqlite/databasefile.h"
#include "store/sqlite/statement.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::sqlite {

class SqliteCatalog : public tsql::Catalog {
public:
    /// Both outlive the catalog.
    void attach(sqlite3* database, const DatabaseFile& file) {
        database_ = database;
        file_ = &file;
    }
    void detach();

    /// Throws Failure where it can't be read: that there is none would be no answer.
    const tsql::ObjectInfo* find(std::string_view name) const override;
    bool isKey(const tsql::ObjectInfo& table, std::string_view column) const override;
    bool isCarried(const tsql::ObjectInfo& table, std::string_view text, std::string_view column) const override;
    tsql::ViewDefinition viewDefinition(const tsql::ObjectInfo& view) const override;

    /// The query of the greatest key of what a list of that shape reads, for whoever has found it out; "" until then.
    std::string& greatestKeyQuery(const std::string& shapeKey);

    /// Forgets what it read where the schema has changed since, also by another process. Throws Failure.
    void refresh();
    void clear();

private:
    std::unique_ptr<tsql::ObjectInfo> read(const std::string& name) const;
    void readColumns(tsql::ObjectInfo& object) const;
    void readIndexes(tsql::ObjectInfo& object) const;

    sqlite3* database_ = nullptr;
    const DatabaseFile* file_ = nullptr;
    Statement version_;
    long long schemaVersion_ = -1;
    // By the name in lower case; an entry without an object is a name that was asked for in vain.
    mutable std::unordered_map<std::string, std::unique_ptr<tsql::ObjectInfo>> objects_;
    std::unordered_map<std::string, std::string> greatestKeyQueries_;  // by shape
};

}  // namespace orvenmod::store::sqlite
