// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/SQLiteAPISocket.h"

#include "SQLite Connection/DBSockets/DynamicSQLiteAPISocket.h"
#include "text/Messages.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo {

namespace {

constexpr int readWriteCreate = 6;

// 0 when the file can be opened for reading, else the system's error number.
int openForReading(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return errno;
    ::close(file);
    return 0;
}

} // namespace

void SQLiteAPISocket::setConnectOptions(int value, std::string_view key)
{
    if (key == "sqlite-clientflag") m_openFlags = value;
}

std::string SQLiteAPISocket::CreateDbFile(LoadErrorWindow& window, const DBSocketAddress& address)
{
    const int error = openForReading(address.dbFilePath());
    if (error == 0) return localized("Database file exists already");
    if (error != ENOENT) return std::strerror(error);
    DynamicSQLiteAPISocket socket(window);
    socket.setAddress(address);
    socket.setConnectOptions(readWriteCreate, "sqlite-clientflag");
    // An empty database is not written before the first statement that needs it.
    if (socket.connect() && socket.runQuery("VACUUM") == 0) return {};
    return socket.getLastErrorMessage();
}

} // namespace vellumo
