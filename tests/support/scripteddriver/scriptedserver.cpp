#include "support/scripteddriver/scriptedserver.h"

#include <utility>

namespace orvenmod::test {

Answer failed(std::vector<Diagnostic> diagnostics) {
    Answer answer;
    answer.fails = true;
    answer.diagnostics = std::move(diagnostics);
    return answer;
}

Answer oneValue(const std::string& value) {
    Answer answer;
    answer.columns.push_back({.name = "value"});
    answer.rows.push_back({value});
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
    onEnd = {};
    information.clear();
    asynchronous = false;
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
    cancelled_ = true;
    wake_.notify_all();
}

void ScriptedServer::release() {
    const std::lock_guard lock(waiting_);
    released_ = true;
    wake_.notify_all();
}

}  // namespace orvenmod::test
