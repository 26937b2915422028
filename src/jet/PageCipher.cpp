// SPDX-License-Identifier: MIT
#include "jet/PageCipher.h"

#include "jet/ByteReader.h"

#include <unicode/unistr.h>

// Page 0 of an encrypted file: u16 length at 0x299, and behind it an EncryptionInfo as Office documents have it: u16
// major and u16 minor version, then what these two call for.
namespace vellumo::jet {

namespace {

constexpr std::size_t lengthOffset = 0x299;
constexpr std::uint16_t agileVersion = 4;

std::vector<std::uint8_t> utf16Of(const std::string& text)
{
    const auto units = icu::UnicodeString::fromUTF8(text);
    std::vector<std::uint8_t> bytes;
    for (std::int32_t i = 0; i < units.length(); ++i) {
        bytes.push_back(static_cast<std::uint8_t>(units[i] & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(units[i] >> 8));
    }
    return bytes;
}

} // namespace

std::unique_ptr<PageCipher> openCipher(
    ByteSpan headerPage, std::uint32_t databaseKey, const std::optional<std::string>& password, OpenFailure& failure)
{
    ByteReader reader(headerPage);
    reader.seek(lengthOffset);
    const std::size_t length = reader.number<std::uint16_t>();
    const auto major = reader.number<std::uint16_t>();
    const auto minor = reader.number<std::uint16_t>();
    const auto info = reader.take(length < 4 ? 0 : length - 4);
    const bool isAgile = major == agileVersion && minor == 4;
    const bool isStandard = major >= 2 && major <= 4 && minor == 2;
    failure = OpenFailure::UnknownEncryption;
    if (info.empty() || (!isAgile && !isStandard)) return nullptr;
    failure = OpenFailure::NeedsPassword;
    if (!password) return nullptr;
    const auto open = isAgile ? openAgileCipher : openStandardCipher;
    return open(info, databaseKey, utf16Of(*password), failure);
}

} // namespace vellumo::jet
