// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Rc4.h"

#include <cstdint>
#include <gcrypt.h>
#include <string>

// Files of Access 2007, made of one of Access 2000 to 2003, whose pages they share.
namespace vellumo::test {

inline std::string newerFile(std::string jet4)
{
    jet4.replace(4, 16, std::string("Standard ACE DB\0", 16));
    jet4[0x14] = 2;
    return jet4;
}

// Encrypted with RC4 by 128 bits; `password` is ASCII.
inline std::string encryptedFile(const std::string& jet4, const std::string& password)
{
    constexpr std::uint32_t databaseKey = 0xA0B368CF;
    const auto u32 = [](std::uint32_t value) {
        std::string bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(value >> shift);
        return bytes;
    };
    const auto sha1 = [](const std::string& bytes) {
        std::string digest(20, '\0');
        gcry_md_hash_buffer(GCRY_MD_SHA1, digest.data(), bytes.data(), bytes.size());
        return digest;
    };
    const auto rc4 = [](std::string bytes, const std::string& key) {
        const auto* keyBytes = reinterpret_cast<const std::uint8_t*>(key.data());
        samples::applyRc4({reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}, {keyBytes, key.size()});
        return bytes;
    };
    const std::string salt(16, 's');
    std::string base = salt;
    for (const char c : password)
        base.append(1, c).append(1, '\0');
    base = sha1(base);
    const auto key = [&](std::uint32_t block) { return sha1(base + u32(block)).substr(0, 16); };

    const std::string verifier(16, 'v');
    const auto locked = rc4(verifier + sha1(verifier), key(0));
    const auto header = u32(4) + u32(0) + u32(0x6801) + u32(0x8004) + u32(128) + u32(1) + std::string(14, '\0');
    const auto info = u32(2 | 2 << 16) + u32(0) + u32(static_cast<std::uint32_t>(header.size())) + header + u32(16)
        + salt + locked.substr(0, 16) + u32(20) + locked.substr(16);
    auto file = newerFile(jet4);
    for (std::size_t i = 0; i < 4; ++i)
        file[0x3E + i] = static_cast<char>(file[0x3E + i] ^ u32(databaseKey)[i]); // it was 0 behind the header's mask
    file.replace(0x299, 2, u32(static_cast<std::uint32_t>(info.size())).substr(0, 2));
    file.replace(0x29B, info.size(), info);
    for (std::uint32_t page = 1; page * 4096 < file.size(); ++page)
        file.replace(page * 4096, 4096, rc4(file.substr(page * 4096, 4096), key(databaseKey ^ page)));
    return file;
}

} // namespace vellumo::test
