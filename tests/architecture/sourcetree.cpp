#include "architecture/sourcetree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include "support/sourcefolder.h"

namespace orvenmod::tests {
namespace {

namespace fs = std::filesystem;

SourceFile readSource(const fs::path& root, const fs::path& path) {
    static const std::regex kInclude(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    SourceFile file{fs::relative(path, root).generic_string(), {}, {}};
    std::ifstream stream(path);
    for (std::string line; std::getline(stream, line);) {
        if (std::smatch match; std::regex_search(line, match, kInclude)) {
            file.includes.push_back({match[2], match[1] == "<"});
        }
        file.lines.push_back(line);
    }
    return file;
}

}  // namespace

bool startsWith(const std::string& text, const std::string& head) { return text.compare(0, head.size(), head) == 0; }

std::vector<SourceFile> readSources(const std::vector<std::string>& folders) {
    const fs::path root(test::sourceFile(""));
    std::vector<fs::path> paths;
    for (const std::string& folder : folders) {
        if (!fs::exists(root / folder)) {
            continue;
        }
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            const fs::path suffix = entry.path().extension();
            if (entry.is_regular_file() && (suffix == ".h" || suffix == ".cpp")) {
                paths.push_back(entry.path());
            }
        }
    }
    std::sort(paths.begin(), paths.end());
    std::vector<SourceFile> files;
    for (const fs::path& path : paths) {
        files.push_back(readSource(root, path));
    }
    return files;
}

}  // namespace orvenmod::tests
