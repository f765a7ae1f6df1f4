#include "store/postgres/connecting.h"

#include <chrono>
#include <future>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "store/postgres/failures.h"
#include "store/postgres/installation.h"
#include "store/server/endwait.h"
#include "store/tsql/error.h"

namespace orvenmod::store::postgres {

namespace {

using Clock = std::chrono::steady_clock;

// Who refuses does it sooner; who says nothing isn't waited for twice.
constexpr std::chrono::seconds kSoon{1};

NativeConnection reach(const ServerAddress& address) {
    std::vector<const char*> names;
    std::vector<const char*> values;
    for (const auto& [name, value] : address.parameters) {
        names.push_back(name.c_str());
        values.push_back(value.c_str());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    const auto start = Clock::now();
    NativeConnection connection(PQconnectdbParams(names.data(), values.data(), 0));
    if (PQstatus(connection.get()) == CONNECTION_OK) return connection;
    Refusal refusal{lastWords(connection.get()), {}, Clock::now() - start};
    // Who has answered is asked again for the state alone: the words are in whatever language, and before the first
    // attempt the library takes no wish.
    if (refusal.taken < kSoon) {
        PQsetErrorVerbosity(connection.get(), PQERRORS_SQLSTATE);
        PQreset(connection.get());
        PQsetErrorVerbosity(connection.get(), PQERRORS_DEFAULT);
        if (PQstatus(connection.get()) == CONNECTION_OK) return connection;
        refusal.states = lastWords(connection.get());
    }
    throw connectFailure(connection.get(), address, refusal);
}

void checkServer(PGconn* connection, const ServerAddress& address) {
    if (auto failure = unfitServer(PQserverVersion(connection), address)) throw *failure;
    const char* encoding = PQparameterStatus(connection, "server_encoding");
    if (encoding != nullptr && std::string_view(encoding) == "UTF8") return;
    throw tsql::worded(address.language, tsql::kServerEncoding,
                       {PQdb(connection), encoding == nullptr ? "?" : encoding});
}

}  // namespace

NativeConnection connectTo(const ServerAddress& address, server::Progress& progress) {
    std::packaged_task<NativeConnection()> work([address] {
        NativeConnection connection = reach(address);
        checkServer(connection.get(), address);
        install(connection.get(), address);
        return connection;
    });
    std::future<NativeConnection> made = work.get_future();
    std::thread(std::move(work)).detach();
    server::awaitEnd(made, std::chrono::milliseconds(0), progress);
    return made.get();
}

}  // namespace orvenmod::store::postgres
