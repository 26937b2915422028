#pragma once

#include <cstdint>

namespace vellumo::biff8 {

class RecordStream;
class StringTable;

// Writes the shared strings (SST with its CONTINUE records) and the index that readers may use to find one (EXTSST).
// `referenceCount`: how many cells of the workbook refer to a string.
void writeSharedStrings(RecordStream& out, const StringTable& strings, std::uint32_t referenceCount);

// Bytes of a string in the table, but for what a split over records adds.
[[nodiscard]] constexpr std::uint64_t sharedStringSize(std::uint64_t units, bool isWide)
{
    return 3 + units * (isWide ? 2 : 1);
}

// Most strings of a workbook: EXTSST lists one string in n, at most 128 in all, and n is a 16-bit number.
inline constexpr std::uint32_t maximumStringCount = 128 * 0xFFFF + 127;

} // namespace vellumo::biff8
