// SPDX-License-Identifier: MIT
#include <dlfcn.h>

/* SQLite with its required entry points alone: each leads to the library beside it, and no other is there. */

static void* entryPoint(const char* name)
{
    static void* library = 0;
    if (library == 0) library = dlopen("libsqlite3.so.0", RTLD_NOW | RTLD_LOCAL);
    return dlsym(library, name);
}

#define FORWARD(result, name, parameters, arguments) \
    result name parameters { return ((result(*) parameters)entryPoint(#name))arguments; }

FORWARD(int, sqlite3_close, (void* database), (database))
FORWARD(int, sqlite3_open_v2, (const char* path, void** database, int flags, const char* system),
    (path, database, flags, system))
FORWARD(int, sqlite3_prepare_v2, (void* database, const char* text, int length, void** statement, const char** rest),
    (database, text, length, statement, rest))
FORWARD(int, sqlite3_step, (void* statement), (statement))
FORWARD(int, sqlite3_errcode, (void* database), (database))
FORWARD(const char*, sqlite3_errmsg, (void* database), (database))
FORWARD(int, sqlite3_libversion_number, (void), ())
FORWARD(int, sqlite3_finalize, (void* statement), (statement))
