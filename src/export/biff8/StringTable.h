// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace vellumo::biff8 {

// The distinct texts of a workbook, numbered from 0 in the order in which they first come. Texts are borrowed. Takes
// about 28 bytes a distinct text.
class StringTable {
public:
    // Takes a text of `size` bytes as the workbook stores it. Its number, which is a new one when the text is, is at
    // `number` (4 bytes, which stay where they are until then) after some more calls, or `settle`.
    void add(std::string_view text, std::uint64_t size, std::byte* number);
    void settle();

    // Texts, and bytes that they take in the workbook. Those that are not settled count as if they were new.
    [[nodiscard]] std::uint32_t count() const { return m_count + m_waitingCount; }
    [[nodiscard]] std::uint64_t size() const { return m_size; }
    // `number` is one that was given.
    [[nodiscard]] std::string_view text(std::uint32_t number) const;

    // All is settled. Only the texts with numbers below `count`, which are of `size` bytes, stay.
    void truncate(std::uint32_t count, std::uint64_t size);

private:
    // Looking up a text nearly always has to wait for memory. The last few texts are left waiting meanwhile.
    struct Waiting {
        std::string_view text;
        std::uint64_t hash;
        std::uint64_t size;
        std::byte* number;
    };
    static constexpr std::uint32_t maximumWaiting = 16;

    // The texts' places, in blocks so that growing moves nothing and needs no room for a copy.
    static constexpr std::uint32_t blockTexts = 4096;
    struct Block {
        std::array<const char*, blockTexts> starts;
        std::array<std::uint32_t, blockTexts> lengths;
    };

    // A hash table in 8 parts that grow one by one, again so that growing needs little extra room. A full entry's tag
    // tells nearly always whether the text can be the one; growing needs the tags alone.
    struct Slot {
        std::uint32_t tag;
        std::uint32_t number;
    };
    struct Free {
        void operator()(Slot* slots) const { std::free(slots); }
    };
    using Slots = std::unique_ptr<Slot[], Free>;
    struct Segment {
        Slots slots;
        std::uint32_t capacity = 0;
        std::uint32_t used = 0;
    };
    static constexpr std::size_t segmentCount = 8;
    static constexpr std::uint32_t freeSlot = 0xFFFFFFFF;

    static Slots freeSlots(std::uint32_t& capacity);
    static void insert(Segment& segment, Slot slot);
    static void rebuild(Segment& segment, std::uint32_t capacity, std::uint32_t belowNumber);
    void settle(const Waiting& waiting);
    [[nodiscard]] std::uint32_t numberOf(std::string_view text, std::uint64_t hash);
    std::uint32_t addText(std::string_view text);

    std::vector<std::unique_ptr<Block>> m_blocks;
    std::array<Segment, segmentCount> m_segments;
    std::uint32_t m_count = 0;
    std::uint64_t m_size = 0;
    std::array<Waiting, maximumWaiting> m_waiting; // a ring
    std::uint32_t m_firstWaiting = 0;
    std::uint32_t m_waitingCount = 0;
};

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
