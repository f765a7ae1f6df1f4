// The measure of all windows: the translated statements in a loop of SQLite's own calls.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace orvenmod::bench {

class BareLoop {
public:
    /// Translates and prepares each once. "begin transaction" and "commit transaction" are statements too.
    BareLoop(const std::string& connectionString, const std::vector<std::string>& statements);
    ~BareLoop();

    /// Runs them in order, steps through all rows and copies every cell to a std::string; the bytes of the texts.
    std::size_t run();

    /// Of the last run.
    std::size_t cells() const { return cells_; }

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
    std::size_t cells_ = 0;
};

}  // namespace orvenmod::bench
