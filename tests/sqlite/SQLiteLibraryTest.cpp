// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/SQLiteLibrary.h"
#include "SQLite Connection/Connection/SQLConnection.h"
#include "SQLite Connection/DBSockets/DynamicSQLiteAPISocket.h"
#include "support/RecordingLoadErrorWindow.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using testing::HasSubstr;

// Sets the library's path for one test.
class LibraryPath {
public:
    explicit LibraryPath(const char* path) { setenv("VELLUMO_SQLITE_LIBRARY", path, 1); }
    ~LibraryPath() { unsetenv("VELLUMO_SQLITE_LIBRARY"); }
    LibraryPath(const LibraryPath&) = delete;
    LibraryPath& operator=(const LibraryPath&) = delete;
};

TEST(SQLiteLibrary, StaysLoadedUntilTheLastSocketGoes)
{
    test::RecordingLoadErrorWindow window;
    auto first = std::make_unique<DynamicSQLiteAPISocket>(window);
    auto second = std::make_unique<DynamicSQLiteAPISocket>(window);
    first.reset();
    EXPECT_TRUE(IsSQLiteLibraryLoaded());
    second.reset();
    EXPECT_FALSE(IsSQLiteLibraryLoaded());
    EXPECT_TRUE(window.shown.empty()) << "the entry points of encryption are optional";
    UnloadSQLiteLibrary(); // below none: nothing
    EXPECT_FALSE(IsSQLiteLibraryLoaded());
}

TEST(SQLiteLibrary, MissingFileIsShownOnceALoad)
{
    const LibraryPath path("/nonexistent/libsqlite3.so");
    test::RecordingLoadErrorWindow window;
    SQLConnection connection(ServerType::SQLite, window);
    connection.setDbFilePath("/tmp/never-made.sqlite");
    EXPECT_FALSE(connection.connect());
    EXPECT_EQ(connection.getLastErrorMessage(), "SQLite dynamic library not found!");
    ASSERT_EQ(window.shown.size(), 1U);
    EXPECT_EQ(window.shown[0].title, "Load Library Error");
    EXPECT_EQ(window.shown[0].label, "sqlitelibraryerror: '/nonexistent/libsqlite3.so'");
    EXPECT_THAT(window.shown[0].list, HasSubstr("/nonexistent/libsqlite3.so"));

    EXPECT_EQ(connection.createDbFile(), "SQLite dynamic library not found!");
    EXPECT_EQ(window.shown.size(), 2U);
    EXPECT_FALSE(std::filesystem::exists("/tmp/never-made.sqlite"));
}

TEST(SQLiteLibrary, MissingEntryPointsAreListedInOrder)
{
    const LibraryPath path(INCOMPLETE_LIBRARY);
    test::RecordingLoadErrorWindow window;
    EXPECT_FALSE(LoadSQLiteLibrary(window));
    EXPECT_FALSE(IsSQLiteLibraryLoaded());
    ASSERT_EQ(window.shown.size(), 1U);
    EXPECT_EQ(window.shown[0].label, "sqlitelibraryerror: '" INCOMPLETE_LIBRARY "'");
    EXPECT_EQ(window.shown[0].list,
        "failedloadfunction: sqlite3_open_v2\nfailedloadfunction: sqlite3_prepare_v2\n"
        "failedloadfunction: sqlite3_step\nfailedloadfunction: sqlite3_errcode\n"
        "failedloadfunction: sqlite3_errmsg\nfailedloadfunction: sqlite3_finalize")
        << "what nothing can be written without";
}

// A library may be built without column metadata and more.
TEST(SQLiteLibrary, SmallBuildIsEnoughToWrite)
{
    const test::TempFolder folder;
    const LibraryPath path(SMALL_LIBRARY);
    test::RecordingLoadErrorWindow window;
    SQLConnection connection(ServerType::SQLite, window);
    connection.setDbFilePath(folder.path() + "/small.sqlite");
    ASSERT_EQ(connection.createDbFile(), "");
    ASSERT_TRUE(connection.queryString("CREATE TABLE t (a)"));
    EXPECT_FALSE(connection.queryString("INSERT INTO none VALUES (1)"));
    EXPECT_EQ(connection.getLastErrorMessage(), "no such table: none");
    EXPECT_TRUE(window.shown.empty());

    DynamicSQLiteAPISocket socket(window);
    socket.setAddress(connection.address());
    ASSERT_TRUE(socket.connect());
    EXPECT_EQ(socket.runQuery("SELECT count(*) FROM t"), 0);
    EXPECT_EQ(socket.result(), nullptr) << "rows cannot be read";
    EXPECT_FALSE(socket.stopQuery());
}

TEST(SQLiteLibrary, SocketThatFailedToLoadLeavesOthersTheirLibrary)
{
    test::RecordingLoadErrorWindow window;
    auto broken = [&] {
        const LibraryPath path("/nonexistent/libsqlite3.so");
        return std::make_unique<DynamicSQLiteAPISocket>(window);
    }();
    const DynamicSQLiteAPISocket working(window);
    broken.reset();
    EXPECT_TRUE(IsSQLiteLibraryLoaded());
}

} // namespace
} // namespace vellumo
