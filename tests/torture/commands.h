// The component's commands as the anomaly tests play them, each whole, from the opening of its window to its end.
#pragma once

#include <string>
#include <vector>

#include "torture/desk.h"

namespace orvenmod::test {

/// On goods, suppliers, a class 50 of a user's own with a field, and a dictionary 501.
const std::vector<Command>& windowCommands();

/// The schema made, brought up to date, and a suite copied.
const std::vector<Command>& schemaCommands();

std::vector<Command> allCommands();

// In the designer.
void makeClass(Desk& desk, const std::string& id, const std::string& name);
/// `lookup` is the entry of the dialog's list, 0 for none.
void makeField(Desk& desk, const std::string& itemClass, const std::string& name, int lookup);
void inFieldSetup(Desk& desk, const std::string& itemClass, const Steps& steps);

/// The list of dictionary 501.
void inDictionary(Desk& desk, const Steps& steps);

/// Brings a file in as far as the check of its rows, then the steps.
void importFile(Desk& desk, const std::string& file, const Steps& then);

/// Puts the database that the command works on into the folder, if any, and the files that its clerk adds.
void layOut(const Command& command, const std::string& folder);
std::string databaseIn(const std::string& folder);

}  // namespace orvenmod::test
