// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

// The database servers: the type of a connection, and the dialect of an SQL script.
enum class ServerType {
    MySQL = 1,
    PostgreSQL = 2,
    Oracle = 3,
    SQLite = 4,
    SQLServer = 5,
};

} // namespace vellumo
