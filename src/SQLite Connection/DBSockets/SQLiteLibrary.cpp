// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/SQLiteLibrary.h"

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <mutex>

namespace vellumo {

namespace {

struct CloseLibrary {
    void operator()(void* handle) const { dlclose(handle); }
};

struct Library {
    std::mutex mutex; // guards what follows
    std::unique_ptr<void, CloseLibrary> handle;
    std::uint32_t retainCount = 0;
    SQLiteFunctions functions{};
};

Library& library()
{
    static Library theLibrary;
    return theLibrary;
}

// Finds entry points one by one and notes which of the required ones are missing.
class Resolver {
public:
    explicit Resolver(void* handle)
        : m_handle(handle)
    {
    }

    template <typename Function> void optional(Function& function, const char* name)
    {
        function = reinterpret_cast<Function>(dlsym(m_handle, name));
    }
    template <typename Function> void required(Function& function, const char* name)
    {
        optional(function, name);
        if (function != nullptr) return;
        if (!m_missing.empty()) m_missing += '\n';
        m_missing += missingEntryPoint(name);
    }

    [[nodiscard]] const std::string& missing() const { return m_missing; }

private:
    void* m_handle;
    std::string m_missing;
};

// The lines of the required entry points that are missing; "" when none is.
std::string resolveAll(void* handle, SQLiteFunctions& functions)
{
    Resolver resolver(handle);
    resolver.required(functions.close, "sqlite3_close");
    resolver.required(functions.open_v2, "sqlite3_open_v2");
    resolver.optional(functions.libversion, "sqlite3_libversion");
    resolver.optional(functions.exec, "sqlite3_exec");
    resolver.required(functions.prepare_v2, "sqlite3_prepare_v2");
    resolver.required(functions.step, "sqlite3_step");
    resolver.required(functions.errcode, "sqlite3_errcode");
    resolver.required(functions.errmsg, "sqlite3_errmsg");
    resolver.optional(functions.changes, "sqlite3_changes");
    resolver.required(functions.libversion_number, "sqlite3_libversion_number");
    resolver.optional(functions.interrupt, "sqlite3_interrupt");
    resolver.optional(functions.last_insert_rowid, "sqlite3_last_insert_rowid");
    resolver.required(functions.finalize, "sqlite3_finalize");
    resolver.optional(functions.column_count, "sqlite3_column_count");
    resolver.optional(functions.column_database_name, "sqlite3_column_database_name");
    resolver.optional(functions.column_decltype, "sqlite3_column_decltype");
    resolver.optional(functions.column_blob, "sqlite3_column_blob");
    resolver.optional(functions.column_name, "sqlite3_column_name");
    resolver.optional(functions.column_text, "sqlite3_column_text");
    resolver.optional(functions.column_type, "sqlite3_column_type");
    resolver.optional(functions.table_column_metadata, "sqlite3_table_column_metadata");
    resolver.optional(functions.column_bytes, "sqlite3_column_bytes");
    resolver.optional(functions.column_table_name, "sqlite3_column_table_name");
    resolver.optional(functions.bind_null, "sqlite3_bind_null");
    resolver.optional(functions.bind_int64, "sqlite3_bind_int64");
    resolver.optional(functions.bind_double, "sqlite3_bind_double");
    resolver.optional(functions.bind_text, "sqlite3_bind_text");
    resolver.optional(functions.bind_blob, "sqlite3_bind_blob");
    resolver.optional(functions.reset, "sqlite3_reset");
    resolver.optional(functions.key, "sqlite3_key");
    resolver.optional(functions.rekey, "sqlite3_rekey");
    return resolver.missing();
}

void forget(Library& state)
{
    state.retainCount = 0;
    state.functions = {};
    state.handle.reset();
}

// Loads for the first time: "", or the lines to show, and nothing stays loaded.
std::string loadFirst(Library& state, const std::string& path)
{
    state.handle.reset(dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL));
    if (!state.handle) {
        const char* reason = dlerror();
        return reason == nullptr ? path : reason;
    }
    state.retainCount = 1;
    auto missing = resolveAll(state.handle.get(), state.functions);
    if (!missing.empty()) forget(state);
    return missing;
}

std::string retainOrLoad(const std::string& path)
{
    auto& state = library();
    const std::lock_guard lock(state.mutex);
    if (!state.handle) return loadFirst(state, path);
    ++state.retainCount;
    return {};
}

void AddFunctionChecking(LoadErrorWindow& window, const std::string& path, const std::string& lines)
{
    window.show({localized("Load Library Error"), format("%@: '%@'", {localized("sqlitelibraryerror"), path}), lines});
}

} // namespace

std::string sqliteLibraryPath()
{
    const char* path = std::getenv("VELLUMO_SQLITE_LIBRARY");
    return path == nullptr || *path == '\0' ? VELLUMO_SQLITE_LIBRARY : path;
}

std::string missingEntryPoint(const char* name) { return format("%@: %@", {localized("failedloadfunction"), name}); }

bool LoadSQLiteLibrary(LoadErrorWindow& window)
{
    const auto path = sqliteLibraryPath();
    const auto failures = retainOrLoad(path);
    if (!failures.empty()) AddFunctionChecking(window, path, failures);
    return failures.empty();
}

void UnloadSQLiteLibrary()
{
    auto& state = library();
    const std::lock_guard lock(state.mutex);
    if (state.retainCount > 0) --state.retainCount;
    if (state.retainCount == 0) forget(state);
}

bool IsSQLiteLibraryLoaded()
{
    auto& state = library();
    const std::lock_guard lock(state.mutex);
    return state.handle != nullptr;
}

const SQLiteFunctions& sqliteFunctions() { return library().functions; }

} // namespace vellumo
