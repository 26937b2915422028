// SPDX-License-Identifier: MIT
#pragma once

#include "samples/DatabaseWriter.h"

#include <string>

// Makes a written file a broken one, for tests. Each function returns false when the file cannot be changed.
namespace vellumo::samples {

// Overwrites bytes at an offset from the start of the file, or appends them where it ends.
[[nodiscard]] bool patchFile(const std::string& path, std::uint64_t offset, ByteSpan bytes);
[[nodiscard]] bool cutFile(const std::string& path, std::uint64_t size);
// Makes the last link of a chained value point back to its first; false when the value is no chain.
[[nodiscard]] bool closeChain(const std::string& path, const LongValuePlace& value);
// States another length for a long value; its kind stays.
[[nodiscard]] bool stateLength(const std::string& path, const LongValuePlace& value, std::uint32_t length);

} // namespace vellumo::samples
