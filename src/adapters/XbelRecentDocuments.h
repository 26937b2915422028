#pragma once

#include "adapters/RecentFilesPolicy.h"
#include "platform/RecentDocuments.h"

#include <chrono>
#include <cstdint>

namespace vellumo {

// How this program appears in the desktop's list, and where that list is.
struct XbelSettings {
    std::string path;        // of recently-used.xbel
    std::string application; // the name of our entries: the desktop id
    std::string command;     // what opens one again, "%u" standing for its URI
    RecentFilesPolicy policy;
    std::chrono::milliseconds lockPatience{1000}; // how long to wait for another program that writes
};

// The settings of the user who runs the program: "$XDG_DATA_HOME/recently-used.xbel".
[[nodiscard]] XbelSettings userXbelSettings();

// Our entries of the list of recent documents that desktop programs share. Only the text of our own entries is ever
// changed, everything else in the file stays byte for byte. Written under the lock that KDE's programs take, at once or
// not at all, mode 0600; never when the file cannot be read or parsed, or when an entry that others use too holds what
// the bookmark library would drop. A document that may not or cannot be written is kept for this run only, so that what
// was noted is always listed.
class XbelRecentDocuments : public RecentDocuments {
public:
    explicit XbelRecentDocuments(XbelSettings settings);

    [[nodiscard]] std::vector<std::string> paths() const override;
    void note(const std::string& path) override;
    void clear() override;

private:
    struct Noted {
        std::string path;
        std::int64_t time; // microseconds since 1970
    };
    [[nodiscard]] std::vector<Noted> storedDocuments() const;

    XbelSettings m_settings;
    std::vector<Noted> m_thisRunOnly; // the oldest first
};

} // namespace vellumo
