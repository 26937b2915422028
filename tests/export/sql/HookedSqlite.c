// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <stddef.h>

/* SQLite, but each statement is shown to a hook first: one that the hook refuses is replaced by a wrong one. */

typedef int (*Hook)(const char* statement);
typedef int (*Prepare)(void* database, const char* text, int length, void** statement, const char** rest);

static Hook currentHook = NULL;

void setStatementHook(Hook hook) { currentHook = hook; }

int sqlite3_prepare_v2(void* database, const char* text, int length, void** statement, const char** rest)
{
    static Prepare prepare = NULL;
    if (currentHook != NULL && currentHook(text) != 0) text = "REFUSED";
    if (prepare == NULL) *(void**)&prepare = dlsym(dlopen("libsqlite3.so.0", RTLD_NOW), "sqlite3_prepare_v2");
    return prepare(database, text, length, statement, rest);
}
