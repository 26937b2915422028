// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

// What decoding allows itself, whatever a cell asks for. The figure for a whole file is its reader's (UnpackBudget).
namespace vellumo::limits {

inline constexpr std::size_t unpackedBytesPerObject = std::size_t{512} << 20U;
// Deflate makes at most 258 bytes of 2 bits: room beyond this many times the packed bytes could not be filled.
inline constexpr std::size_t bestDeflateRatio = 1032;
// Entries of a zip archive that are looked at to tell what it is.
inline constexpr std::size_t zipEntriesLookedAt = 4096;
// Streams of a compound file that may be tried in turn: each may claim the same blocks.
inline constexpr std::size_t streamsOfOneName = 16;
// A file name is cut to this many bytes of UTF-8: file systems take 255, and a saved file may get a longer ending.
inline constexpr std::size_t longestFileName = 200;
// The path of a linked file, in bytes as stored.
inline constexpr std::size_t longestLinkPath = 4096;

} // namespace vellumo::limits
