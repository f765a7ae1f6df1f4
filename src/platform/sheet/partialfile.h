// A file that is written beside its final name and put there when it is whole.
#pragma once

#include <string>

namespace orvenmod::platform {

class PartialFile {
public:
    /// Throws std::runtime_error where the path is a folder or its folder can't be written.
    explicit PartialFile(const std::string& path);
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    /// Where to write.
    const std::string& partialPath() const { return partial_; }
    /// Puts the file under its name, in place of one that stands there. Throws std::runtime_error.
    void commit();

private:
    std::string path_;
    std::string partial_;
};

}  // namespace orvenmod::platform
