#pragma once

#include <cstdint>
#include <string>

namespace vellumo {

// A file size for people: "12 KB", "1.5 MB", "2.0 GB". Units are binary and kilobytes are rounded up, so that a file
// that is not empty never shows 0 KB.
[[nodiscard]] std::string formatComputerFileSize(std::uint64_t bytes);

} // namespace vellumo
