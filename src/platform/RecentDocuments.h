// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vellumo {

// This program's entries of the desktop's list of recent documents, the only store of the file list. Main thread only.
class RecentDocuments {
public:
    virtual ~RecentDocuments() = default;
    // Absolute paths, the most recently noted first.
    [[nodiscard]] virtual std::vector<std::string> paths() const = 0;
    // Puts the document at the front; a document listed already moves there.
    virtual void note(const std::string& path) = 0;
    // Forgets this program's documents.
    virtual void clear() = 0;
};

} // namespace vellumo
