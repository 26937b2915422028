// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocketBase.h"

namespace vellumo {

class LoadErrorWindow;

// A socket that speaks SQLite's C interface, wherever that comes from.
class SQLiteAPISocket : public DBSocketBase {
public:
    // Knows the key "sqlite-clientflag": the flags with which the file is opened.
    void setConnectOptions(int value, std::string_view key) override;

    // Makes an empty database file at the address: "" on success, else why not. A file that exists is left alone; one
    // that could not be written whole may be left behind.
    [[nodiscard]] static std::string CreateDbFile(LoadErrorWindow& window, const DBSocketAddress& address);

protected:
    [[nodiscard]] int openFlags() const { return m_openFlags; }

private:
    int m_openFlags = 2; // read and write
};

} // namespace vellumo
