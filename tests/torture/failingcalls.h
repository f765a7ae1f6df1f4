// Calls by which this program writes files, its libraries' too, that fail on demand or end the process. Only regular
// files count, and only those that are opened to be written.
#pragma once

#include <array>
#include <cstddef>

namespace orvenmod::test {

enum class FileCall { open, write, sync, close, rename };
inline constexpr std::array kFileCalls = {FileCall::open, FileCall::write, FileCall::sync, FileCall::close,
                                          FileCall::rename};
const char* wordFor(FileCall call);

struct CallTrouble {
    enum class Kind {
        none,
        once,
        lasting,  ///< it and all of its kind behind it
        kill      ///< the process ends there, in the middle of a write
    };
    Kind kind = Kind::none;
    FileCall call = FileCall::write;
    int at = 0;  ///< from 1
};

/// Counts from 0 again, with that trouble ahead, while it lives.
class FailingCalls {
public:
    explicit FailingCalls(const CallTrouble& trouble);
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    static int count(FileCall call);
    static bool struck();
};

}  // namespace orvenmod::test
