#include "store/odbc/connecting.h"

#include <future>
#include <string>
#include <thread>

#include "store/odbc/connectfailure.h"
#include "store/odbc/freetdssettings.h"

namespace orvenmod::store::odbc {

namespace {

// Behind the driver's own limit, whose failure says more.
constexpr std::chrono::milliseconds kGrace{500};

void setNumber(const OdbcHandle& connection, SQLINTEGER attribute, SQLULEN value) {
    SQLSetConnectAttr(connection.get(), attribute, reinterpret_cast<SQLPOINTER>(value), SQL_IS_UINTEGER);
}

SQLRETURN connectNow(ConnectedHandles& handles, const std::string& text) {
    const SQLRETURN result =
        SQLDriverConnect(handles.connection.get(), nullptr, sqlText(text.c_str()),
                         static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    handles.connected = SQL_SUCCEEDED(result);
    return result;
}

// False where the time was over before the driver came to an end.
bool connectOnThread(const std::shared_ptr<ConnectedHandles>& handles, const std::string& text,
                     std::chrono::milliseconds limit) {
    std::promise<void> ended;
    const std::future<void> end = ended.get_future();
    std::thread([held = handles, text, ended = std::move(ended)]() mutable {
        connectNow(*held, text);
        // The handles are let go of before the one that waits goes on, which would else race for them.
        held.reset();
        ended.set_value();
    }).detach();
    return end.wait_for(limit) == std::future_status::ready;
}

}  // namespace

ConnectedHandles::~ConnectedHandles() {
    if (connected) SQLDisconnect(connection.get());
}

std::shared_ptr<ConnectedHandles> connectWithin(std::chrono::seconds limit, const ServerString& string,
                                                tsql::Language language) {
    const auto handles = std::make_shared<ConnectedHandles>();
    handles->environment = OdbcHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
    SQLSetEnvAttr(handles->environment.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    handles->connection = OdbcHandle(SQL_HANDLE_DBC, handles->environment.get());
    // A driver that can't keep a limit refuses the attribute; ours holds then.
    setNumber(handles->connection, SQL_ATTR_LOGIN_TIMEOUT, static_cast<SQLULEN>(limit.count()));
    if (string.packetSize != 0) setNumber(handles->connection, SQL_ATTR_PACKET_SIZE, string.packetSize);
    const FreeTdsSettings settings(string.settings);
    if (limit.count() == 0) {
        connectNow(*handles, string.text);
    } else if (!connectOnThread(handles, string.text, limit + kGrace)) {
        throw serverSilent(string, limit, language);
    }
    if (!handles->connected) throw connectFailure(handles->connection.diagnostics(), string, limit, language);
    return handles;
}

}  // namespace orvenmod::store::odbc
