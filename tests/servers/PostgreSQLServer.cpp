// SPDX-License-Identifier: MIT
#include "servers/Server.h"

#include <filesystem>
#include <pwd.h>
#include <unistd.h>

namespace vellumo::test {

namespace {

// Debian keeps the server's programs off the PATH, by version; "" when there are none.
std::string programFolder()
{
    std::error_code error;
    for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", error))
        if (std::filesystem::exists(version.path() / "bin" / "initdb")) return version.path() / "bin";
    return {};
}

class PostgreSQLServer : public Server {
public:
    explicit PostgreSQLServer(std::string programs);
    ~PostgreSQLServer() override;

    ServerType type() const override { return ServerType::PostgreSQL; }
    CommandResult runScript(const std::string& path) override { return client({"--file=" + path}); }
    CommandResult query(const std::string& statement) override { return client({"--command=" + statement}); }
    std::string hexOf(const std::string& column, std::string_view accessType) const override
    {
        const auto bytes = accessType == "Binary" ? column : "convert_to(" + column + "::text, 'UTF8')";
        return "coalesce(encode(" + bytes + ", 'hex'), '-')";
    }

private:
    // Runs one of the server's programs as whoever the server runs as.
    [[nodiscard]] CommandResult control(const std::string& program, std::vector<std::string> arguments) const;
    [[nodiscard]] CommandResult client(const std::vector<std::string>& arguments) const;

    std::string m_programs;
    TempFolder m_folder;
    std::string m_dataFolder = m_folder.path("data");
};

PostgreSQLServer::PostgreSQLServer(std::string programs)
    : m_programs(std::move(programs))
{
    if (geteuid() == 0) { // whom the server refuses
        const auto* nobody = getpwnam("nobody");
        if (chown(m_folder.path().c_str(), nobody->pw_uid, nobody->pw_gid) != 0) std::perror("chown");
    }
    const auto made = control("initdb",
        {"--pgdata=" + m_dataFolder, "--username=tester", "--auth=trust", "--encoding=UTF8", "--no-locale",
            "--no-sync"});
    if (made.status != 0) failToStart("PostgreSQL", made);
    const auto started = control("pg_ctl",
        {"start", "--wait", "--pgdata=" + m_dataFolder, "--log=" + m_folder.path("log"),
            "--options=-c listen_addresses= -c fsync=off -c unix_socket_directories=" + m_folder.path()});
    if (started.status != 0) failToStart("PostgreSQL", started);
}

PostgreSQLServer::~PostgreSQLServer()
{
    static_cast<void>(control("pg_ctl", {"stop", "--mode=immediate", "--pgdata=" + m_dataFolder}));
}

CommandResult PostgreSQLServer::control(const std::string& program, std::vector<std::string> arguments) const
{
    std::vector<std::string> command;
    if (geteuid() == 0) command = {"runuser", "-u", "nobody", "--"};
    command.push_back(m_programs + "/" + program);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
}

CommandResult PostgreSQLServer::client(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> command = {"psql", "--no-psqlrc", "--quiet", "--no-align", "--tuples-only",
        "--set=ON_ERROR_STOP=1", "--host=" + m_folder.path(), "--username=tester", "--dbname=postgres"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
}

} // namespace

std::unique_ptr<Server> startPostgreSQL()
{
    auto programs = programFolder();
    if (programs.empty() || !isInstalled("psql")) return nullptr;
    return std::make_unique<PostgreSQLServer>(std::move(programs));
}

} // namespace vellumo::test
