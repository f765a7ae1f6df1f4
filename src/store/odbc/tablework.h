// What a table writer does at the driver: it reads the table's columns when it is opened, and stores a row by an insert
// whose values are parameters, long ones sent piece by piece.
//
//   fName, fPhoto    insert into [tblItem]([fName],[fPhoto]) values(?,?)
#pragma once

#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "store/odbc/odbctablewriter.h"
#include "store/odbc/odbcwork.h"

namespace orvenmod::store::odbc {

/// Reads a table's columns; none where there is no such table.
class ColumnsOfTable : public OdbcWork {
public:
    /// `name`: the table's, in front of it the owner and the database where they are told.
    ColumnsOfTable(OdbcHandle statement, std::vector<std::string> name, std::string quotedName);

    void run() override;
    std::vector<OdbcTableWriter::Column>& columns() { return columns_; }

private:
    bool isThere();

    std::vector<std::string> name_;
    std::string select_;
    std::vector<OdbcTableWriter::Column> columns_;
};

/// Runs the insert with the fields as its parameters, in their order.
class InsertOfFields : public OdbcWork {
public:
    InsertOfFields(OdbcHandle statement, std::string insert, std::vector<OdbcTableWriter::Field> fields);

    void run() override;
    void giveUp() override;

private:
    void bind(SQLUSMALLINT index, OdbcTableWriter::Field& field);
    void bindBinary(SQLUSMALLINT index, OdbcTableWriter::Field& field);
    void bindText(SQLUSMALLINT index, OdbcTableWriter::Field& field);
    void stream();
    void takePiece(std::span<const std::byte> bytes);

    std::string insert_;
    std::vector<OdbcTableWriter::Field> fields_;
    // Binary contents belong to the caller. The driver gets them piece by piece out of here, so that a photo needs its
    // memory once, and a caller may leave.
    std::vector<std::byte> piece_;
    std::mutex mutex_;
    bool givenUp_ = false;
};

}  // namespace orvenmod::store::odbc
