// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/Connection/SQLConnectionBase.h"
#include "SQLite Connection/Connection/ServerType.h"

namespace vellumo {

class LoadErrorWindow;

// A connection to a database; of the servers only SQLite can be connected to.
class SQLConnection : public SQLConnectionBase {
public:
    // `window` tells when the SQLite library cannot be used; it outlives the connection.
    SQLConnection(ServerType serverType, LoadErrorWindow& window);

    // Makes an empty database at the path: "" on success, else why not (an existing file is not touched).
    [[nodiscard]] std::string createDbFile() const;

    // Opens the database, which must exist, with its journal in memory and foreign keys enforced.
    [[nodiscard]] bool connect() override;

private:
    [[nodiscard]] std::unique_ptr<DBSocket> makeSocket() const;

    ServerType m_serverType;
    LoadErrorWindow& m_window;
};

} // namespace vellumo
