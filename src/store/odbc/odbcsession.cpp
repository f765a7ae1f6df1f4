#include "store/odbc/odbcsession.h"

#include "store/connectionstring.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

OdbcSession::OdbcSession(const std::string& connectionString) : environment_(SQL_HANDLE_ENV, SQL_NULL_HANDLE) {
    const std::string language = tsql::lowerText(ConnectionString(connectionString).get("Language"));
    if (language == "us_english" || language == "english") language_ = tsql::Language::english;
    SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    connection_ = OdbcHandle(SQL_HANDLE_DBC, environment_.get());
    const std::string text = serverString(connectionString);
    const SQLRETURN result =
        SQLDriverConnect(connection_.get(), nullptr, sqlText(text.c_str()), static_cast<SQLSMALLINT>(text.size()),
                         nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) {
        const Failure reported = connection_.failure();
        throw Failure(FailureKind::connection, reported.number(), reported.text());
    }
    connected_ = true;
}

OdbcSession::~OdbcSession() {
    if (connected_) SQLDisconnect(connection_.get());
}

}  // namespace orvenmod::store::odbc
