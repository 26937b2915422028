// SPDX-License-Identifier: MIT
/* Enough of SQLite to be loaded, not enough to be used: see SQLiteLibraryTest.cpp. */
int sqlite3_close(void* database)
{
    (void)database;
    return 0;
}

const char* sqlite3_libversion(void) { return "0.0.0"; }

int sqlite3_libversion_number(void) { return 0; }
