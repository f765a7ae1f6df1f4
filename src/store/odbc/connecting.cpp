#include "store/odbc/connecting.h"

#include <exception>
#include <future>
#include <string>
#include <thread>
#include <utility>

#include "store/odbc/connectfailure.h"
#include "store/odbc/freetdssettings.h"
#include "store/server/endwait.h"

namespace orvenmod::store::odbc {

namespace {

// Behind the driver's own limit, whose failure says more.
constexpr std::chrono::milliseconds kGrace{500};

void setNumber(const OdbcHandle& connection, SQLINTEGER attribute, SQLULEN value) {
    SQLSetConnectAttr(connection.get(), attribute, reinterpret_cast<SQLPOINTER>(value), SQL_IS_UINTEGER);
}

void connectNow(ConnectedHandles& handles, const std::string& text) {
    const SQLRETURN result =
        SQLDriverConnect(handles.connection.get(), nullptr, sqlText(text.c_str()),
                         static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    handles.connected = SQL_SUCCEEDED(result);
}

std::future<void> connectOnThread(const std::shared_ptr<ConnectedHandles>& handles, const std::string& text,
                                  const Greeting& greeting) {
    std::promise<void> ended;
    std::future<void> end = ended.get_future();
    std::thread([held = handles, text, greeting, ended = std::move(ended)]() mutable {
        std::exception_ptr failure;
        try {
            connectNow(*held, text);
            if (held->connected) greeting(held->connection);
        } catch (...) {
            failure = std::current_exception();
        }
        // The handles are let go of before the one that waits goes on, which would else race for them.
        held.reset();
        if (failure) return ended.set_exception(failure);
        ended.set_value();
    }).detach();
    return end;
}

}  // namespace

ConnectedHandles::~ConnectedHandles() {
    if (connected) SQLDisconnect(connection.get());
}

std::shared_ptr<ConnectedHandles> connectWithin(std::chrono::seconds limit, const ServerString& string,
                                                const Greeting& greeting, tsql::Language language,
                                                server::Progress& progress) {
    const auto handles = std::make_shared<ConnectedHandles>();
    handles->environment = OdbcHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
    SQLSetEnvAttr(handles->environment.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    handles->connection = OdbcHandle(SQL_HANDLE_DBC, handles->environment.get());
    // A driver that can't keep a limit refuses the attribute; ours holds then.
    setNumber(handles->connection, SQL_ATTR_LOGIN_TIMEOUT, static_cast<SQLULEN>(limit.count()));
    if (string.packetSize != 0) setNumber(handles->connection, SQL_ATTR_PACKET_SIZE, string.packetSize);
    const FreeTdsSettings settings(string.settings);
    std::future<void> end = connectOnThread(handles, string.text, greeting);
    const std::chrono::milliseconds longest = limit.count() == 0 ? limit : limit + kGrace;
    if (!server::awaitEnd(end, longest, progress)) throw serverSilent(string, limit, language);
    if (!handles->connected) throw connectFailure(handles->connection.diagnostics(), string, limit, language);
    end.get();
    return handles;
}

}  // namespace orvenmod::store::odbc
