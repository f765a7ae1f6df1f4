// A PostgreSQL server of the bench's own with copies of the embedded databases, and its statements without the store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/postgresserver.h"

namespace orvenmod::bench {

enum class Durability { off, on };

/// A suite moved to the server: its rows and what that took, the comparison of both sides with it.
struct Copied {
    std::int64_t rows = 0;
    double milliseconds = 0;
};

class BenchServer {
public:
    explicit BenchServer(Durability durability);

    const std::string& host() const { return server_.host(); }
    /// A copy of the goods' sample database with that many goods, analyzed; its connection string.
    std::string goodsDatabase(const std::string& folder, int goods);
    /// How the last of these was copied.
    const Copied& copied() const { return copied_; }
    /// A statement of the server's own language, as its superuser.
    std::string run(const std::string& target, const std::string& sql) const;
    /// What this thread and the database's sessions have computed, in milliseconds: the machine's other work, which
    /// reaches a server at each of its round trips, doesn't count.
    double computed(const std::string& target) const;

private:
    test::PostgresServer server_;
    Copied copied_;
    mutable double asking_ = 0;  // what this thread has computed to read the clock
};

/// Translated statements, prepared on a session of their own, in a loop of the client library's calls.
class BareServerLoop {
public:
    /// "begin transaction" and "commit transaction" among them stand for a transaction's ends.
    BareServerLoop(const std::string& connectionString, const std::vector<std::string>& statements);
    ~BareServerLoop();
    BareServerLoop(const BareServerLoop&) = delete;
    BareServerLoop& operator=(const BareServerLoop&) = delete;

    /// Runs all once and copies every cell of every row; the bytes of the copies.
    std::size_t run();

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

}  // namespace orvenmod::bench
