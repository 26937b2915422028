// SPDX-License-Identifier: MIT
#include "export/biff8/UTF8ToUTF16Converter.h"

#include <cstdint>
#include <cstring>

namespace vellumo {

namespace {

constexpr char32_t malformed = 0xFFFFFFFF;
constexpr std::string_view replacement = "\xEF\xBF\xBD";

constexpr bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

struct LeadByte {
    unsigned followerCount;
    char32_t bits;
    char32_t smallest; // a smaller code in that many bytes is an overlong form
};

// A byte that begins no character has more followers than there can be.
LeadByte leadByte(unsigned char byte)
{
    if (byte < 0x80) return {0, byte, 0};
    if ((byte & 0xE0) == 0xC0) return {1, byte & 0x1Fu, 0x80};
    if ((byte & 0xF0) == 0xE0) return {2, byte & 0x0Fu, 0x800};
    if ((byte & 0xF8) == 0xF0) return {3, byte & 0x07u, 0x10000};
    return {4, 0, 0};
}

// The character at the front of `rest`, which is not empty, and takes it off.
char32_t takeCharacter(std::string_view& rest)
{
    const auto [followerCount, bits, smallest] = leadByte(static_cast<unsigned char>(rest.front()));
    rest.remove_prefix(1);
    if (followerCount > 3 || rest.size() < followerCount) return malformed;
    auto code = bits;
    for (unsigned i = 0; i < followerCount; ++i) {
        const auto byte = static_cast<unsigned char>(rest[i]);
        if ((byte & 0xC0) != 0x80) return malformed;
        code = (code << 6) | (byte & 0x3Fu);
    }
    rest.remove_prefix(followerCount);
    return code < smallest || code > 0x10FFFF ? malformed : code;
}

// Length of the run of U+0001..007F at the front, found eight bytes at a time (so it may end up to seven too early).
std::size_t plainRun(std::string_view text)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t length = 0;
    for (; text.size() - length >= 8; length += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + length, 8);
        const auto zeroBytes = (word - ones) & ~word & highBits;
        if (((word & highBits) | zeroBytes) != 0) break;
    }
    return length;
}

} // namespace

std::optional<std::u16string> UTF8ToUTF16Converter(std::string_view text)
{
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const auto code = takeCharacter(text);
        if (code == malformed) return std::nullopt;
        if (code < 0x10000) {
            units += static_cast<char16_t>(code);
        } else {
            units += static_cast<char16_t>(0xD7C0 + (code >> 10));
            units += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        }
    }
    return units;
}

std::string utf8Text(std::u16string_view units)
{
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t code = units[i];
        const bool isPair =
            code >= 0xD800 && code < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000;
        if (isPair) code = 0x10000 + ((code - 0xD800) << 10) + (units[++i] - 0xDC00);
        const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
        const auto follow = [&](unsigned shift) { put(0x80 | (code >> shift & 0x3F)); };
        if (code < 0x80) {
            put(code);
        } else if (code < 0x800) {
            put(0xC0 | code >> 6);
            follow(0);
        } else if (code < 0x10000) {
            put(0xE0 | code >> 12);
            follow(6);
            follow(0);
        } else {
            put(0xF0 | code >> 18);
            follow(12);
            follow(6);
            follow(0);
        }
    }
    return text;
}

std::string_view firstUnits(std::string_view text, std::size_t count)
{
    auto rest = text;
    while (!rest.empty()) {
        const auto behind = rest;
        const auto units = takeCharacter(rest) < 0x10000 ? 1U : 2U;
        if (units > count) return text.substr(0, text.size() - behind.size());
        count -= units;
    }
    return text;
}

std::optional<TextMeasure> measureText(std::string_view text)
{
    TextMeasure measure;
    while (true) {
        const auto run = plainRun(text);
        measure.units += run;
        text.remove_prefix(run);
        if (text.empty()) return measure;
        const auto code = takeCharacter(text);
        if (code == malformed) return std::nullopt;
        measure.units += code < 0x10000 ? 1 : 2;
        measure.isWide |= code > 0xFF;
        measure.needsRepair |= code == 0 || isSurrogate(code);
    }
}

std::string repairedText(std::string_view text)
{
    std::string repaired;
    while (!text.empty()) {
        auto rest = text;
        const auto code = takeCharacter(rest);
        const auto length = text.size() - rest.size();
        repaired += code == 0 || isSurrogate(code) ? replacement : text.substr(0, length);
        text.remove_prefix(length);
    }
    return repaired;
}

} // namespace vellumo
