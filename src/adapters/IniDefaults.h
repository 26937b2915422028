// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Defaults.h"

#include <map>
#include <memory>

struct _GKeyFile;

namespace vellumo {

// Settings in an INI file, in its group "General" beside a "version". What other programs or other versions put there
// is kept. Changes stay in memory until synchronize(), which reads the file again first: of two programs that write,
// each changes its own keys only. A file that cannot be read, or that a later version wrote, is never written.
class IniDefaults : public Defaults {
public:
    explicit IniDefaults(std::string path);

    [[nodiscard]] std::optional<std::string> string(std::string_view key) const override;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;
    void setString(std::string_view key, std::string_view value) override;
    void setBoolean(std::string_view key, bool value) override;
    bool synchronize() override;

private:
    struct Close {
        void operator()(_GKeyFile* file) const;
    };
    using KeyFile = std::unique_ptr<_GKeyFile, Close>;

    // Empty where there is no file; null where there is one that does not load.
    [[nodiscard]] KeyFile load() const;
    [[nodiscard]] bool write(KeyFile file);

    std::string m_path;
    KeyFile m_file;                                            // as it was read last; null when it did not load
    std::map<std::string, std::string, std::less<>> m_changes; // values as the file writes them
};

// "$XDG_CONFIG_HOME/vellumo/vellumo.ini".
[[nodiscard]] std::string userSettingsPath();

} // namespace vellumo
