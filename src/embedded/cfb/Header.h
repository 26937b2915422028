// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <array>

namespace vellumo::cfb {

// D0 CF 11 E0 A1 B1 1A E1 at the start.
[[nodiscard]] bool hasSignature(Bytes file);

// The first 512 bytes of a compound file (published as [MS-CFB], section 2.2). Block sizes are given as shifts: a
// block has 2^shift bytes.
struct Header {
    static constexpr std::size_t byteCount = 512;
    static constexpr std::size_t inlineTableBlocks = 109;

    std::uint32_t bigShift = 9;
    std::uint32_t smallShift = 6;
    std::uint32_t bigTableBlockCount = 0;
    std::uint32_t firstDirectoryBlock = 0;
    std::uint32_t threshold = 4096; // a stream of fewer bytes lives in small blocks
    std::uint32_t firstSmallTableBlock = 0;
    std::uint32_t smallTableBlockCount = 0; // not relied on: the chain has an end of its own
    std::uint32_t firstExtensionBlock = 0;
    std::uint32_t extensionBlockCount = 0;
    std::array<std::uint32_t, inlineTableBlocks> bigTableBlocks; // all 0xFFFFFFFF at first

    Header();

    // False when the file is shorter than a header or lacks the signature; all fields keep their values then.
    [[nodiscard]] bool load(Bytes file);
    // Whether the fields make sense together. Says nothing of whether the blocks they name exist.
    [[nodiscard]] bool isValid() const;

    // Both for a valid header only.
    [[nodiscard]] std::size_t bigBlockSize() const { return std::size_t{1} << bigShift; }
    [[nodiscard]] std::size_t smallBlockSize() const { return std::size_t{1} << smallShift; }
};

} // namespace vellumo::cfb
