// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <sqlite3.h>
#include <string>

// The SQLite library of this process. It is loaded while sockets exist: each load adds one to its retain count, and
// the unload that takes the count to 0 closes it. Any thread may load and unload; the entry points may be used by
// whoever holds a successful load.
namespace vellumo {

class LoadErrorWindow;

struct SQLiteFunctions {
    // A library that lacks one of these is refused: without them nothing can be written.
    decltype(&sqlite3_close) close;
    decltype(&sqlite3_open_v2) open_v2;
    decltype(&sqlite3_prepare_v2) prepare_v2;
    decltype(&sqlite3_step) step;
    decltype(&sqlite3_finalize) finalize;
    decltype(&sqlite3_errcode) errcode;
    decltype(&sqlite3_errmsg) errmsg;
    decltype(&sqlite3_libversion_number) libversion_number;

    // Null where the library was built without them: whoever calls one asks first and tells its caller.
    decltype(&sqlite3_libversion) libversion;
    decltype(&sqlite3_exec) exec;
    decltype(&sqlite3_changes) changes;
    decltype(&sqlite3_interrupt) interrupt;
    decltype(&sqlite3_last_insert_rowid) last_insert_rowid;
    decltype(&sqlite3_column_count) column_count;
    decltype(&sqlite3_column_database_name) column_database_name;
    decltype(&sqlite3_column_decltype) column_decltype;
    decltype(&sqlite3_column_blob) column_blob;
    decltype(&sqlite3_column_name) column_name;
    decltype(&sqlite3_column_text) column_text;
    decltype(&sqlite3_column_type) column_type;
    decltype(&sqlite3_table_column_metadata) table_column_metadata;
    decltype(&sqlite3_column_bytes) column_bytes;
    decltype(&sqlite3_column_table_name) column_table_name;
    decltype(&sqlite3_bind_null) bind_null;
    decltype(&sqlite3_bind_int64) bind_int64;
    decltype(&sqlite3_bind_double) bind_double;
    decltype(&sqlite3_bind_text) bind_text;
    decltype(&sqlite3_bind_blob) bind_blob;
    decltype(&sqlite3_reset) reset;
    int (*key)(sqlite3*, const void*, int); // these two only in builds with encryption
    int (*rekey)(sqlite3*, const void*, int);

    // Whether the rows of a result can be read.
    [[nodiscard]] bool canReadRows() const { return column_count && column_text && column_bytes; }
    // Whether statements can be run again with other values.
    [[nodiscard]] bool canBind() const
    {
        return bind_null && bind_int64 && bind_double && bind_text && bind_blob && reset;
    }
};

// The file to load, as dlopen takes it: the environment variable VELLUMO_SQLITE_LIBRARY, or what the build was
// configured with when that is not set.
[[nodiscard]] std::string sqliteLibraryPath();

// False when the file cannot be loaded or lacks a required entry point; that was shown in `window`, and nothing stays
// loaded.
[[nodiscard]] bool LoadSQLiteLibrary(LoadErrorWindow& window);
void UnloadSQLiteLibrary();
// What tells a person that the library lacks an entry point.
[[nodiscard]] std::string missingEntryPoint(const char* name);
[[nodiscard]] bool IsSQLiteLibraryLoaded();

// All null while the library is not loaded.
[[nodiscard]] const SQLiteFunctions& sqliteFunctions();

} // namespace vellumo
