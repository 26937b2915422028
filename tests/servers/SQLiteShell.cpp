// SPDX-License-Identifier: MIT
#include "servers/Server.h"

namespace vellumo::test {

namespace {

// Not a server, but the shell that people feed scripts to.
class SQLiteShell : public Server {
public:
    explicit SQLiteShell(const std::string& path)
        : m_path(path.empty() ? m_folder.path("db.sqlite") : path)
    {
    }
    ServerType type() const override { return ServerType::SQLite; }
    CommandResult runScript(const std::string& path) override
    {
        return run({"sqlite3", "-batch", "-bail", "-cmd", "PRAGMA synchronous = OFF", m_path, ".read '" + path + "'"});
    }
    CommandResult query(const std::string& statement) override { return run({"sqlite3", "-batch", m_path, statement}); }
    std::string hexOf(const std::string& column, std::string_view) const override
    {
        return "CASE WHEN " + column + " IS NULL THEN '-' ELSE hex(" + column + ") END";
    }

private:
    TempFolder m_folder;
    std::string m_path;
};

} // namespace

std::unique_ptr<Server> startSQLite() { return openSQLite({}); }

std::unique_ptr<Server> openSQLite(const std::string& path)
{
    if (!isInstalled("sqlite3")) return nullptr;
    return std::make_unique<SQLiteShell>(path);
}

} // namespace vellumo::test
