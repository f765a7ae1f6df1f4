// A host's own statements on a suite's database, whatever store holds it: in the system's dialect, SQL Server's, one
// statement a call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <orvenmod/export.h>

namespace orvenmod {

/// What the store refused, in its own words.
class ORVENMOD_API StatementFailure : public std::runtime_error {
public:
    StatementFailure(int number, const std::string& text);
    ~StatementFailure() override;

    /// As a server of the dialect numbers it.
    int number() const noexcept { return number_; }

private:
    int number_;
};

/// The rows of a query, fetched whole: they outlive their Statements. All values are texts, numbers in plain decimal,
/// dates as YYYY-MM-DD HH:MM:SS.
class ORVENMOD_API Rows {
public:
    Rows(Rows&& other) noexcept;
    Rows& operator=(Rows&& other) noexcept;
    ~Rows();

    std::size_t count() const;
    std::vector<std::string> columns() const;

    /// The cursor starts on the first row.
    bool eof() const;
    void moveNext();
    /// A field of the current row, named without regard to case; `fallback` for null. Throws StatementFailure 3265 for
    /// an unknown name, 3021 at the end.
    std::string text(const std::string& column, const std::string& fallback = "") const;
    bool isNull(const std::string& column) const;

private:
    friend class Statements;
    class Held;
    explicit Rows(std::unique_ptr<Held> held);

    std::unique_ptr<Held> held_;
};

/// A connection to a suite's database, open as long as it lives. What a transaction has not committed by then is
/// undone. One thread. Every call throws StatementFailure.
class ORVENMOD_API Statements {
public:
    explicit Statements(const std::string& connectionString);
    ~Statements();
    Statements(const Statements&) = delete;
    Statements& operator=(const Statements&) = delete;

    Rows open(const std::string& sql);
    /// The number of rows that it changed.
    std::int64_t execute(const std::string& sql);

    void beginTrans();
    void commitTrans();
    void rollbackTrans();
    bool inTransaction() const;

private:
    class Held;
    std::unique_ptr<Held> held_;
};

}  // namespace orvenmod
