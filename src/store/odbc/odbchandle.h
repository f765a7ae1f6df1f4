// ODBC's handles, owned, and the failures that they report.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

#include "store/failure.h"

namespace orvenmod::store::odbc {

/// A diagnostic record of the driver: its text without the names of the layers.
struct Diagnostic {
    std::string state;
    int number = 0;
    std::string text;
};

class OdbcHandle {
public:
    OdbcHandle() = default;
    /// Throws Failure where the parent can't make it.
    OdbcHandle(SQLSMALLINT type, SQLHANDLE parent);
    ~OdbcHandle();
    OdbcHandle(OdbcHandle&& other) noexcept;
    OdbcHandle& operator=(OdbcHandle&& other) noexcept;

    SQLHANDLE get() const { return handle_; }
    SQLSMALLINT type() const { return type_; }

    /// Throws the handle's failure unless the result is a success.
    void check(SQLRETURN result) const;
    /// All records of the last call, the driver manager's included.
    std::vector<Diagnostic> diagnostics() const;
    /// The failure that the handle reports: its text without the names of the layers, its native number.
    Failure failure() const;

private:
    SQLSMALLINT type_ = 0;
    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

inline SQLCHAR* sqlText(const char* text) { return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text)); }

}  // namespace orvenmod::store::odbc
