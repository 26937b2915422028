// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/SQLConnection.h"
#include "SQLite Connection/DBSockets/DynamicSQLiteAPISocket.h"
#include "support/RecordingLoadErrorWindow.h"
#include "support/TempFolder.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace vellumo {
namespace {

namespace fs = std::filesystem;

class SQLConnectionTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<SQLConnection> connectionTo(const fs::path& path)
    {
        auto connection = std::make_unique<SQLConnection>(ServerType::SQLite, m_window);
        connection->setDbFilePath(path);
        return connection;
    }
    [[nodiscard]] std::unique_ptr<DynamicSQLiteAPISocket> socketTo(const fs::path& path)
    {
        auto socket = std::make_unique<DynamicSQLiteAPISocket>(m_window);
        DBSocketAddress address;
        address.setDbFilePath(path);
        socket->setAddress(address);
        return socket;
    }
    // The first value of the first row.
    [[nodiscard]] std::string valueOf(const std::string& statement)
    {
        const auto socket = socketTo(m_database);
        if (!socket->connect() || socket->runQuery(statement) != 0) return "failed";
        return std::string(socket->result()->text(0));
    }

    test::RecordingLoadErrorWindow m_window;
    test::TempFolder m_tempFolder;
    fs::path m_folder{m_tempFolder.path()};
    fs::path m_database = m_folder / "a b.sqlite";
};

TEST_F(SQLConnectionTest, CreateMakesAnEmptyDatabaseOnce)
{
    const auto connection = connectionTo(m_database);
    EXPECT_EQ(connection->createDbFile(), "");
    EXPECT_TRUE(fs::exists(m_database));
    EXPECT_EQ(connection->createDbFile(), "Database file exists already");
    EXPECT_EQ(connectionTo(m_folder)->createDbFile(), "Database file exists already") << "a folder is left alone";
    EXPECT_EQ(connectionTo("")->createDbFile(), "Database file path is invalid");
    EXPECT_EQ(connectionTo(m_folder / "none" / "x.sqlite")->createDbFile(), "unable to open database file");
    EXPECT_EQ(connectionTo(m_database / "x.sqlite")->createDbFile(), "Not a directory");
}

TEST_F(SQLConnectionTest, ConnectNeedsAnExistingFile)
{
    const auto connection = connectionTo(m_database);
    EXPECT_FALSE(connection->connect());
    EXPECT_EQ(connection->getLastErrorMessage(), "unable to open database file");
    EXPECT_FALSE(fs::exists(m_database));
    EXPECT_FALSE(connectionTo("")->connect());

    ASSERT_EQ(connection->createDbFile(), "");
    EXPECT_TRUE(connection->connect());
    EXPECT_EQ(connection->getLastErrorMessage(), "");
    EXPECT_GE(connection->libraryVersionNumber(), 3000000);
}

TEST_F(SQLConnectionTest, StatementsTellSqlitesOwnTexts)
{
    const auto connection = connectionTo(m_database);
    ASSERT_EQ(connection->createDbFile(), "");
    EXPECT_TRUE(connection->queryString("CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT);")) << "connects by itself";
    const struct {
        const char* statement;
        const char* error;
    } cases[] = {
        {"SELEC 1", "near \"SELEC\": syntax error"}, {"INSERT INTO t VALUES (1, null);", ""},
        {"INSERT INTO t VALUES (1, null);", "UNIQUE constraint failed: t.a"}, {"SELECT * FROM t;", ""},
        {"INSERT INTO none VALUES (1);", "no such table: none"},
        {"INSERT INTO t VALUES (2, null); SELEC 1;", ""}, // only the first statement is looked at
    };
    for (const auto& test : cases) {
        EXPECT_EQ(connection->queryString(test.statement), *test.error == '\0') << test.statement;
        EXPECT_EQ(connection->getLastErrorMessage(), test.error) << test.statement;
    }
    connection->disconnect();
    EXPECT_FALSE(connection->connected());
    EXPECT_EQ(valueOf("SELECT count(*) FROM t"), "2");
}

