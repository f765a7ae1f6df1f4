// A server that a test plays: what no server does on demand. The driver manager loads the library beside it as a
// driver; whatever the store asks of that driver is answered, and recorded, here.
//
//   ScriptedServer& server = freshServer();
//   server.onStatement = [](Session&, const std::string& sql) {
//       return sql == "update t set a=1" ? failed({{"40001", 1205, "a deadlock's victim"}}) : Answer{};
//   };
//   store.connect("Driver=Scripted;...");
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvenmod::test {

/// A diagnostic record of the driver.
struct Diagnostic {
    std::string state;
    int number = 0;
    std::string text;
};

struct ScriptedColumn {
    std::string name;
    int type = 12;  ///< ODBC's number; SQL_VARCHAR
    std::size_t size = 50;
    int digits = 0;
};

using ScriptedRow = std::vector<std::optional<std::string>>;

/// What a call gives. Without columns it is a statement without rows.
struct Answer {
    std::vector<ScriptedColumn> columns;
    std::vector<ScriptedRow> rows;
    std::int64_t touched = 0;
    std::vector<Diagnostic> diagnostics;
    bool fails = false;            ///< else the diagnostics are hints
    bool endsTransaction = false;  ///< the server rolls back by itself
    bool dies = false;             ///< the connection is gone
    int polls = 0;                 ///< how often an asynchronous call answers that it is still at work
    int failedSet = -1;            ///< of the parameters; the call itself succeeds, as drivers have it
    bool waits = false;            ///< until the statement is cancelled or released
    std::vector<Answer> later;     ///< further results
};

Answer failed(std::vector<Diagnostic> diagnostics);
/// One row of text columns.
Answer oneRow(const ScriptedRow& row);

/// A connection, as the driver sees it.
struct Session {
    std::string connectionString;
    std::map<int, std::int64_t> numbers;  ///< attributes that were set before and after connecting
    std::map<int, std::string> texts;
    bool open = false;
    bool autocommit = true;
    bool inTransaction = false;
    bool dead = false;
    std::vector<std::string> statements;
    std::vector<std::string> questions;  ///< statements that the server's `questions` answered
};

class ScriptedServer {
public:
    static ScriptedServer& get();

    /// The answers; nothing set is success without rows.
    std::function<Answer(Session&)> onConnect;
    std::function<Answer(Session&, const std::string& sql)> onStatement;
    /// What the store asks of a new session, by how the statement begins, with a good server's answers.
    std::vector<std::pair<std::string, Answer>> questions;
    /// Of a commit or a rollback.
    std::function<Answer(Session&, bool commit)> onEnd;
    /// What SQLGetInfo answers for a text, by ODBC's number.
    std::map<int, std::string> information;
    bool deaf = false;                  ///< to cancels
    bool asynchronous = false;          ///< the driver has asynchronous calls
    bool oneSetAtATime = false;         ///< the driver takes no arrays of parameters
    std::int64_t refusedAttribute = 0;  ///< a connection attribute that the driver doesn't know

    /// Every connection that was ever asked for, in order; they stay for the test to look at.
    std::list<Session> sessions;
    /// Parameters of executed statements, as texts.
    std::vector<ScriptedRow> parameters;
    /// Catalogue calls: "tables dbo.tblItem".
    std::vector<std::string> catalogue;
    int cancels = 0;

    /// Blocks the calling thread until cancelled or released; false where it was cancelled.
    bool wait();
    void cancel();
    void release();
    /// A connection was closed.
    void closed(Session& session);
    /// Blocks the calling thread until every connection is closed.
    void awaitClosed();

    /// The driver's calls run one at a time under this, but for a wait.
    std::mutex mutex;

private:
    std::mutex waiting_;
    std::condition_variable wake_;
    bool cancelled_ = false;
    bool released_ = false;
    friend ScriptedServer& freshServer();
    void clear();
};

/// The server with nothing set and nothing recorded.
ScriptedServer& freshServer();

}  // namespace orvenmod::test
