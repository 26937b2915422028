// SPDX-License-Identifier: MIT
#include "samples/TextCodec.h"

#include <algorithm>
#include <iterator>

namespace vellumo::samples {
namespace {

// The bytes 0x80 to 0x9F of code page 1252; 0 where it has no character.
constexpr char16_t highControls[32] = {0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030,
    0x0160, 0x2039, 0x0152, 0, 0x017D, 0, 0, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122,
    0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

std::optional<std::uint8_t> toCodePage1252(char16_t unit)
{
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<std::uint8_t>(unit);
    const auto* const found = std::find(std::begin(highControls), std::end(highControls), unit);
    if (found == std::end(highControls)) return std::nullopt;
    return static_cast<std::uint8_t>(0x80 + (found - highControls));
}

// Takes one character off the front of `text`; nullopt when it is not well-formed.
std::optional<char32_t> takeCharacter(std::string_view& text)
{
    const auto lead = static_cast<std::uint8_t>(text.front());
    const std::size_t length = lead < 0x80 ? 1
        : lead < 0xC2                      ? 0
        : lead < 0xE0                      ? 2
        : lead < 0xF0                      ? 3
        : lead < 0xF5                      ? 4
                                           : 0;
    if (length == 0 || text.size() < length) return std::nullopt;
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(text[i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        character = character << 6 | (next & 0x3FU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (character < smallest[length] || character > 0x10FFFF || isSurrogate) return std::nullopt;
    text.remove_prefix(length);
    return character;
}

Bytes utf16Bytes(std::u16string_view text)
{
    Bytes out(2 * text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        putNumber<std::uint16_t>(&out[2 * i], text[i]);
    return out;
}

} // namespace

std::optional<std::u16string> toUtf16(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const auto character = takeCharacter(text);
        if (!character) return std::nullopt;
        if (*character < 0x10000) {
            out += static_cast<char16_t>(*character);
        } else {
            out += static_cast<char16_t>(0xD7C0 + (*character >> 10));
            out += static_cast<char16_t>(0xDC00 + (*character & 0x3FF));
        }
    }
    return out;
}

std::optional<Bytes> encodeText(std::string_view text, JetVersion version)
{
    const auto units = toUtf16(text);
    if (!units) return std::nullopt;
    if (version == JetVersion::Jet4) return utf16Bytes(*units);
    Bytes out;
    out.reserve(units->size());
    for (const auto unit : *units) {
        const auto byte = toCodePage1252(unit);
        if (!byte) return std::nullopt;
        out.push_back(*byte);
    }
    return out;
}

std::optional<Bytes> compressText(std::u16string_view text)
{
    Bytes out{0xFF, 0xFE};
    bool isNarrowRun = true;
    for (const auto unit : text) {
        if ((unit & 0xFF) == 0) return std::nullopt;
        const bool isNarrow = unit < 0x100;
        if (isNarrow != isNarrowRun) out.push_back(0);
        isNarrowRun = isNarrow;
        out.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        if (!isNarrow) out.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    if (out.size() >= 2 * text.size()) return std::nullopt;
    return out;
}

} // namespace vellumo::samples
