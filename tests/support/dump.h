// Everything that a database of the embedded store holds, as text, to compare before and after.
#pragma once

#include <string>

namespace orvenmod::test {

/// Every object's definition and every table's rows, in a fixed order.
std::string dumpOf(const std::string& file);

/// "ok" where no page, no index and no row of it is damaged.
std::string integrityOf(const std::string& file);

/// How SQLite would run the native statement: one line a step.
std::string planOf(const std::string& file, const std::string& nativeSql);

}  // namespace orvenmod::test
