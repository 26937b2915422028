// SPDX-License-Identifier: MIT
#include "servers/Server.h"

#include <csignal>
#include <optional>
#include <pwd.h>

namespace vellumo::test {

namespace {

// It may be kept off the PATH of users; "" when it is not installed.
std::string serverProgram()
{
    if (isInstalled("mariadbd")) return "mariadbd";
    return access("/usr/sbin/mariadbd", X_OK) == 0 ? "/usr/sbin/mariadbd" : "";
}

class MariaDBServer : public Server {
public:
    MariaDBServer();
    ~MariaDBServer() override;

    ServerType type() const override { return ServerType::MySQL; }
    CommandResult runScript(const std::string& path) override
    {
        // Only a script on standard input ends the client with an error.
        auto command = client();
        command.insert(command.begin(), {"sh", "-c", "exec \"$@\" < \"$0\"", path});
        return run(command);
    }
    CommandResult query(const std::string& statement) override
    {
        auto command = client();
        command.push_back("--execute=" + statement);
        return run(command);
    }
    std::string quoted(std::string_view name) const override { return '`' + std::string(name) + '`'; }
    std::string hexOf(const std::string& column, std::string_view) const override
    {
        return "IF(" + column + " IS NULL, '-', HEX(CONCAT(" + column + ", '')))";
    }
    std::string concatenation(const std::vector<std::string>& expressions) const override
    {
        return "CONCAT(" + joined(expressions, ", ',', ") + ")";
    }

private:
    [[nodiscard]] std::vector<std::string> client() const
    {
        return {"mariadb", "--no-defaults", "--socket=" + m_socket, "--user=root", "--default-character-set=utf8mb4",
            "--batch", "--binary-mode", "--skip-column-names", "--database=test"};
    }

    TempFolder m_folder;
    std::string m_dataFolder = m_folder.path("data");
    std::string m_socket = m_folder.path("s");
    std::string m_user; // whom the server runs as; it refuses root unless told so
    std::optional<RunningProgram> m_process;
};

MariaDBServer::MariaDBServer()
    : m_user(getpwuid(geteuid())->pw_name)
{
    const auto installed = run({"mariadb-install-db", "--no-defaults", "--datadir=" + m_dataFolder, "--user=" + m_user,
        "--auth-root-authentication-method=normal", "--skip-test-db", "--innodb-log-file-size=4M",
        "--innodb-buffer-pool-size=8M"});
    if (installed.status != 0) failToStart("MariaDB", installed);
    m_process.emplace(std::vector<std::string>{serverProgram(), "--no-defaults", "--datadir=" + m_dataFolder,
        "--user=" + m_user, "--socket=" + m_socket, "--skip-networking", "--pid-file=" + m_folder.path("pid"),
        "--log-error=" + m_folder.path("log"), "--innodb-log-file-size=4M", "--innodb-buffer-pool-size=8M",
        "--innodb-flush-log-at-trx-commit=0", "--open-files-limit=1024"});
    // The tool itself waits until the server answers.
    const auto answered = run({"mariadb-admin", "--no-defaults", "--socket=" + m_socket, "--user=root", "--wait=60",
        "--connect-timeout=60", "ping"});
    if (answered.status != 0) failToStart("MariaDB", answered);
    const auto created = run({"mariadb", "--no-defaults", "--socket=" + m_socket, "--user=root",
        "--execute=CREATE DATABASE test CHARACTER SET utf8mb4"});
    if (created.status != 0) failToStart("MariaDB", created);
}

MariaDBServer::~MariaDBServer()
{
    kill(m_process->process(), SIGKILL); // nobody needs its data
    static_cast<void>(m_process->wait());
}

} // namespace

std::unique_ptr<Server> startMariaDB()
{
    if (serverProgram().empty() || !isInstalled("mariadb-install-db") || !isInstalled("mariadb")) return nullptr;
    return std::make_unique<MariaDBServer>();
}

} // namespace vellumo::test
