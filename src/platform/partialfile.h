// A file that the user named, written beside its name and put there when it is whole. What stood there is replaced as
// programs of a desktop do it: links are written through, permissions stay, and what is read-only is refused.
#pragma once

#include <string>

namespace orvenmod::platform {

/// Whether a file has to outlast a loss of power.
enum class Lasting { no, yes };

class PartialFile {
public:
    /// Throws std::runtime_error where the path is a folder, or what no file can replace, or its folder can't be
    /// written.
    explicit PartialFile(const std::string& path);
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    /// Where to write.
    const std::string& partialPath() const { return partial_; }
    /// Puts the file under its name, in place of one that stands there. Throws std::runtime_error.
    void commit(Lasting lasting = Lasting::yes);

private:
    std::string path_;
    std::string partial_;
};

/// Whether a file stands there that may not be written.
bool isReadOnly(const std::string& path);

/// What a save dialog tells of such a file.
std::string readOnlyRefusal(const std::string& path);

}  // namespace orvenmod::platform
