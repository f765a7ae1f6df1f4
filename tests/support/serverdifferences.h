// A server that is reached over ODBC words failures itself. The scenarios expect the dialect's documented words; where
// a server is known to say the same in others, a box with those is the one that was expected.
#pragma once

#include <string>

namespace orvenmod::test {

/// True where `told` is what a server may say instead of `expected`.
bool isServersWordingOf(const std::string& told, const std::string& expected);

}  // namespace orvenmod::test
