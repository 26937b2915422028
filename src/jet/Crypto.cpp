// SPDX-License-Identifier: MIT
#include "jet/Crypto.h"

#include "text/Format.h"

#include <gcrypt.h>
#include <optional>

namespace vellumo::jet {

namespace {

// The library wants to be asked for its version before anything else.
void startLibrary()
{
    static const bool isStarted = [] {
        gcry_check_version(nullptr);
        gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
        return true;
    }();
    static_cast<void>(isStarted);
}

int algorithmOf(HashKind kind)
{
    switch (kind) {
    case HashKind::Sha1: return GCRY_MD_SHA1;
    case HashKind::Sha256: return GCRY_MD_SHA256;
    case HashKind::Sha384: return GCRY_MD_SHA384;
    case HashKind::Sha512: break;
    }
    return GCRY_MD_SHA512;
}

int aesOf(std::size_t keySize)
{
    switch (keySize) {
    case 16: return GCRY_CIPHER_AES128;
    case 24: return GCRY_CIPHER_AES192;
    case 32: return GCRY_CIPHER_AES256;
    default: return GCRY_CIPHER_NONE;
    }
}

} // namespace

Key hashOf(HashKind kind, std::initializer_list<ByteSpan> parts)
{
    startLibrary();
    const auto algorithm = algorithmOf(kind);
    std::vector<gcry_buffer_t> buffers;
    for (const auto part : parts) {
        gcry_buffer_t buffer{};
        buffer.len = part.size();
        buffer.data = const_cast<std::uint8_t*>(part.data()); // only read
        buffers.push_back(buffer);
    }
    Key digest(gcry_md_get_algo_dlen(algorithm));
    gcry_md_hash_buffers(algorithm, 0, digest.data(), buffers.data(), static_cast<int>(buffers.size()));
    return digest;
}

std::string sha256(std::span<const std::byte> bytes)
{
    const auto digest = hashOf(HashKind::Sha256, {{reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}});
    std::string digits(2 * digest.size(), '\0');
    toHex(digits.data(), digits.size(), digest.data(), digest.size());
    return digits;
}

struct Decryptor::Handle {
    explicit Handle(CipherKind cipherKind)
        : kind(cipherKind)
    {
    }
    ~Handle() { close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    void close()
    {
        if (isOpen) gcry_cipher_close(cipher);
        isOpen = false;
    }

    CipherKind kind;
    gcry_cipher_hd_t cipher{};
    bool isOpen = false;
};

Decryptor::Decryptor(CipherKind kind)
    : m_handle(std::make_unique<Handle>(kind))
{
    startLibrary();
}

Decryptor::~Decryptor() = default;
Decryptor::Decryptor(Decryptor&&) noexcept = default;
Decryptor& Decryptor::operator=(Decryptor&&) noexcept = default;

bool Decryptor::setKey(ByteSpan key)
{
    auto& handle = *m_handle;
    handle.close();
    const bool isRc4 = handle.kind == CipherKind::Rc4;
    const auto algorithm = isRc4 ? GCRY_CIPHER_ARCFOUR : aesOf(key.size());
    const auto mode = isRc4                 ? GCRY_CIPHER_MODE_STREAM
        : handle.kind == CipherKind::AesEcb ? GCRY_CIPHER_MODE_ECB
                                            : GCRY_CIPHER_MODE_CBC;
    if (algorithm == GCRY_CIPHER_NONE || gcry_cipher_open(&handle.cipher, algorithm, mode, 0) != 0) return false;
    handle.isOpen = true;
    // A key that the library calls weak is still the one that the file was encrypted with.
    const auto error = gcry_err_code(gcry_cipher_setkey(handle.cipher, key.data(), key.size()));
    return error == 0 || error == GPG_ERR_WEAK_KEY;
}

bool Decryptor::decrypt(std::span<std::uint8_t> bytes, ByteSpan iv)
{
    auto& handle = *m_handle;
    if (!handle.isOpen) return false;
    if (!iv.empty() && gcry_cipher_setiv(handle.cipher, iv.data(), iv.size()) != 0) return false;
    return gcry_cipher_decrypt(handle.cipher, bytes.data(), bytes.size(), nullptr, 0) == 0;
}

} // namespace vellumo::jet
