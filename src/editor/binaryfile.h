// Files that go into and come out of the database.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod {

/// The whole content. Throws std::runtime_error naming the file where it is missing, a folder or unreadable.
std::vector<std::byte> readFile(const std::string& path);

/// Replaces the file by the content. Throws std::runtime_error naming the file; then no half file is left.
void writeFile(const std::string& path, std::string_view content);

/// Removes the file where there is one. Throws std::runtime_error where it can't.
void removeFile(const std::string& path);

/// What follows the last full stop of the whole path, with a full stop in front; a path without any gives "." and the
/// path.
std::string suffixOf(const std::string& path);

/// A stored name reduced to a plain file name that can't leave its folder: no path parts, drive letters, control
/// characters, outer blanks or names of full stops alone; at most 200 bytes. Never empty.
std::string plainFileName(const std::string& stored);

}  // namespace orvenmod
