// What a file's container tells before anything is unpacked.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

/// Whether the file holds a workbook under a password.
bool isEncryptedPackage(const std::string& path);

/// Whether a zip file holds that part at its top.
bool hasPart(const std::string& path, const char* name);

/// How many bytes the parts of a zip file have unpacked, by its directory; 0 for a file that is none.
std::uint64_t unpackedSize(const std::string& path);

}  // namespace orvenmod
