// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::cfb {

// One entry of the directory.
struct DirEntry {
    static constexpr std::size_t byteCount = 128;
    enum Type : std::uint8_t { Storage = 1, Stream = 2, Root = 5 };

    std::string name; // the low byte of each character, without a leading control character
    std::uint8_t type = 0;
    std::uint32_t left = 0; // siblings and child: indices of entries
    std::uint32_t right = 0;
    std::uint32_t child = 0;
    std::uint32_t firstBlock = 0;
    std::uint32_t size = 0; // bytes

    // `raw` holds at least `byteCount` bytes.
    [[nodiscard]] static DirEntry fromBytes(Bytes raw);
    // False for an unused entry, one of an unknown type and one without a name.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] bool isDirectory() const { return type != Stream; }
};

// The directory: storages (folders) and streams (files) below a root.
class DirTree {
public:
    // Adds the entries of the directory's next block; a cut entry at its end is dropped.
    void append(Bytes block);

    // The root entry; null when there is none.
    [[nodiscard]] const DirEntry* root() const;
    // The entry at `path`, names separated by "/", matched exactly; null when there is none. Owned by the tree.
    [[nodiscard]] const DirEntry* entry(std::string_view path) const;
    // All of them as they stand in the file, unused ones and those of no folder as well.
    [[nodiscard]] const std::vector<DirEntry>& entries() const { return m_entries; }

private:
    [[nodiscard]] const DirEntry* childNamed(const DirEntry& parent, std::string_view name) const;

    std::vector<DirEntry> m_entries;
};

} // namespace vellumo::cfb
