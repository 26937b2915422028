// SPDX-License-Identifier: MIT
#include "adapters/IniDefaults.h"

#include "adapters/GlibOwned.h"
#include "adapters/LockFile.h"
#include "adapters/PrivateFile.h"

#include <fmt/format.h>
#include <glib.h>

namespace vellumo {

namespace {

constexpr const char* group = "General";
constexpr const char* versionKey = "version";
constexpr int version = 1;
constexpr std::chrono::milliseconds lockPatience{1000};

} // namespace

void IniDefaults::Close::operator()(_GKeyFile* file) const { g_key_file_free(file); }

IniDefaults::IniDefaults(std::string path)
    : m_path(std::move(path))
    , m_file(load())
{
}

IniDefaults::KeyFile IniDefaults::load() const
{
    KeyFile file(g_key_file_new());
    if (!mayExist(m_path)) return file;
    constexpr auto flags = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    return g_key_file_load_from_file(file.get(), m_path.c_str(), flags, nullptr) != FALSE ? std::move(file) : nullptr;
}

std::optional<std::string> IniDefaults::string(std::string_view key) const
{
    KeyFile changed;
    const std::string name(key);
    auto* file = m_file.get();
    if (const auto change = m_changes.find(key); change != m_changes.end()) {
        changed.reset(g_key_file_new());
        g_key_file_set_value(changed.get(), group, name.c_str(), change->second.c_str());
        file = changed.get();
    }
    if (file == nullptr) return std::nullopt;
    const GlibText value(g_key_file_get_string(file, group, name.c_str(), nullptr));
    return value ? std::optional<std::string>(value.get()) : std::nullopt;
}

std::optional<bool> IniDefaults::boolean(std::string_view key) const
{
    const auto text = string(key);
    if (text == "true") return true;
    if (text == "false") return false;
    return std::nullopt;
}

void IniDefaults::setString(std::string_view key, std::string_view value)
{
    // The library knows how a value is written: spaces at its start, line breaks, backslashes.
    const KeyFile scratch(g_key_file_new());
    const std::string name(key);
    g_key_file_set_string(scratch.get(), group, name.c_str(), std::string(value).c_str());
    const GlibText written(g_key_file_get_value(scratch.get(), group, name.c_str(), nullptr));
    m_changes.insert_or_assign(name, written ? written.get() : "");
}

void IniDefaults::setBoolean(std::string_view key, bool value)
{
    m_changes.insert_or_assign(std::string(key), value ? "true" : "false");
}

bool IniDefaults::synchronize()
{
    if (m_changes.empty()) return true;
    if (!makeFolderFor(m_path)) return false;
    LockFile lock(m_path + ".lock");
    if (!lock.tryLock(lockPatience)) return false;
    auto file = load();
    return file != nullptr && write(std::move(file));
}

bool IniDefaults::write(KeyFile file)
{
    const bool hasVersion = g_key_file_has_key(file.get(), group, versionKey, nullptr) != FALSE;
    if (hasVersion && g_key_file_get_integer(file.get(), group, versionKey, nullptr) > version) return false;
    g_key_file_set_integer(file.get(), group, versionKey, version);
    for (const auto& [key, value] : m_changes)
        g_key_file_set_value(file.get(), group, key.c_str(), value.c_str());
    gsize length = 0;
    const GlibText text(g_key_file_to_data(file.get(), &length, nullptr));
    if (!writePrivateFile(m_path, {text.get(), length})) return false;
    m_file = std::move(file);
    m_changes.clear();
    return true;
}

std::string userSettingsPath() { return fmt::format("{}/vellumo/vellumo.ini", g_get_user_config_dir()); }

} // namespace vellumo
