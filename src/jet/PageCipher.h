// SPDX-License-Identifier: MIT
#pragma once

#include "jet/OpenFailure.h"
#include "jet/Pages.h"

#include <memory>
#include <optional>
#include <string>

namespace vellumo::jet {

// Decrypts the pages of a file of Access 2007 or later that has a password. One thread.
class PageCipher {
public:
    virtual ~PageCipher() = default;
    // In place; false when the page cannot be decrypted. Page 0 is never encrypted.
    [[nodiscard]] virtual bool decrypt(std::uint32_t number, std::span<std::uint8_t> page) = 0;
    // The same for another thread.
    [[nodiscard]] virtual std::unique_ptr<PageCipher> clone() const = 0;
};

// The cipher that `headerPage` describes, `databaseKey` being its decoded key (not 0). Null, with the reason in
// `failure`, when the password (UTF-8; nullopt: none was given) does not open it or the encryption is not known. Takes
// noticeable time: making a key of a password is slow on purpose.
[[nodiscard]] std::unique_ptr<PageCipher> openCipher(
    ByteSpan headerPage, std::uint32_t databaseKey, const std::optional<std::string>& password, OpenFailure& failure);

// The ways of encryption, for openCipher. `info` is what describes it, without its two version numbers; `password` is
// UTF-16. An unknown or broken description gives UnknownEncryption, a password that is not the right one WrongPassword.
[[nodiscard]] std::unique_ptr<PageCipher> openAgileCipher(
    ByteSpan info, std::uint32_t databaseKey, ByteSpan password, OpenFailure& failure);
[[nodiscard]] std::unique_ptr<PageCipher> openStandardCipher(
    ByteSpan info, std::uint32_t databaseKey, ByteSpan password, OpenFailure& failure);

} // namespace vellumo::jet
