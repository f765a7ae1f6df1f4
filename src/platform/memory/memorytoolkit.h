// The toolkit in memory: the whole contract without a screen, for tests and for hosts that play a script.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/report/reportdata.h"
#include "platform/toolkit.h"

namespace orvenmod::platform::memory {

class MemoryDriver;
class MemoryWindow;

enum class Output { preview, print };

/// A report that was previewed or printed, with all that was handed over.
struct ShownReport {
    Output output;
    report::ReportData data;
};

class MemoryToolkit final : public Toolkit {
public:
    /// The driver outlives the toolkit.
    explicit MemoryToolkit(MemoryDriver& driver) : driver_(driver) {}

    std::unique_ptr<Window> createWindow(const WindowDesign& design) override;
    std::unique_ptr<Report> createReport() override;
    Answer message(MessageKind kind, const std::string& text, const std::string& title) override;
    bool warnOffering(const std::string& text, const std::string& title, const std::string& further) override;
    void sendTab() override;
    void openDocument(const std::string& path) override;
    void paintPending() override { ++paints_; }
    std::unique_ptr<Progress> createProgress(const std::string& text, const std::string& title, int whole) override;

    MemoryDriver& driver() const { return driver_; }
    /// Runs the handler of an event that the user caused: a failure is shown and goes no further.
    void guard(const std::function<void()>& handler);
    /// The innermost modal window, null for none.
    MemoryWindow* front() const { return stack_.empty() ? nullptr : stack_.back(); }
    /// Time passes until the windows that are shown tick.
    void passTick();
    /// How often paintPending was called.
    int paints() const { return paints_; }

    /// Asked at each step of long work, with what is done, whether the user lets it go on. Without one all work ends.
    using ProgressObserver = std::function<bool(const std::string& text, int done, int whole)>;
    void setProgressObserver(ProgressObserver observer) { progressObserver_ = std::move(observer); }
    const ProgressObserver& progressObserver() const { return progressObserver_; }

    const std::vector<ShownReport>& reports() const { return reports_; }
    void addReport(ShownReport report) { reports_.push_back(std::move(report)); }

    /// Holds a window in front while it lives.
    class Front {
    public:
        Front(MemoryToolkit& toolkit, MemoryWindow& window) : toolkit_(toolkit) { toolkit_.stack_.push_back(&window); }
        ~Front() { toolkit_.stack_.pop_back(); }
        Front(const Front&) = delete;
        Front& operator=(const Front&) = delete;

    private:
        MemoryToolkit& toolkit_;
    };

private:
    MemoryDriver& driver_;
    std::vector<MemoryWindow*> stack_;
    std::vector<ShownReport> reports_;
    ProgressObserver progressObserver_;
    int paints_ = 0;
};

}  // namespace orvenmod::platform::memory
