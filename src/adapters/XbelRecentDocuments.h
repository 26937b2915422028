// SPDX-License-Identifier: MIT
#pragma once

#include "adapters/RecentFilesPolicy.h"
#include "platform/RecentDocuments.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>

namespace vellumo {

// How this program appears in the desktop's list, and where that list is.
struct XbelSettings {
    std::string path;        // of recently-used.xbel
    std::string application; // the name of our entries: the desktop id
    std::string command;     // what opens one again, "%u" standing for its URI
    RecentFilesPolicy policy;
    // How long to wait for another program that writes; after waiting in vain, not at all until it has let go.
    std::chrono::milliseconds lockPatience{100};
};

// The settings of the user who runs the program: "$XDG_DATA_HOME/recently-used.xbel".
[[nodiscard]] XbelSettings userXbelSettings();

// Our entries of the list of recent documents that desktop programs share. Only the text of our own entries is ever
// changed, everything else in the file stays byte for byte. Written under the lock that KDE's programs take, at once or
// not at all, mode 0600; never when the file cannot be read or parsed, or when an entry that others use too holds what
// the bookmark library would drop. A document that may not or cannot be written is kept for this run only, and one that
// cannot be taken out is hidden for this run: what was noted is always listed, what was cleared is not. A path without
// an extension that names no file stands for the database file of that name beside it; of several, for the one that was
// listed last.
class XbelRecentDocuments : public RecentDocuments {
public:
    explicit XbelRecentDocuments(XbelSettings settings);

    [[nodiscard]] std::vector<std::string> paths() const override;
    void note(const std::string& given) override;
    void clear() override;

private:
    struct Noted {
        std::string path;
        std::int64_t time; // microseconds since 1970
    };
    [[nodiscard]] const std::vector<Noted>& storedDocuments() const;
    [[nodiscard]] std::string fileMeantBy(const std::string& path) const;
    [[nodiscard]] bool rewrite(const std::function<std::optional<std::string>(const std::string& text)>& edit);

    XbelSettings m_settings;
    mutable std::vector<Noted> m_lastLoaded; // of the file, when it could be read last
    std::set<std::string> m_forgotten;       // not listed though the file may hold them
    std::vector<std::string> m_cleared;      // what was listed before the last clear(), the newest first
    bool m_isLockFree = true;                // as far as the last attempt tells
    std::vector<Noted> m_thisRunOnly;        // the oldest first
};

} // namespace vellumo
