// Writes down every operation that reaches a store. The file of the environment variable ORVEN_SQL_TRACE takes
// one JSON object a line; tests take the records themselves.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod::store {

/// One operation: what was asked, and how it ended.
struct TraceRecord {
    /// "connect", "execute", "open", "openTable", "addRow", "read", "outline", "openLoader", "load", "begin", "commit",
    /// "rollback", "close"
    std::string operation;
    std::string sql;        ///< the statement to the blank; the table's name for openTable, addRow, openLoader and load
    std::int64_t rows = 0;  ///< rows fetched or touched
    double milliseconds = 0;
    std::string read;  ///< of a list's query: "keys", "unseen" or "whole"; the fetches of its rows are no operations
    bool failed = false;
    int number = 0;    ///< the failure's
    std::string text;  ///< the failure's
};

using TraceSink = std::function<void(const TraceRecord&)>;

/// A store whose connections report to the sink.
class TracingStore : public Store {
public:
    TracingStore(Store& target, TraceSink sink);
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;

private:
    Store& target_;
    TraceSink sink_;
};

/// A sink that appends JSON lines to a file; a file that can't be written drops them silently.
TraceSink traceToFile(const std::string& path);

}  // namespace orvenmod::store
