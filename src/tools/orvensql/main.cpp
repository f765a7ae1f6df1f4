#include <exception>
#include <iostream>

#include "entry/storefactory.h"
#include "tools/orvensql/shell.h"

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: orvensql CONNECTION-STRING\n"
                     "  reads a statement a line from standard input, answers a JSON line each\n"
                     "  for example: orvensql 'Provider=SQLite;Data Source=suite.db;Mode=Create'\n"
                     "  also: !begin !commit !rollback !quit\n";
        return 2;
    }
    try {
        orvenmod::StoreFactory stores;
        const auto connection = stores.connect(arguments[1]);
        orvenmod::tools::runShell(*connection, std::cin, std::cout);
        return 0;
    } catch (const orvenmod::store::Failure& failure) {
        std::cout << orvenmod::tools::answerFor(failure) << '\n' << std::flush;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    return 1;
}
