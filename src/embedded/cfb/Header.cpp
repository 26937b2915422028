// SPDX-License-Identifier: MIT
#include "embedded/cfb/Header.h"

#include <algorithm>

namespace vellumo::cfb {

namespace {

constexpr std::uint8_t signature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
constexpr std::uint32_t onlyThreshold = 4096;

} // namespace

bool hasSignature(Bytes file)
{
    if (file.size() < sizeof signature) return false;
    return std::equal(std::begin(signature), std::end(signature), file.begin(),
        [](std::uint8_t expected, std::byte found) { return std::byte{expected} == found; });
}

Header::Header() { bigTableBlocks.fill(0xFFFFFFFF); }

bool Header::load(Bytes file)
{
    if (file.size() < byteCount || !hasSignature(file)) return false;
    bigShift = u16At(file, 30);
    smallShift = u16At(file, 32);
    bigTableBlockCount = u32At(file, 44);
    firstDirectoryBlock = u32At(file, 48);
    threshold = u32At(file, 56);
    firstSmallTableBlock = u32At(file, 60);
    smallTableBlockCount = u32At(file, 64);
    firstExtensionBlock = u32At(file, 68);
    extensionBlockCount = u32At(file, 72);
    for (std::size_t i = 0; i < inlineTableBlocks; ++i)
        bigTableBlocks[i] = u32At(file, 76 + 4 * i);
    return true;
}

bool Header::isValid() const
{
    if (threshold != onlyThreshold) return false;
    if (bigTableBlockCount == 0) return false;
    if (bigTableBlockCount < inlineTableBlocks && extensionBlockCount != 0) return false;
    return smallShift <= bigShift && bigShift >= 7 && bigShift < 31;
}

} // namespace vellumo::cfb
