// The database's tables and views as the translator asks for them, read in one round trip and kept until the schema
// changes.
//
// Names are lower case in the database, and types the server's own. What was declared stands in comments, which live
// and go with what they comment:
//
//   tblitem.fnumber   character varying(30)   comment 'fNumber varchar(30)'      fNumber, varchar(30)
//   made.by.hand      double precision        none                               float
//   v_item            a view                  comment 'create view v_Item as ..' that text is bound again
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/postgres/native.h"
#include "store/tsql/catalog.h"

namespace orvenmod::store::postgres {

class Session;

class PostgresCatalog : public tsql::Catalog {
public:
    explicit PostgresCatalog(Session& session) : session_(session) {}

    /// Throws tsql::Error where a view no longer fits its tables, LostConnection.
    const tsql::ObjectInfo* find(std::string_view name) const override;

    void clear();
    /// A definition of this session's own has changed the table or view; all else is as it was.
    void forget(const std::string& object);
    /// Reads the schema where it isn't known. Whether it was read just now.
    bool refreshed();
    /// The schema's number when it was read.
    std::int64_t version() const { return version_; }
    void setVersion(std::int64_t version) { version_ = version; }

    /// Whether the table or view has a name that only its maker's quotes can write, so that definitions of it are his.
    bool isQuoted(const std::string& object) const;
    /// A table's name as declared; as it stands where the catalog doesn't know it.
    std::string declaredTable(const std::string& native) const;
    std::string declaredColumn(const std::string& table, const std::string& native) const;

private:
    struct Object {
        tsql::ObjectInfo info;
        std::string viewText;
        bool bound = true;  ///< a view's columns are of its text
    };

    void readAll() const;
    void readForgotten() const;
    void addColumns(const PGresult* rows) const;
    void addIndexes(const PGresult* rows) const;

    Session& session_;
    mutable bool known_ = false;
    mutable std::vector<std::string> forgotten_;  // native names
    mutable std::int64_t version_ = -1;
    mutable std::unordered_map<std::string, std::unique_ptr<Object>> objects_;  // by the native name
};

}  // namespace orvenmod::store::postgres
