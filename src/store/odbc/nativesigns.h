// What the numbers of servers and drivers, and the standard's states, say of a session that ends or never begins.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "store/odbc/odbchandle.h"
#include "store/server/lostconnection.h"

namespace orvenmod::store::odbc {

/// Why a session never began.
enum class Refusal { login, database, silent, noHost, refused, ended, notTaken, driver, unclear };

/// By the sign that says most, whichever record has it.
Refusal refusalOf(const std::vector<Diagnostic>& records);

/// Why a failure of that number has ended the session; nothing where it doesn't end one.
std::optional<server::Loss> lossOf(int number);

}  // namespace orvenmod::store::odbc
