// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <string>
#include <vector>

namespace vellumo::samples {

struct CompoundStream {
    // ASCII. "A/B" is the stream B in the storage A; a name may start with a control character, as property sets do.
    std::string path;
    Bytes bytes;
};

// A compound file (MS-CFB) with these streams: those shorter than 4096 bytes in small blocks of 2^`smallBlockShift`
// bytes, the others in big blocks of 2^`bigBlockShift` bytes (from 7 on; programs write 9 or 12). Beyond 109
// allocation-table blocks it has an extension table. Directory entry 0 is the root; each stream takes the next one,
// after those of its storages.
[[nodiscard]] Bytes compoundFile(
    const std::vector<CompoundStream>& streams, int bigBlockShift = 9, int smallBlockShift = 6);

} // namespace vellumo::samples
