// A prepared statement, owned.
#pragma once

#include <sqlite3.h>

#include <memory>

namespace orvenmod::store::sqlite {

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Takes a statement back to its start when the scope ends, so that none keeps a lock.
class ResetStatement {
public:
    explicit ResetStatement(sqlite3_stmt* statement) : statement_(statement) {}
    ~ResetStatement() { sqlite3_reset(statement_); }
    ResetStatement(const ResetStatement&) = delete;
    ResetStatement& operator=(const ResetStatement&) = delete;

private:
    sqlite3_stmt* statement_;
};

}  // namespace orvenmod::store::sqlite
