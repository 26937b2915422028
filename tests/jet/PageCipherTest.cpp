// SPDX-License-Identifier: MIT
#include "jet/PageCipher.h"

#include <gcrypt.h>
#include <gtest/gtest.h>
#include <numeric>

namespace vellumo::jet {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t databaseKey = 0xA0B368CF;
constexpr std::uint32_t pageNumber = 2;
const Bytes password{'S', 0, 'e', 0, 's', 0, 'a', 0, 'm', 0};

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes u32(std::uint32_t value)
{
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
        static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
}

Bytes fromHex(std::string_view text)
{
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
    return bytes;
}

Bytes counting(std::size_t size, std::uint8_t first = 0)
{
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

Bytes hashed(int algorithm, const Bytes& bytes)
{
    Bytes digest(gcry_md_get_algo_dlen(algorithm));
    gcry_md_hash_buffer(algorithm, digest.data(), bytes.data(), bytes.size());
    return digest;
}

// Encrypts; several texts go through one stream.
class Encryptor {
public:
    Encryptor(int algorithm, int mode, const Bytes& key, const Bytes& iv = {})
    {
        gcry_check_version(nullptr);
        EXPECT_EQ(gcry_cipher_open(&m_handle, algorithm, mode, 0), 0U);
        EXPECT_EQ(gcry_cipher_setkey(m_handle, key.data(), key.size()), 0U);
        if (!iv.empty()) {
            EXPECT_EQ(gcry_cipher_setiv(m_handle, iv.data(), iv.size()), 0U);
        }
    }
    ~Encryptor() { gcry_cipher_close(m_handle); }
    Encryptor(const Encryptor&) = delete;
    Encryptor& operator=(const Encryptor&) = delete;
    Bytes operator()(Bytes text)
    {
        EXPECT_EQ(gcry_cipher_encrypt(m_handle, text.data(), text.size(), nullptr, 0), 0U);
        return text;
    }

private:
    gcry_cipher_hd_t m_handle{};
};

std::string base64(const Bytes& bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    std::uint32_t bits = 0;
    int count = 0;
    for (const auto byte : bytes) {
        bits = bits << 8 | byte;
        for (count += 8; count >= 6; count -= 6)
            text += digits[bits >> (count - 6) & 63];
    }
    if (count > 0) text += digits[bits << (6 - count) & 63];
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

// Page 0 with this description of an encryption.
Bytes headerWith(std::uint16_t major, std::uint16_t minor, const Bytes& info)
{
    Bytes page(4096);
    const auto stored = u32(static_cast<std::uint32_t>(info.size() + 4)) + u32(major | minor << 16U) + info;
    std::copy(stored.begin(), stored.begin() + 2, page.begin() + 0x299);
    std::copy(stored.begin() + 4, stored.end(), page.begin() + 0x29B);
    return page;
}

struct Encrypted {
    Bytes header;
    Bytes page;
};

// The expected keys were made by another program from the published description.
Encrypted agile(int hash, const char* hashName, const char* pageKeyHex, const char* ivHex, const Bytes& plain)
{
    const auto salt = counting(16);
    auto spun = hashed(hash, salt + password);
    for (std::uint32_t i = 0; i < 100000; ++i)
        spun = hashed(hash, u32(i) + spun);
    const auto expectedKey = fromHex(pageKeyHex);
    const auto size = expectedKey.size();
    const auto key = [&](const char* block) {
        auto made = hashed(hash, spun + fromHex(block));
        made.resize(size, 0x36);
        return made;
    };
    EXPECT_EQ(key("146e0be7abacd0d6"), expectedKey) << hashName;
    const auto aes = size == 16 ? GCRY_CIPHER_AES128 : GCRY_CIPHER_AES256;
    const auto locked = [&](const Bytes& with, const Bytes& value) {
        return base64(Encryptor(aes, GCRY_CIPHER_MODE_CBC, with, salt)(value));
    };
    const auto verifier = counting(16, 100);
    auto verifierHash = hashed(hash, verifier);
    verifierHash.resize((verifierHash.size() + 15) / 16 * 16);
    const auto pageKey = counting(size, 50);
    const auto scheme = " saltSize=\"16\" blockSize=\"16\" keyBits=\"" + std::to_string(8 * size)
        + "\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"" + hashName
        + "\" saltValue=\"" + base64(salt) + "\"";
    const auto xml = "<?xml version=\"1.0\"?><encryption><keyData" + scheme
        + "/><keyEncryptors><keyEncryptor><p:encryptedKey spinCount=\"100000\"" + scheme
        + " encryptedVerifierHashInput=\"" + locked(key("fea7d2763b4b9e79"), verifier)
        + "\" encryptedVerifierHashValue=\"" + locked(key("d7aa0f6d3061344e"), verifierHash) + "\" encryptedKeyValue=\""
        + locked(expectedKey, pageKey) + "\"/></keyEncryptor></keyEncryptors></encryption>";
    return {headerWith(4, 4, u32(0x40) + Bytes(xml.begin(), xml.end())),
        Encryptor(aes, GCRY_CIPHER_MODE_CBC, pageKey, fromHex(ivHex))(plain)};
}

Encrypted standard(std::uint32_t algorithm, std::uint32_t keyBits, std::uint32_t spins, const Bytes& plain,
    const char* pageKeyHex = nullptr)
{
    const bool isRc4 = algorithm == 0x6801;
    const auto salt = counting(16);
    auto base = hashed(GCRY_MD_SHA1, salt + password);
    for (std::uint32_t i = 0; i < spins; ++i)
        base = hashed(GCRY_MD_SHA1, u32(i) + base);
    const auto key = [&](std::uint32_t block) {
        auto made = hashed(GCRY_MD_SHA1, base + u32(block));
        if (!isRc4) {
            made.resize(64);
            auto inner = made, outer = made;
            for (auto& byte : inner)
                byte ^= 0x36;
            for (auto& byte : outer)
                byte ^= 0x5C;
            made = hashed(GCRY_MD_SHA1, inner) + hashed(GCRY_MD_SHA1, outer);
        }
        made.resize(keyBits / 8);
        if (isRc4) made.resize(16);
        return made;
    };
    if (pageKeyHex != nullptr) {
        EXPECT_EQ(key(databaseKey ^ pageNumber), fromHex(pageKeyHex));
    }
    const auto cipher = isRc4 ? GCRY_CIPHER_ARCFOUR : GCRY_CIPHER_AES128;
    const auto mode = isRc4 ? GCRY_CIPHER_MODE_STREAM : GCRY_CIPHER_MODE_ECB;
    const auto verifier = counting(16, 100);
    auto verifierHash = hashed(GCRY_MD_SHA1, verifier);
    if (!isRc4) verifierHash.resize(32);
    Encryptor lock(cipher, mode, key(0));
    const auto header = u32(4) + u32(0) + u32(algorithm) + u32(0x8004) + u32(keyBits) + u32(1) + Bytes(8) + Bytes(6);
    const auto lockedVerifier = lock(verifier);
    const auto info = u32(0) + u32(static_cast<std::uint32_t>(header.size())) + header + u32(16) + salt + lockedVerifier
        + u32(20) + lock(verifierHash);
    return {headerWith(3, 2, info), Encryptor(cipher, mode, key(databaseKey ^ pageNumber))(plain)};
}

TEST(PageCipher, OpensEveryWayOfEncryptionWithItsPasswordOnly)
{
    const auto plain = counting(4096);
    const struct {
        const char* name;
        Encrypted file;
    } cases[] = {
        {"agile, SHA-512",
            agile(GCRY_MD_SHA512, "SHA512", "88f55358a20b73d602d1d15277251c7f04028a803e92d16224b8e0b552eca3f1",
                "01010c77d957f404f06542241da4b1d4", plain)},
        {"agile, SHA-1",
            agile(GCRY_MD_SHA1, "SHA1", "b34e97ee0206d03fc92cad9caab72fc4", "2fa814a70ca8ed55ec397c2fa7498125", plain)},
        {"RC4, 128 bits", standard(0x6801, 128, 0, plain, "762d3894a90e8ca95f3e84ccdb2a7cbf")},
        {"RC4, 40 bits", standard(0x6801, 40, 0, plain)},
        {"AES, as Office does it", standard(0x660E, 128, 50000, plain, "6ff7ac53b103523016161ea504229399")},
        {"AES, as Access does it", standard(0x660E, 128, 0, plain, "ea7b902709960f6e8e1e8141c4497aa7")},
    };
    for (const auto& test : cases) {
        OpenFailure failure{};
        const auto cipher = openCipher(test.file.header, databaseKey, "Sesam", failure);
        ASSERT_TRUE(cipher) << test.name;
        for (const auto& reader : {cipher->clone(), cipher->clone()}) {
            auto page = test.file.page;
            EXPECT_TRUE(reader->decrypt(pageNumber, page)) << test.name;
            EXPECT_EQ(page, plain) << test.name;
        }
        EXPECT_FALSE(openCipher(test.file.header, databaseKey, "sesam", failure)) << test.name;
        EXPECT_EQ(failure, OpenFailure::WrongPassword) << test.name;
        EXPECT_FALSE(openCipher(test.file.header, databaseKey, std::nullopt, failure)) << test.name;
        EXPECT_EQ(failure, OpenFailure::NeedsPassword) << test.name;
    }
}

TEST(PageCipher, ADamagedDescriptionIsUnknown)
{
    const auto good = standard(0x6801, 128, 0, Bytes(4096)).header;
    const struct {
        const char* name;
        std::size_t offset;
        std::uint8_t value;
    } cases[] = {
        {"no length", 0x299, 0},
        {"length past the page", 0x29A, 0xFF},
        {"another version", 0x29D, 3},
        {"header longer than the rest", 0x2A4, 0xFF},
        {"another cipher", 0x2AF, 0x02},
        {"another hash", 0x2B3, 0x03},
        {"key of no bits", 0x2B7, 0},
        {"another length of the salt", 0x2CD, 15},
    };
    for (const auto& test : cases) {
        auto header = good;
        header[test.offset] = test.value;
        OpenFailure failure{};
        EXPECT_FALSE(openCipher(header, databaseKey, "Sesam", failure)) << test.name;
        EXPECT_EQ(failure, OpenFailure::UnknownEncryption) << test.name;
    }
}

// The length counts: what lies behind it belongs to nobody, even if it is a description that could be read.
TEST(PageCipher, AnAgileDescriptionEndsWhereItsLengthSays)
{
    const auto good =
        agile(GCRY_MD_SHA1, "SHA1", "b34e97ee0206d03fc92cad9caab72fc4", "2fa814a70ca8ed55ec397c2fa7498125", Bytes(4096))
            .header;
    const auto length = static_cast<std::size_t>(good[0x299] | good[0x29A] << 8);
    for (const std::size_t shorter : {std::size_t{3}, std::size_t{4}, std::size_t{7}, std::size_t{8}, length - 70}) {
        auto header = good;
        header[0x299] = static_cast<std::uint8_t>(shorter);
        header[0x29A] = static_cast<std::uint8_t>(shorter >> 8);
        OpenFailure failure{};
        EXPECT_FALSE(openCipher(header, databaseKey, "Sesam", failure)) << shorter;
        EXPECT_EQ(failure, OpenFailure::UnknownEncryption) << shorter;
    }
}

} // namespace
} // namespace vellumo::jet
