// The measure of all lists: the translated statement in a loop of SQLite's own calls.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace orvenmod::bench {

class BareList {
public:
    /// Translates the statement once.
    BareList(const std::string& connectionString, const std::string& sql);
    ~BareList();

    /// Steps through all rows and copies every cell to a std::string; the bytes of the texts.
    std::size_t run();

    std::size_t cells() const { return cells_; }

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
    std::size_t cells_ = 0;
};

}  // namespace orvenmod::bench
