// SPDX-License-Identifier: MIT
#include "servers/Server.h"

namespace vellumo::test {

namespace {

// Not a server, but the shell that people feed scripts to.
class SQLiteShell : public Server {
public:
    ServerType type() const override { return ServerType::SQLite; }
    CommandResult runScript(const std::string& path) override
    {
        return run({"sqlite3", "-batch", "-bail", "-cmd", "PRAGMA synchronous = OFF", m_folder.path("db.sqlite"),
            ".read '" + path + "'"});
    }
    CommandResult query(const std::string& statement) override
    {
        return run({"sqlite3", "-batch", m_folder.path("db.sqlite"), statement});
    }
    std::string hexOf(const std::string& column, std::string_view) const override
    {
        return "CASE WHEN " + column + " IS NULL THEN '-' ELSE hex(" + column + ") END";
    }

private:
    TempFolder m_folder;
};

} // namespace

std::unique_ptr<Server> startSQLite()
{
    if (!isInstalled("sqlite3")) return nullptr;
    return std::make_unique<SQLiteShell>();
}

} // namespace vellumo::test
