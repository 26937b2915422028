// SPDX-License-Identifier: MIT
#include "jet/ByteReader.h"
#include "jet/Crypto.h"
#include "jet/PageCipher.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

// "Agile" encryption of Office documents: u32 0x40, then an XML document with the elements keyData, which tells how the
// pages are encrypted, and encryptedKey, which holds their key, encrypted with one made of the password.
namespace vellumo::jet {

namespace {

constexpr std::size_t xmlOffset = 4;
constexpr std::size_t aesBlock = 16;
constexpr std::uint32_t mostSpins = 10'000'000; // a hundred times what Office writes
constexpr std::uint8_t keyFiller = 0x36;
// What the password's key is mixed with for each of its uses.
constexpr std::array<std::uint8_t, 8> verifierBlock{0xFE, 0xA7, 0xD2, 0x76, 0x3B, 0x4B, 0x9E, 0x79};
constexpr std::array<std::uint8_t, 8> verifierHashBlock{0xD7, 0xAA, 0x0F, 0x6D, 0x30, 0x61, 0x34, 0x4E};
constexpr std::array<std::uint8_t, 8> pageKeyBlock{0x14, 0x6E, 0x0B, 0xE7, 0xAB, 0xAC, 0xD0, 0xD6};

ByteSpan bytesOf(const std::uint32_t& number)
{
    return {reinterpret_cast<const std::uint8_t*>(&number), sizeof number};
}

// The attributes of the first element of this local name, as one text; "" when there is none.
std::string_view elementOf(std::string_view xml, std::string_view name)
{
    for (auto open = xml.find('<'); open != std::string_view::npos; open = xml.find('<', open + 1)) {
        auto tag = xml.substr(open + 1);
        tag = tag.substr(0, tag.find('>'));
        const auto space = tag.find_first_of(" \t\r\n/");
        auto tagName = tag.substr(0, space);
        if (const auto colon = tagName.find(':'); colon != std::string_view::npos) tagName = tagName.substr(colon + 1);
        if (tagName == name) return tag.substr(std::min(space, tag.size()));
    }
    return {};
}

std::string_view attributeOf(std::string_view attributes, std::string_view name)
{
    for (auto at = attributes.find(name); at != std::string_view::npos; at = attributes.find(name, at + 1)) {
        const auto rest = attributes.substr(at + name.size());
        const bool isWhole = at > 0 && attributes[at - 1] <= ' ';
        if (!isWhole || !rest.starts_with("=\"")) continue;
        const auto value = rest.substr(2);
        return value.substr(0, value.find('"'));
    }
    return {};
}

std::uint32_t numberOf(std::string_view text)
{
    std::uint32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::vector<std::uint8_t> fromBase64(std::string_view text)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<std::uint8_t> bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const auto digit = digits.find(c);
        if (digit == std::string_view::npos) continue; // padding and white space
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<std::uint8_t>(bits >> count));
    }
    return bytes;
}

// What both elements tell.
struct Scheme {
    std::vector<std::uint8_t> salt;
    HashKind hash = HashKind::Sha1;
    std::size_t keySize = 0; // bytes
    bool isKnown = false;
};

Scheme schemeOf(std::string_view attributes)
{
    constexpr std::pair<std::string_view, HashKind> hashes[] = {{"SHA1", HashKind::Sha1}, {"SHA-1", HashKind::Sha1},
        {"SHA256", HashKind::Sha256}, {"SHA384", HashKind::Sha384}, {"SHA512", HashKind::Sha512}};
    Scheme scheme;
    scheme.salt = fromBase64(attributeOf(attributes, "saltValue"));
    scheme.keySize = numberOf(attributeOf(attributes, "keyBits")) / 8;
    const auto* hash = std::ranges::find(
        hashes, attributeOf(attributes, "hashAlgorithm"), &std::pair<std::string_view, HashKind>::first);
    if (hash != std::end(hashes)) scheme.hash = hash->second;
    const bool isAes = scheme.keySize == 16 || scheme.keySize == 24 || scheme.keySize == 32;
    scheme.isKnown = hash != std::end(hashes) && isAes && scheme.salt.size() >= aesBlock
        && attributeOf(attributes, "cipherAlgorithm") == "AES"
        && attributeOf(attributes, "cipherChaining") == "ChainingModeCBC"
        && numberOf(attributeOf(attributes, "blockSize")) == aesBlock;
    return scheme;
}

