// Whole files, read and replaced at once.
#pragma once

#include <string>

namespace orvenmod::platform::desktop {

enum class ReadResult { read, missing, failed };

/// Reads a file whole. A folder, or a file that can't be read, is `failed`.
ReadResult readFile(const std::string& path, std::string& content);

/// Puts the content in the place of the file in one step, so that a reader, a crash or a full disk never leaves half of
/// it. An existing file keeps its permissions, a new one gets `mode`; a symbolic link stays and its target is replaced.
/// False, with errno telling why, where that can't be done; the file is then as it was. A file without any permission
/// to write is refused.
bool replaceFile(const std::string& path, const std::string& content, unsigned mode);

}  // namespace orvenmod::platform::desktop
