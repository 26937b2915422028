// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::testing {

using Buffer = std::vector<std::byte>;

// Sets a little-endian number inside `buffer`, or adds one at its end.
void putU16(Buffer& buffer, std::size_t offset, unsigned value);
void putU32(Buffer& buffer, std::size_t offset, std::uint32_t value);
void addU16(Buffer& buffer, unsigned value);
void addU32(Buffer& buffer, std::uint32_t value);

// Damage to a good buffer, for tables of cases.
using Change = std::function<void(Buffer&)>;
[[nodiscard]] Change set8(std::size_t offset, unsigned value);
[[nodiscard]] Change set16(std::size_t offset, unsigned value);
[[nodiscard]] Change set32(std::size_t offset, std::uint32_t value);
[[nodiscard]] Change resizeTo(std::size_t size);
[[nodiscard]] Change both(const Change& first, const Change& second);

struct CompoundFileContent {
    unsigned bigShift = 9;
    unsigned smallShift = 6;
    std::vector<std::pair<std::string, Buffer>> streams; // as the sample maker takes them
};

// A whole compound file, and where its parts stand, for those who want to damage it.
struct CompoundFile {
    Buffer bytes;
    unsigned bigShift;

    [[nodiscard]] std::size_t tableBlockCount() const;
    // One of the first 109 blocks of the big-block table.
    [[nodiscard]] std::uint32_t tableBlock(std::size_t index) const;
    [[nodiscard]] std::uint32_t directoryBlock() const;
    [[nodiscard]] std::uint32_t firstExtensionBlock() const;
    // Of a stream, in its own kind of blocks.
    [[nodiscard]] std::uint32_t firstBlockOf(std::size_t entry) const;
    [[nodiscard]] std::size_t offsetOfBlock(std::size_t block) const;
    // The entry of the big-block table for `block`.
    [[nodiscard]] std::size_t offsetOfLink(std::size_t block) const;
    // Of the first block's entries.
    [[nodiscard]] std::size_t offsetOfSmallLink(std::size_t block) const;
    [[nodiscard]] std::size_t offsetOfEntry(std::size_t entry) const;
};

// By the sample maker. Siblings form a tree that is sorted by the length of their names.
[[nodiscard]] CompoundFile writeCompoundFile(const CompoundFileContent& content);

} // namespace vellumo::testing
