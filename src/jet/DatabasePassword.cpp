// SPDX-License-Identifier: MIT
#include "jet/DatabasePassword.h"

#include "jet/ByteReader.h"
#include "jet/Crypto.h"

#include <span>
#include <vector>

// Layout of the header: from 0x18 on it is encoded with a key that all files share. In it, at 0x42: the password, 20
// bytes of Jet 3, 40 of Jet 4; at 0x72, Jet 4: the date of creation, a double. The bytes of a Jet 4 password are
// combined with those of the date's whole days.
namespace vellumo::jet {

namespace {

constexpr std::size_t encodedStart = 0x18;
constexpr std::size_t encodedSize = 0x80;
constexpr std::size_t passwordOffset = 0x42;
constexpr std::size_t dateOffset = 0x72;
// The four bytes of the key, twice: to the cipher that is the same key, and the library wants a longer one.
constexpr std::uint8_t headerKey[] = {0xC7, 0xDA, 0x39, 0x6B, 0xC7, 0xDA, 0x39, 0x6B};

std::uint32_t wholeDays(double date)
{
    const bool isDate = date > -1e6 && date < 1e7;
    return isDate ? static_cast<std::uint32_t>(static_cast<std::int32_t>(date)) : 0;
}

} // namespace

bool hasDatabasePassword(ByteSpan start, bool isJet3)
{
    Decryptor decryptor(CipherKind::Rc4);
    if (start.size() < encodedStart + encodedSize || !decryptor.setKey(headerKey)) return false;
    std::vector<std::uint8_t> header(start.begin(), start.begin() + encodedStart + encodedSize);
    if (!decryptor.decrypt(std::span(header).subspan(encodedStart))) return false;
    const auto password = std::span(header).subspan(passwordOffset, isJet3 ? 20 : 40);
    const auto days = isJet3 ? 0 : wholeDays(loadNumber<double>(&header[dateOffset]));
    for (std::size_t i = 0; i < password.size(); ++i)
        if (password[i] != static_cast<std::uint8_t>(days >> (i % 4 * 8))) return true;
    return false;
}

} // namespace vellumo::jet
