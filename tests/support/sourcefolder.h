// Where the repository stands: one object file knows, so that no other is compiled anew for another folder.
#pragma once

#include <string>

namespace orvenmod::test {

/// The absolute path of a file of the repository, "docs/architecture.md" and the like.
std::string sourceFile(const std::string& path);

}  // namespace orvenmod::test
