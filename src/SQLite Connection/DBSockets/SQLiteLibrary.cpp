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

enum class Need { Required, Optional };

// Finds entry points one by one and notes those that are missing.
class Resolver {
public:
    explicit Resolver(void* handle)
        : m_handle(handle)
    {
    }

    template <typename Function> void resolve(Function& function, const char* name, Need need = Need::Required)
    {
        function = reinterpret_cast<Function>(dlsym(m_handle, name));
        if (function != nullptr || need == Need::Optional) return;
        if (!m_missing.empty()) m_missing += '\n';
        m_missing += format("%@: %@", {localized("failedloadfunction"), name});
    }

    [[nodiscard]] const std::string& missing() const { return m_missing; }

private:
    void* m_handle;
    std::string m_missing;
};

// The lines of the entry points that are missing; "" when none is.
std::string resolveAll(void* handle, SQLiteFunctions& functions)
{
    Resolver resolver(handle);
    resolver.resolve(functions.close, "sqlite3_close");
    resolver.resolve(functions.open_v2, "sqlite3_open_v2");
    resolver.resolve(functions.libversion, "sqlite3_libversion");
    resolver.resolve(functions.exec, "sqlite3_exec");
    resolver.resolve(functions.prepare_v2, "sqlite3_prepare_v2");
    resolver.resolve(functions.step, "sqlite3_step");
    resolver.resolve(functions.errcode, "sqlite3_errcode");
    resolver.resolve(functions.errmsg, "sqlite3_errmsg");
    resolver.resolve(functions.changes, "sqlite3_changes");
    resolver.resolve(functions.libversion_number, "sqlite3_libversion_number");
    resolver.resolve(functions.interrupt, "sqlite3_interrupt");
    resolver.resolve(functions.last_insert_rowid, "sqlite3_last_insert_rowid");
    resolver.resolve(functions.finalize, "sqlite3_finalize");
    resolver.resolve(functions.column_count, "sqlite3_column_count");
    resolver.resolve(functions.column_database_name, "sqlite3_column_database_name");
    resolver.resolve(functions.column_decltype, "sqlite3_column_decltype");
    resolver.resolve(functions.column_blob, "sqlite3_column_blob");
    resolver.resolve(functions.column_name, "sqlite3_column_name");
    resolver.resolve(functions.column_text, "sqlite3_column_text");
    resolver.resolve(functions.column_type, "sqlite3_column_type");
    resolver.resolve(functions.table_column_metadata, "sqlite3_table_column_metadata");
    resolver.resolve(functions.column_bytes, "sqlite3_column_bytes");
    resolver.resolve(functions.column_table_name, "sqlite3_column_table_name");
    resolver.resolve(functions.key, "sqlite3_key", Need::Optional);
    resolver.resolve(functions.rekey, "sqlite3_rekey", Need::Optional);
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
