// SPDX-License-Identifier: MIT
#include "adapters/RecentFilesPolicy.h"

#include "adapters/GlibOwned.h"

#include <fmt/format.h>
#include <gio/gio.h>

namespace vellumo {

namespace {

bool gnomeRemembers()
{
    // Asking for a schema or a key that is not installed would end the program.
    auto* source = g_settings_schema_source_get_default();
    if (source == nullptr) return true;
    const GlibOwned<GSettingsSchema, g_settings_schema_unref> schema(
        g_settings_schema_source_lookup(source, "org.gnome.desktop.privacy", TRUE));
    constexpr const char* key = "remember-recent-files";
    if (!schema || g_settings_schema_has_key(schema.get(), key) == FALSE) return true;
    const GlibOwned<GSettings, g_object_unref> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    return g_settings_get_boolean(settings.get(), key) != FALSE;
}

bool kdeSwitch(GKeyFile* file, const char* key, bool whenMissing)
{
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(file, "RecentDocuments", key, &error) != FALSE;
    if (error == nullptr) return value;
    g_error_free(error);
    return whenMissing;
}

} // namespace

RecentFilesPolicy readRecentFilesPolicy(const std::string& kdeGlobalsPath)
{
    RecentFilesPolicy policy;
    const GlibOwned<GKeyFile, g_key_file_free> file(g_key_file_new());
    // A file that is missing or damaged says nothing.
    g_key_file_load_from_file(file.get(), kdeGlobalsPath.c_str(), G_KEY_FILE_NONE, nullptr);
    policy.remembers = kdeSwitch(file.get(), "UseRecent", true);
    policy.ignoresHidden = kdeSwitch(file.get(), "IgnoreHidden", false);
    return policy;
}

RecentFilesPolicy userRecentFilesPolicy()
{
    auto policy = readRecentFilesPolicy(fmt::format("{}/kdeglobals", g_get_user_config_dir()));
    policy.remembers = policy.remembers && gnomeRemembers();
    policy.temporaryFolder = g_get_tmp_dir();
    return policy;
}

bool mayBeNoted(const RecentFilesPolicy& policy, const std::string& path)
{
    if (!policy.remembers) return false;
    if (policy.ignoresHidden && path.find("/.") != std::string::npos) return false;
    return policy.temporaryFolder.empty() || !path.starts_with(policy.temporaryFolder + '/');
}

} // namespace vellumo
