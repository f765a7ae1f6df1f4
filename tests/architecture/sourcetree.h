// The sources of the repository as the architecture tests see them: paths, lines and include lines.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::tests {

struct Include {
    std::string path;  ///< what stands between the brackets or quotes
    bool angled = false;
};

struct SourceFile {
    std::string path;  ///< from the root of the repository, "src/store/schema.h"
    std::vector<std::string> lines;
    std::vector<Include> includes;
};

/// Every .h and .cpp below the folders, in the order of their paths.
std::vector<SourceFile> readSources(const std::vector<std::string>& folders);

bool startsWith(const std::string& text, const std::string& head);

}  // namespace orvenmod::tests
