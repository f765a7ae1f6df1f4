// The administrators' shell: a statement a line in, a JSON line out, flushed after each.
//
//   select ...          {"columns":["id"],"rows":[["1"],[null]]}
//   any other           {"affected":1}
//   !begin !commit !rollback    {"ok":true}
//   !quit               ends
//   a failure           {"error":{"number":245,"kind":"conversion","text":"..."}}
#pragma once

#include <iosfwd>
#include <string>

#include "store/connection.h"

namespace orvenmod::tools {

/// Reads lines until the end or !quit. An open transaction is undone at the end.
void runShell(store::Connection& connection, std::istream& input, std::ostream& output);

/// The answer to one line; empty for a blank line.
std::string answer(store::Connection& connection, const std::string& line);

/// The answer for a failure.
std::string answerFor(const store::Failure& failure);

}  // namespace orvenmod::tools
