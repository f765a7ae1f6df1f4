#include "memorystage.h"

#include <stdexcept>

#include "entry/startup.h"
#include "frame/appstate.h"

namespace orvenmod::bench {

using platform::memory::MemoryWindow;

MemoryStage::MemoryStage(store::Store* store)
    : before_(services()),
      tracing_(store == nullptr ? componentStore() : *store,
               [this](const store::TraceRecord& record) { records_.push_back(record); }),
      toolkit_(*this),
      services_{tracing_, toolkit_, before_.settings, before_.iniFiles, before_.folders, before_.clock} {
    useServices(&services_);
}

MemoryStage::~MemoryStage() {
    useServices(&before_);
    appState().gConn.reset();
}

std::string MemoryStage::takeFailure() {
    try {
        if (const auto failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
        return "";
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

void MemoryStage::onModal(MemoryWindow& window) {
    try {
        if (steps_.empty() || steps_.front().first != window.name()) {
            throw std::logic_error("unexpected " + window.name());
        }
        const Steps mine = std::move(steps_.front().second);
        steps_.erase(steps_.begin());
        mine(window);
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
    }
}

platform::Answer MemoryStage::onMessage(platform::MessageKind kind, const std::string& text, const std::string&) {
    if (kind != platform::MessageKind::information) throw std::runtime_error(text);
    return platform::Answer::ok;
}

std::vector<std::string> statementsOf(const std::vector<store::TraceRecord>& records) {
    std::vector<std::string> all;
    for (const store::TraceRecord& record : records) {
        if (record.operation == "open" || record.operation == "execute") all.push_back(record.sql);
        if (record.operation == "begin") all.emplace_back("begin transaction");
        if (record.operation == "commit") all.emplace_back("commit transaction");
    }
    return all;
}

}  // namespace orvenmod::bench
