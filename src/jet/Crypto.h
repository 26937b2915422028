// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

// Hashes and ciphers, by libgcrypt.
namespace vellumo::jet {

using Key = std::vector<std::uint8_t>;

enum class HashKind : std::uint8_t { Sha1, Sha256, Sha384, Sha512 };

// The hash of the parts joined.
[[nodiscard]] Key hashOf(HashKind kind, std::initializer_list<ByteSpan> parts);
// The SHA-256 of the bytes as 64 hexadecimal digits, small letters. Any thread.
[[nodiscard]] std::string sha256(std::span<const std::byte> bytes);

enum class CipherKind : std::uint8_t { Rc4, AesEcb, AesCbc };

// Decrypts in place. One thread.
class Decryptor {
public:
    explicit Decryptor(CipherKind kind);
    ~Decryptor();
    Decryptor(Decryptor&&) noexcept;
    Decryptor& operator=(Decryptor&&) noexcept;

    // AES wants 16, 24 or 32 bytes, RC4 at least 5. False when the key cannot be used, and from then on below.
    [[nodiscard]] bool setKey(ByteSpan key);
    // AES: `bytes` are whole blocks of 16; `iv` (CBC only) is one. RC4 goes on where it stopped.
    [[nodiscard]] bool decrypt(std::span<std::uint8_t> bytes, ByteSpan iv = {});

private:
    struct Handle;
    std::unique_ptr<Handle> m_handle;
};

} // namespace vellumo::jet
