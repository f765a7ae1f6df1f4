// The component on the memory toolkit: somebody works in each window that opens, in turn, and every operation that
// reaches the store is noted.
#pragma once

#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "frame/services.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/memory/memorywindow.h"
#include "store/trace.h"

namespace orvenmod::bench {

class MemoryStage : private platform::memory::MemoryDriver {
public:
    using Steps = std::function<void(platform::memory::MemoryWindow&)>;

    /// Without a store of its own, that of the component.
    explicit MemoryStage(store::Store* store = nullptr);
    ~MemoryStage() override;
    MemoryStage(const MemoryStage&) = delete;
    MemoryStage& operator=(const MemoryStage&) = delete;

    /// What is done in the next window, which must bear the name. Every box but an information is a failure.
    void onWindow(const std::string& name, Steps steps) { steps_.emplace_back(name, std::move(steps)); }
    /// Throws what went wrong in a window: nothing may pass the toolkit.
    void check() const {
        if (failure_) std::rethrow_exception(failure_);
    }

    /// Likewise its text, "" for none, and forgets it.
    std::string takeFailure();

    const std::vector<store::TraceRecord>& records() const { return records_; }
    void forgetRecords() { records_.clear(); }
    void keepRecords(std::vector<store::TraceRecord> records) { records_ = std::move(records); }
    /// The path that file dialogs give.
    void chooseFile(const std::string& path) { file_ = path; }

private:
    void onModal(platform::memory::MemoryWindow& window) override;
    platform::Answer onMessage(platform::MessageKind kind, const std::string& text, const std::string&) override;
    std::string onFileDialog(bool, const std::string&) override { return file_; }
    void onPopUp(platform::memory::MemoryMenu&) override {}
    void onDocument(const std::string&) override {}

    Services& before_;
    std::vector<store::TraceRecord> records_;
    store::TracingStore tracing_;
    platform::memory::MemoryToolkit toolkit_;
    Services services_;
    std::vector<std::pair<std::string, Steps>> steps_;
    std::exception_ptr failure_;
    std::string file_;
};

/// What was sent, as statements: the transaction's ends too.
std::vector<std::string> statementsOf(const std::vector<store::TraceRecord>& records);

}  // namespace orvenmod::bench
