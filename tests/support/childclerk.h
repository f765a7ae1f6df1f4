// A clerk in a process of its own, on the memory toolkit: what the child programs of the tests share.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/memory/memorydriver.h"
#include "store/connection.h"
#include "support/memory_user.h"

namespace orvenmod::test {

class ChildClerk : public platform::memory::MemoryDriver {
public:
    /// Every file dialog gives that file.
    explicit ChildClerk(std::string file = "") : file_(std::move(file)) {}

    void onModal(platform::memory::MemoryWindow& window) override;
    std::string onFileDialog(bool, const std::string&) override { return file_; }
    void onPopUp(platform::memory::MemoryMenu&) override {}
    void onDocument(const std::string&) override {}

protected:
    /// What is done in a window.
    virtual void work(User& user) = 0;

private:
    std::string file_;
    ScriptBook book_;
    PopUpChoice popUp_;
};

/// Has the clerk play on that store, with services of the child's own. The child's exit code: 1 where a step failed.
int runChild(ChildClerk& clerk, store::Store& store, const std::function<void()>& play);

}  // namespace orvenmod::test
