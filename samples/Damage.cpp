// SPDX-License-Identifier: MIT
#include "samples/Damage.h"

#include <filesystem>
#include <fstream>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t kindMask = 0xC0000000;

bool readNumber(const std::string& path, std::uint64_t offset, std::uint32_t& number)
{
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(offset));
    unsigned char bytes[4];
    if (!file.read(reinterpret_cast<char*>(bytes), sizeof bytes)) return false;
    number = bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 | static_cast<std::uint32_t>(bytes[2]) << 16
        | static_cast<std::uint32_t>(bytes[3]) << 24;
    return true;
}

bool patchNumber(const std::string& path, std::uint64_t offset, std::uint32_t number)
{
    std::uint8_t bytes[4];
    putNumber<std::uint32_t>(bytes, number);
    return patchFile(path, offset, bytes);
}

} // namespace

bool patchFile(const std::string& path, std::uint64_t offset, ByteSpan bytes)
{
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(static_cast<std::streamoff>(offset));
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    return file.good();
}

bool cutFile(const std::string& path, std::uint64_t size)
{
    std::error_code error;
    std::filesystem::resize_file(path, size, error);
    return !error;
}

bool closeChain(const std::string& path, const LongValuePlace& value)
{
    std::uint32_t length = 0;
    if (value.pieces.empty() || !readNumber(path, value.headerOffset, length) || (length & kindMask) != 0) return false;
    return patchNumber(path, value.pieces.back().fileOffset, value.pieces.front().pointer);
}

bool stateLength(const std::string& path, const LongValuePlace& value, std::uint32_t length)
{
    std::uint32_t old = 0;
    if (!readNumber(path, value.headerOffset, old)) return false;
    return patchNumber(path, value.headerOffset, (old & kindMask) | (length & ~kindMask));
}

} // namespace vellumo::samples