TEST_F(SQLConnectionTest, AFullFileIsABrokenOne)
{
    const auto connection = connectionTo(m_database);
    ASSERT_EQ(connection->createDbFile(), "");
    ASSERT_TRUE(connection->queryString("CREATE TABLE t (a)"));
    ASSERT_TRUE(connection->queryString("PRAGMA max_page_count = 2"));
    EXPECT_FALSE(connection->queryString("INSERT INTO t VALUES (zeroblob(100000))"));
    EXPECT_TRUE(connection->isFileBroken()) << connection->getLastErrorMessage();
    EXPECT_FALSE(connection->queryString("INSERT INTO none VALUES (1)") || connection->isFileBroken());
}

TEST_F(SQLConnectionTest, ConnectionEnforcesForeignKeys)
{
    const auto connection = connectionTo(m_database);
    ASSERT_EQ(connection->createDbFile(), "");
    ASSERT_TRUE(connection->queryString("CREATE TABLE p (a INTEGER PRIMARY KEY)"));
    ASSERT_TRUE(connection->queryString("CREATE TABLE c (a INTEGER REFERENCES p (a))"));
    EXPECT_FALSE(connection->queryString("INSERT INTO c VALUES (1)"));
    EXPECT_TRUE(connection->queryString("PRAGMA foreign_keys = false;"));
    EXPECT_TRUE(connection->queryString("INSERT INTO c VALUES (1)"));
}

TEST_F(SQLConnectionTest, SocketKeepsAResultUntilItIsClosed)
{
    ASSERT_EQ(connectionTo(m_database)->createDbFile(), "");
    const auto socket = socketTo(m_database);
    EXPECT_EQ(socket->getLastErrorMessage(), "No connection handler!");
    ASSERT_TRUE(socket->connect());
    ASSERT_EQ(socket->runQuery("SELECT 'held'"), 0);
    EXPECT_EQ(socket->result()->status(), 100);
    EXPECT_EQ(socket->result()->text(0), "held");
    EXPECT_EQ(socket->result()->text(1), "");
    ASSERT_EQ(socket->runQuery("CREATE TABLE t (a)"), 0);
    EXPECT_EQ(socket->getLastErrorMessage(), "") << "to be done is no error";
    socket->close();
    EXPECT_EQ(socket->getLastErrorMessage(), "No connection handler!");
    EXPECT_NE(socket->runQuery("SELECT 1"), 0);
}

TEST_F(SQLConnectionTest, StopEndsAStatementThatWouldRunForever)
{
    ASSERT_EQ(connectionTo(m_database)->createDbFile(), "");
    const auto socket = socketTo(m_database);
    ASSERT_TRUE(socket->connect());
    int status = 0;
    std::atomic<bool> isDone = false;
    std::thread runner([&] {
        status =
            socket->runQuery("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT count(*) FROM c");
        isDone = true;
    });
    while (!isDone) // a stop before the start of the statement is lost
        socket->stopQuery();
    runner.join();
    EXPECT_NE(status, 0);
    EXPECT_EQ(socket->getLastErrorMessage(), "interrupted");
}

TEST_F(SQLConnectionTest, FlagsAndServerTypesThatCannotWork)
{
    ASSERT_EQ(connectionTo(m_database)->createDbFile(), "");
    const auto socket = socketTo(m_database);
    socket->setConnectOptions(1, "sqlite-clientflag"); // read only
    socket->setConnectOptions(6, "some-other-flag");
    ASSERT_TRUE(socket->connect());
    EXPECT_NE(socket->runQuery("CREATE TABLE t (a)"), 0);
    EXPECT_EQ(socket->getLastErrorMessage(), "attempt to write a readonly database");

    SQLConnection postgres(ServerType::PostgreSQL, m_window);
    postgres.setDbFilePath(m_database);
    EXPECT_FALSE(postgres.connect());
}

TEST_F(SQLConnectionTest, PasswordNeedsALibraryWithEncryption)
{
    ASSERT_EQ(connectionTo(m_database)->createDbFile(), "");
    DynamicSQLiteAPISocket socket(m_window);
    DBSocketAddress address;
    address.setDbFilePath(m_database);
    address.setPassword("secret");
    socket.setAddress(address);
    EXPECT_FALSE(socket.connect());
    EXPECT_EQ(socket.getLastErrorMessage(), "failedloadfunction: sqlite3_key");
}

} // namespace
} // namespace vellumo