class AgileCipher : public PageCipher {
public:
    AgileCipher(Scheme pages, Key key, std::uint32_t databaseKey)
        : m_pages(std::move(pages))
        , m_key(std::move(key))
        , m_databaseKey(databaseKey)
        , m_isReady(m_decryptor.setKey(m_key))
    {
    }
    bool decrypt(std::uint32_t number, std::span<std::uint8_t> page) override
    {
        const std::uint32_t block = m_databaseKey ^ number;
        const auto iv = hashOf(m_pages.hash, {m_pages.salt, bytesOf(block)});
        return m_isReady && m_decryptor.decrypt(page, ByteSpan(iv).first(aesBlock));
    }
    [[nodiscard]] std::unique_ptr<PageCipher> clone() const override
    {
        return std::make_unique<AgileCipher>(m_pages, m_key, m_databaseKey);
    }

private:
    Scheme m_pages;
    Key m_key;
    std::uint32_t m_databaseKey;
    Decryptor m_decryptor{CipherKind::AesCbc};
    bool m_isReady;
};

// What the password makes of the encrypted values of encryptedKey.
class PasswordKey {
public:
    PasswordKey(const Scheme& scheme, ByteSpan password, std::uint32_t spins)
        : m_scheme(scheme)
        , m_hash(hashOf(scheme.hash, {scheme.salt, password}))
    {
        for (std::uint32_t i = 0; i < spins; ++i)
            m_hash = hashOf(scheme.hash, {bytesOf(i), m_hash});
    }
    // Empty when the value is no whole number of blocks.
    [[nodiscard]] Key open(ByteSpan block, std::vector<std::uint8_t> value) const
    {
        auto key = hashOf(m_scheme.hash, {m_hash, block});
        key.resize(m_scheme.keySize, keyFiller);
        Decryptor decryptor(CipherKind::AesCbc);
        const bool isOpen = decryptor.setKey(key) && value.size() % aesBlock == 0
            && decryptor.decrypt(value, ByteSpan(m_scheme.salt).first(aesBlock));
        return isOpen ? value : Key();
    }

private:
    const Scheme& m_scheme;
    Key m_hash;
};

} // namespace

std::unique_ptr<PageCipher> openAgileCipher(
    ByteSpan info, std::uint32_t databaseKey, ByteSpan password, OpenFailure& failure)
{
    failure = OpenFailure::UnknownEncryption;
    if (info.size() < xmlOffset) return nullptr;
    const auto content = info.subspan(xmlOffset);
    const std::string_view xml(reinterpret_cast<const char*>(content.data()), content.size());
    const auto keyElement = elementOf(xml, "encryptedKey");
    auto pages = schemeOf(elementOf(xml, "keyData"));
    const auto scheme = schemeOf(keyElement);
    const auto spins = numberOf(attributeOf(keyElement, "spinCount"));
    if (!pages.isKnown || !scheme.isKnown || spins > mostSpins) return nullptr;

    const auto value = [&](std::string_view name) { return fromBase64(attributeOf(keyElement, name)); };
    const PasswordKey passwordKey(scheme, password, spins);
    const auto verifier = passwordKey.open(verifierBlock, value("encryptedVerifierHashInput"));
    const auto verifierHash = passwordKey.open(verifierHashBlock, value("encryptedVerifierHashValue"));
    auto pageKey = passwordKey.open(pageKeyBlock, value("encryptedKeyValue"));
    const auto expected = hashOf(scheme.hash, {verifier});
    if (verifier.empty() || pageKey.size() < pages.keySize || verifierHash.size() < expected.size()) return nullptr;
    failure = OpenFailure::WrongPassword;
    if (!std::equal(expected.begin(), expected.end(), verifierHash.begin())) return nullptr;
    pageKey.resize(pages.keySize);
    return std::make_unique<AgileCipher>(std::move(pages), std::move(pageKey), databaseKey);
}

} // namespace vellumo::jet
