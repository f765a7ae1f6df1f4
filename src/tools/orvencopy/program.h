// orvencopy: moves a suite from one store to another. A thin skin over store/copy: arguments, a bar, and what came of
// it as JSON lines, as the administrators' shell answers.
//
//   {"table":"tblItem","rows":1000360,"checksum":"9f0c4a7be2d15c33","same":true}
//   {"leftOut":"trigger tr"}
//   {"tables":41,"views":7,"rows":1004217,"seconds":14.2,"same":true}
//   {"error":{"number":2628,"kind":"truncation","text":"...","table":"tblItem","column":"fName","key":"fItemId=5"}}
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "store/connection.h"

namespace orvenmod::tools {

namespace exitcode {
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kUsage = 2;
inline constexpr int kTargetNotEmpty = 3;
inline constexpr int kSidesDiffer = 4;
}  // namespace exitcode

enum class Terminal { no, yes };

struct CopySurroundings {
    store::Store& stores;
    std::ostream& output;
    std::ostream& messages;
    Terminal terminal = Terminal::no;  ///< whether `messages` is one, where a line can be redrawn
    std::function<bool()> cancelled;   ///< as CopyWatch has it
};

/// The exit code. A cancelled copy is told as store::CopyCancelled.
int runCopyProgram(const std::vector<std::string>& arguments, const CopySurroundings& surroundings);

}  // namespace orvenmod::tools
