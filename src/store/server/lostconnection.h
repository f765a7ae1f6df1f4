// Why a connection to a server is gone, in words of ours: those of drivers and libraries are English, and some say
// "Unknown error".
//
//   与服务器“store1”的连接已中断，没有完成的操作已经撤销。请重试。
//   服务器关闭了连接。
//   server closed the connection unexpectedly
#pragma once

#include <string>

#include "store/failure.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::server {

enum class Loss { unclear, closed, silent, killed, shuttingDown, unavailable };

/// What has become of what the server was told last.
enum class Outcome { undone, unknown };

/// The failure of a statement whose connection has gone: the server's name, the cause, and `words`, the server's own or
/// the driver's.
Failure lostConnection(const std::string& server, Loss loss, const std::string& words, Outcome outcome,
                       tsql::Language language);

}  // namespace orvenmod::store::server
