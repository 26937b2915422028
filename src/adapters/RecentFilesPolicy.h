// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vellumo {

// What the user allows the desktop's list of recent documents to remember.
struct RecentFilesPolicy {
    bool remembers = true;       // false: nothing is to be noted
    bool ignoresHidden = false;  // true: files whose path has a part that starts with a dot are not to be noted
    std::string temporaryFolder; // files below it are not to be noted; "" for no such folder
};

// The switches of KDE: UseRecent and IgnoreHidden of the file
// `kdeGlobalsPath`; a missing file or key allows.
[[nodiscard]] RecentFilesPolicy readRecentFilesPolicy(const std::string& kdeGlobalsPath);

// What the user who runs the program allows: KDE's switches, GNOME's "remember-recent-files" (one of the two saying no
// is enough), and nothing of the temporary folder.
[[nodiscard]] RecentFilesPolicy userRecentFilesPolicy();

// Whether the policy lets `path` (absolute) be noted.
[[nodiscard]] bool mayBeNoted(const RecentFilesPolicy& policy, const std::string& path);

} // namespace vellumo
