// Puts every stage of the program on PostgreSQL.
#include <cstdlib>

namespace {

[[maybe_unused]] const int kChosen = ::setenv("ORVEN_TEST_STORE", "postgres", 1);

}  // namespace
