// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <stddef.h>
#include <string.h>

/* SQLite, but each statement is shown to a hook before it runs: one that the hook refuses is replaced by a wrong one. An
   INSERT, which may be prepared once for many runs, is shown at each of them and never refused. */

typedef int (*Hook)(const char* statement);
typedef int (*Prepare)(void* database, const char* text, int length, void** statement, const char** rest);
typedef int (*Step)(void* statement);
typedef const char* (*Sql)(void* statement);

static Hook currentHook = NULL;

void setStatementHook(Hook hook) { currentHook = hook; }

static void* entryPoint(const char* name) { return dlsym(dlopen("libsqlite3.so.0", RTLD_NOW), name); }

static int isInsert(const char* text) { return text != NULL && strncmp(text, "INSERT", 6) == 0; }

int sqlite3_prepare_v2(void* database, const char* text, int length, void** statement, const char** rest)
{
    static Prepare prepare = NULL;
    if (currentHook != NULL && !isInsert(text) && currentHook(text) != 0) text = "REFUSED";
    if (prepare == NULL) *(void**)&prepare = entryPoint("sqlite3_prepare_v2");
    return prepare(database, text, length, statement, rest);
}

int sqlite3_step(void* statement)
{
    static Step step = NULL;
    static Sql sql = NULL;
    if (step == NULL) *(void**)&step = entryPoint("sqlite3_step");
    if (sql == NULL) *(void**)&sql = entryPoint("sqlite3_sql");
    if (currentHook != NULL && isInsert(sql(statement))) currentHook(sql(statement));
    return step(statement);
}
