#include "support/scripteddriver/scriptedserver.h"

#include <algorithm>
#include <utility>

namespace orvenmod::test {

Answer failed(std::vector<Diagnostic> diagnostics) {
    Answer answer;
    answer.fails = true;
    answer.diagnostics = std::move(diagnostics);
    return answer;
}

Answer oneRow(const ScriptedRow& row) {
    Answer answer;
    answer.columns.resize(row.size(), {.name = "value"});
    answer.rows.push_back(row);
    return answer;
}

ScriptedServer& ScriptedServer::get() {
    static ScriptedServer server;
    return server;
}

ScriptedServer& freshServer() {
    ScriptedServer::get().clear();
    return ScriptedServer::get();
}

void ScriptedServer::clear() {
    onConnect = {};
    onStatement = {};
    questions = {{"set lock_timeout", {}},
                 {"select N'中文'", oneRow({"中文", "中文", "suite"})},
                 {"select '中文'", oneRow({"中文"})}};
    onEnd = {};
    information.clear();
    deaf = false;
    asynchronous = false;
    oneSetAtATime = false;
    refusedAttribute = 0;
    // A connection that is still open goes on using its session.
    sessions.remove_if([](const Session& session) { return !session.open; });
    parameters.clear();
    catalogue.clear();
    cancels = 0;
    cancelled_ = false;
    released_ = false;
}

bool ScriptedServer::wait() {
    std::unique_lock lock(waiting_);
    wake_.wait(lock, [this] { return cancelled_ || released_; });
    released_ = false;
    return !std::exchange(cancelled_, false);
}

void ScriptedServer::cancel() {
    const std::lock_guard lock(waiting_);
    ++cancels;
    cancelled_ = !deaf;
    wake_.notify_all();
}

void ScriptedServer::release() {
    const std::lock_guard lock(waiting_);
    released_ = true;
    wake_.notify_all();
}

void ScriptedServer::closed(Session& session) {
    const std::lock_guard lock(waiting_);
    session.open = false;
    wake_.notify_all();
}

void ScriptedServer::awaitClosed() {
    std::unique_lock lock(waiting_);
    wake_.wait(lock, [this] {
        return std::none_of(sessions.begin(), sessions.end(), [](const Session& session) { return session.open; });
    });
}

}  // namespace orvenmod::test
