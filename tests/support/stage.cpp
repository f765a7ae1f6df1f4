#include "support/stage.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "frame/appstate.h"
#include "store/connectionwrapper.h"
#include "support/windowedrows.h"

namespace orvenmod::test {

namespace {

std::string joined(const std::string& application, const std::string& section, const std::string& key) {
    return application + "\\" + section + "\\" + key;
}

constexpr const char* kSuite = "Orvencom";

class CountedConnection : public store::ConnectionWrapper {
public:
    CountedConnection(std::unique_ptr<store::Connection> target, std::shared_ptr<CountingStore::State> state)
        : ConnectionWrapper(std::move(target)), state_(std::move(state)) {
        ++state_->alive;
    }
    ~CountedConnection() override { --state_->alive; }
    void executeAll(std::span<const std::string> statements, const Done& done) override {
        target().executeAll(statements, done);
    }
    std::unique_ptr<store::ListRows> openList(std::string_view sql) override {
        if (!state_->windows) return target().openList(sql);
        return std::make_unique<WindowedRows>(target().open(sql), *state_->windows);
    }
    std::unique_ptr<store::ListRows> openUnseen(std::string_view sql) override {
        return state_->windows ? openList(sql) : target().openUnseen(sql);
    }
    void setProgress(std::function<void()> progress) override {
        state_->progress = progress;
        ConnectionWrapper::setProgress([state = state_, progress = std::move(progress)] {
            if (state->whileAwaiting) state->whileAwaiting();
            if (progress) progress();
        });
    }

private:
    std::shared_ptr<CountingStore::State> state_;
};

}  // namespace

std::string MapSettings::get(const std::string& application, const std::string& section, const std::string& key,
                             const std::string& fallback) {
    const auto found = values_.find(joined(application, section, key));
    return found == values_.end() ? fallback : found->second;
}

void MapSettings::save(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& value) {
    if (refuseSaves) throw std::runtime_error("设置无法写入");
    values_[joined(application, section, key)] = value;
}

void MapSettings::remove(const std::string& application, const std::string& section, const std::string& key) {
    std::string start = application + "\\";
    if (!section.empty()) start += section + "\\";
    std::erase_if(values_, [&](const auto& each) {
        return key.empty() ? each.first.starts_with(start) : each.first == joined(application, section, key);
    });
}

std::unique_ptr<store::Connection> CountingStore::connect(const std::string& connectionString) {
    return std::make_unique<CountedConnection>(target_.connect(connectionString), state_);
}

RowWindows& CountingStore::readByWindows() {
    if (!state_->windows) state_->windows = std::make_shared<RowWindows>();
    return *state_->windows;
}

Stage::Stage(MakeScript makeScript) : Stage(makeScript, std::make_unique<Database>()) {}

Stage::Stage(MakeScript makeScript, std::unique_ptr<Site> site)
    : Stage(makeScript, std::make_unique<Database>(std::move(site))) {}

Stage::Stage(MakeScript makeScript, std::unique_ptr<Database> database)
    : database_(std::move(database)),
      script_(makeScript()),
      counting_(stores()),
      faulty_(counting_, faults_),
      tracing_(faulty_,
               [this](const store::TraceRecord& record) {
                   trace_.push_back(record);
                   if (watcher_) watcher_(record);
               }),
      services_{tracing_, script_->toolkit(), settings_, iniFiles_, folders_, clock_} {
    appState() = AppState();
    useServices(&services_);
}

Stage::~Stage() {
    appState() = AppState();
    useServices(nullptr);
}

void Stage::set(const std::string& section, const std::string& key, const std::string& value) {
    settings_.save(kSuite, section, key, value);
}

std::string Stage::get(const std::string& section, const std::string& key) {
    return settings_.get(kSuite, section, key, "");
}

std::vector<std::string> Stage::statements() const {
    std::vector<std::string> all;
    for (const store::TraceRecord& record : trace_) {
        if (record.operation == "open" || record.operation == "execute") all.push_back(record.sql);
    }
    return all;
}

std::string Stage::lastStatement() const {
    const auto all = statements();
    return all.empty() ? "" : all.back();
}

std::vector<std::string> Stage::operations() const {
    std::vector<std::string> all;
    for (const store::TraceRecord& record : trace_)
        all.push_back(record.operation);
    return all;
}

std::string Stage::contents(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void Stage::finish() {
    script_->finish();
    EXPECT_EQ(connectionsAlive(), 0);
}

}  // namespace orvenmod::test
