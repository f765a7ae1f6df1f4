// The connection string: any text names a place, or is refused in words. Nothing of it is connected to.
#include "store/connectionstring.h"
#include "fuzz/fuzz.h"
#include "store/failure.h"
#include "store/odbc/wishes.h"
#include "store/postgres/serveraddress.h"
#include "store/sqlite/databasefile.h"

namespace {

using namespace orvenmod::store;

template <typename Read>
void refusedOrDone(Read read) {
    try {
        read();
    } catch (const Failure& failure) {
        orvenmod::fuzz::check(!failure.text().empty(), "a refusal has words");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(orvenmod::fuzz::textOf(data, size));
    const ConnectionString parts(text);
    for (const auto& [key, value] : parts.parts())
        orvenmod::fuzz::check(parts.has(key), "a key that stands there is found");
    refusedOrDone([&] { sqlite::DatabaseFile::parse(text); });
    refusedOrDone([&] { postgres::ServerAddress::parse(text); });
    refusedOrDone([&] { odbc::flattened(text); });
    return 0;
}
