// SPDX-License-Identifier: MIT
#include "jet/ByteReader.h"
#include "jet/Crypto.h"
#include "jet/PageCipher.h"

#include <algorithm>

// "Standard" encryption of Office documents: u32 flags, u32 length of the header; header: u32 flags, u32 0, u32
// algorithm of the cipher, u32 algorithm of the hash, u32 key bits, u32 provider type, 8 zero bytes, provider name;
// then the verifier: u32 16, salt, encrypted verifier (16 bytes), u32 20, encrypted hash of the verifier (20 bytes,
// with AES 32).
namespace vellumo::jet {

namespace {

constexpr std::uint32_t rc4Algorithm = 0x6801;
constexpr std::uint32_t sha1Algorithm = 0x8004;
constexpr std::size_t saltSize = 16;
constexpr std::size_t verifierSize = 16;
constexpr std::size_t sha1Size = 20;
constexpr std::size_t aesHashSize = 32; // a hash, filled up to whole blocks
constexpr std::size_t shortRc4Key = 5;  // 40 bits: the provider uses 128, the rest zeros
constexpr std::size_t rc4KeySize = 16;
constexpr std::uint32_t officeSpins = 50000;

ByteSpan bytesOf(const std::uint32_t& number)
{
    return {reinterpret_cast<const std::uint8_t*>(&number), sizeof number};
}

struct Info {
    bool isRc4 = false;
    std::size_t keySize = 0; // bytes
    Key salt;
    Key verifier;     // encrypted
    Key verifierHash; // encrypted
    bool isKnown = false;
};

Key keyOf(ByteSpan bytes) { return {bytes.begin(), bytes.end()}; }

Info infoFrom(ByteSpan bytes)
{
    Info info;
    ByteReader reader(bytes);
    reader.skip(4);
    const std::size_t headerSize = reader.number<std::uint32_t>();
    ByteReader header(reader.take(headerSize));
    header.skip(8);
    const auto algorithm = header.number<std::uint32_t>();
    const auto hash = header.number<std::uint32_t>();
    info.keySize = header.number<std::uint32_t>() / 8;
    info.isRc4 = algorithm == rc4Algorithm;
    const bool isAes = algorithm >= 0x660E && algorithm <= 0x6610 && info.keySize == 16 + 8 * (algorithm - 0x660E);
    const bool isRc4KeyGood = info.keySize >= shortRc4Key && info.keySize <= rc4KeySize;
    if (reader.number<std::uint32_t>() != saltSize) return info;
    info.salt = keyOf(reader.take(saltSize));
    info.verifier = keyOf(reader.take(verifierSize));
    if (reader.number<std::uint32_t>() != sha1Size) return info;
    info.verifierHash = keyOf(reader.take(info.isRc4 ? sha1Size : aesHashSize));
    info.isKnown = header.isGood() && reader.isGood() && hash == sha1Algorithm && (info.isRc4 ? isRc4KeyGood : isAes);
    return info;
}

Key rc4Key(const Info& info, ByteSpan passwordHash, std::uint32_t block)
{
    auto key = hashOf(HashKind::Sha1, {passwordHash, bytesOf(block)});
    key.resize(info.keySize);
    if (info.keySize == shortRc4Key) key.resize(rc4KeySize);
    return key;
}

// The key derivation of the provider: a hash of the hash xored with one constant, then with another, joined.
Key aesKey(const Info& info, ByteSpan passwordHash, std::uint32_t block)
{
    constexpr std::size_t paddedSize = 64;
    auto padded = hashOf(HashKind::Sha1, {passwordHash, bytesOf(block)});
    padded.resize(paddedSize);
    Key key;
    for (const std::uint8_t mask : {0x36, 0x5C}) {
        auto masked = padded;
        for (auto& byte : masked)
            byte ^= mask;
        const auto half = hashOf(HashKind::Sha1, {masked});
        key.insert(key.end(), half.begin(), half.end());
    }
    key.resize(info.keySize);
    return key;
}

class StandardCipher : public PageCipher {
public:
    StandardCipher(const Info& info, Key passwordHash, std::uint32_t databaseKey)
        : m_info(info)
        , m_passwordHash(std::move(passwordHash))
        , m_databaseKey(databaseKey)
        , m_decryptor(info.isRc4 ? CipherKind::Rc4 : CipherKind::AesEcb)
    {
    }
    bool decrypt(std::uint32_t number, std::span<std::uint8_t> page) override
    {
        return setKey(m_databaseKey ^ number) && m_decryptor.decrypt(page);
    }
    [[nodiscard]] std::unique_ptr<PageCipher> clone() const override
    {
        return std::make_unique<StandardCipher>(m_info, m_passwordHash, m_databaseKey);
    }
    // Whether the password is the one that the verifier was encrypted with.
    [[nodiscard]] bool isPasswordRight()
    {
        auto verifier = m_info.verifier;
        auto hash = m_info.verifierHash;
        // With RC4 one stream runs through both.
        if (!setKey(0) || !m_decryptor.decrypt(verifier) || !m_decryptor.decrypt(hash)) return false;
        const auto expected = hashOf(HashKind::Sha1, {verifier});
        return std::equal(expected.begin(), expected.end(), hash.begin());
    }

private:
    [[nodiscard]] bool setKey(std::uint32_t block)
    {
        return m_decryptor.setKey((m_info.isRc4 ? rc4Key : aesKey)(m_info, m_passwordHash, block));
    }

    Info m_info;
    Key m_passwordHash;
    std::uint32_t m_databaseKey;
    Decryptor m_decryptor;
};

} // namespace

std::unique_ptr<PageCipher> openStandardCipher(
    ByteSpan infoBytes, std::uint32_t databaseKey, ByteSpan password, OpenFailure& failure)
{
    const auto info = infoFrom(infoBytes);
    failure = OpenFailure::UnknownEncryption;
    if (!info.isKnown) return nullptr;
    failure = OpenFailure::WrongPassword;
    auto hash = hashOf(HashKind::Sha1, {info.salt, password});
    // Access leaves out what Office does to slow down guessing; a file made by other means need not.
    for (const auto spins : {0U, info.isRc4 ? 0U : officeSpins}) {
        for (std::uint32_t i = 0; i < spins; ++i)
            hash = hashOf(HashKind::Sha1, {bytesOf(i), hash});
        auto cipher = std::make_unique<StandardCipher>(info, hash, databaseKey);
        if (cipher->isPasswordRight()) return cipher;
    }
    return nullptr;
}

} // namespace vellumo::jet
