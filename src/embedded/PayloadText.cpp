// SPDX-License-Identifier: MIT
#include "embedded/PayloadText.h"

#include "text/UTF8.h"

#include <algorithm>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace vellumo {

namespace {

enum class Encoding { Utf8, Latin1, Utf16, Utf32, None };

struct Detected {
    Encoding encoding = Encoding::None;
    bool isBigEndian = false;
    std::size_t markBytes = 0;
};

std::string_view asChars(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

// UTF-32 comes first: its little-endian mark begins with that of UTF-16.
Detected detectedByMark(Bytes bytes)
{
    if (bytes.size() >= 4 && u32At(bytes, 0) == 0xFFFE0000) return {Encoding::Utf32, true, 4};
    if (bytes.size() >= 4 && u32At(bytes, 0) == 0x0000FEFF) return {Encoding::Utf32, false, 4};
    if (bytes.size() >= 2 && u16At(bytes, 0) == 0xFFFE) return {Encoding::Utf16, true, 2};
    if (bytes.size() >= 2 && u16At(bytes, 0) == 0xFEFF) return {Encoding::Utf16, false, 2};
    return {};
}

// A byte from 0x80 on counts as a control character: text in an unknown 8-bit encoding would be shown wrong.
bool isPlainText(std::byte byte)
{
    const auto code = std::to_integer<int>(byte);
    return (code >= 32 && code < 128) || (code >= '\t' && code <= '\r');
}

Detected detect(Bytes bytes)
{
    constexpr std::size_t sampleSize = 2000;
    if (const auto marked = detectedByMark(bytes); marked.encoding != Encoding::None) return marked;
    const auto sample = bytes.first(std::min(bytes.size(), sampleSize));
    if (!std::all_of(sample.begin() + 1, sample.end(), isPlainText)) return {};
    return {isWellFormedUTF8(asChars(sample)) ? Encoding::Utf8 : Encoding::Latin1, false, 0};
}

// False for what is no character: a surrogate, or a number beyond the last one.
bool appendUtf8(std::string& out, std::uint32_t character)
{
    if (character > 0x10FFFF || U_IS_SURROGATE(character)) return false;
    char bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    out.append(bytes, length);
    return true;
}

std::optional<std::string> decodeUtf8(Bytes bytes)
{
    if (!isWellFormedUTF8(asChars(bytes))) return std::nullopt;
    return std::string(asChars(bytes));
}

std::string decodeLatin1(Bytes bytes)
{
    std::string out;
    for (const auto byte : bytes)
        appendUtf8(out, std::to_integer<std::uint32_t>(byte));
    return out;
}

std::uint16_t utf16UnitAt(Bytes bytes, std::size_t offset, bool isBigEndian)
{
    const auto unit = u16At(bytes, offset);
    return isBigEndian ? static_cast<std::uint16_t>(unit << 8U | unit >> 8U) : unit;
}

std::optional<std::string> decodeUtf16(Bytes bytes, bool isBigEndian)
{
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        std::uint32_t character = utf16UnitAt(bytes, i, isBigEndian);
        if (U16_IS_LEAD(character) && i + 2 < bytes.size()) {
            const auto trail = utf16UnitAt(bytes, i + 2, isBigEndian);
            if (!U16_IS_TRAIL(trail)) return std::nullopt;
            character = static_cast<std::uint32_t>(U16_GET_SUPPLEMENTARY(character, trail));
            i += 2;
        }
        if (!appendUtf8(out, character)) return std::nullopt;
    }
    return out;
}

std::optional<std::string> decodeUtf32(Bytes bytes, bool isBigEndian)
{
    if (bytes.size() % 4 != 0) return std::nullopt;
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const std::uint32_t first = utf16UnitAt(bytes, i, isBigEndian);
        const std::uint32_t second = utf16UnitAt(bytes, i + 2, isBigEndian);
        if (!appendUtf8(out, isBigEndian ? first << 16U | second : second << 16U | first)) return std::nullopt;
    }
    return out;
}

} // namespace

std::optional<std::string> decodeText(Bytes bytes)
{
    if (bytes.empty()) return std::string();
    const auto detected = detect(bytes);
    const auto text = bytes.subspan(detected.markBytes);
    switch (detected.encoding) {
    case Encoding::Utf8: return decodeUtf8(text);
    case Encoding::Latin1: return decodeLatin1(text);
    case Encoding::Utf16: return decodeUtf16(text, detected.isBigEndian);
    case Encoding::Utf32: return decodeUtf32(text, detected.isBigEndian);
    case Encoding::None: break;
    }
    return std::nullopt;
}

} // namespace vellumo
