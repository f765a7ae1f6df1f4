// Writes what a connection string asks for with the keys of one driver.
//
//   Encrypt=yes of a host's string     Encryption=require;   to FreeTDS
//                                      Encrypt=yes;          to Microsoft's driver
#pragma once

#include <string>

#include "store/odbc/serverstring.h"
#include "store/odbc/wishes.h"

namespace orvenmod::store::odbc {

/// "key=value;", in braces where the value holds a sign of the string's own; nothing for an empty value.
std::string pairText(const std::string& key, const std::string& value);

/// Throws Failure kBadConnectionString for a wish that the driver can't fulfil.
ServerString written(const Wishes& wishes, const Driver& driver, const std::string& server, tsql::Language language);

}  // namespace orvenmod::store::odbc
