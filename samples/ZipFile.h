// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <string>
#include <vector>

namespace vellumo::samples {

struct ZipEntry {
    std::string name; // ASCII, "/" between folders
    std::string text;
};

// A ZIP archive with the entries as they are, not compressed.
[[nodiscard]] Bytes zipFile(const std::vector<ZipEntry>& entries);

} // namespace vellumo::samples
