// SPDX-License-Identifier: MIT
#include "text/TextEncoding.h"

#include "text/Ascii.h"
#include "text/Messages.h"

#include <algorithm>
#include <array>
#include <set>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

namespace vellumo {

namespace {

struct CommonEncoding {
    std::uint32_t identifier;
    const char* registeredName;
    const char* nameKey;
};

// The numbers are stored in users' settings and scripts: add, never change.
constexpr CommonEncoding commonEncodings[] = {
    {encodingASCII, "US-ASCII", messageKey("Western (ASCII)")},
    {3, "EUC-JP", messageKey("Japanese (EUC)")},
    {encodingUTF8, "UTF-8", messageKey("Unicode (UTF-8)")},
    {encodingISOLatin1, "ISO-8859-1", messageKey("Western (ISO Latin 1)")},
    {8, "Shift_JIS", messageKey("Japanese (Shift JIS)")},
    {9, "ISO-8859-2", messageKey("Central European (ISO Latin 2)")},
    {encodingUTF16, "UTF-16", messageKey("Unicode (UTF-16)")},
    {11, "windows-1251", messageKey("Cyrillic (Windows)")},
    {encodingWindows1252, "windows-1252", messageKey("Western (Windows Latin 1)")},
    {13, "windows-1253", messageKey("Greek (Windows)")},
    {14, "windows-1254", messageKey("Turkish (Windows Latin 5)")},
    {15, "windows-1250", messageKey("Central European (Windows Latin 2)")},
    {21, "ISO-2022-JP", messageKey("Japanese (ISO 2022-JP)")},
    {30, "macintosh", messageKey("Western (Mac OS Roman)")},
    {100, "UTF-16BE", messageKey("Unicode (UTF-16BE)")},
    {101, "UTF-16LE", messageKey("Unicode (UTF-16LE)")},
    {102, "UTF-32", messageKey("Unicode (UTF-32)")},
    {103, "UTF-32BE", messageKey("Unicode (UTF-32BE)")},
    {104, "UTF-32LE", messageKey("Unicode (UTF-32LE)")},
    {105, "windows-1255", messageKey("Hebrew (Windows)")},
    {106, "windows-1256", messageKey("Arabic (Windows)")},
    {107, "windows-1257", messageKey("Baltic (Windows)")},
    {108, "windows-1258", messageKey("Vietnamese (Windows)")},
    {110, "ISO-8859-3", messageKey("South European (ISO Latin 3)")},
    {111, "ISO-8859-4", messageKey("Baltic (ISO Latin 4)")},
    {112, "ISO-8859-5", messageKey("Cyrillic (ISO 8859-5)")},
    {113, "ISO-8859-6", messageKey("Arabic (ISO 8859-6)")},
    {114, "ISO-8859-7", messageKey("Greek (ISO 8859-7)")},
    {115, "ISO-8859-8", messageKey("Hebrew (ISO 8859-8)")},
    {116, "ISO-8859-9", messageKey("Turkish (ISO Latin 5)")},
    {117, "ISO-8859-10", messageKey("Nordic (ISO Latin 6)")},
    {118, "ISO-8859-13", messageKey("Baltic (ISO Latin 7)")},
    {119, "ISO-8859-14", messageKey("Celtic (ISO Latin 8)")},
    {120, "ISO-8859-15", messageKey("Western (ISO Latin 9)")},
    {130, "KOI8-R", messageKey("Cyrillic (KOI8-R)")},
    {131, "KOI8-U", messageKey("Ukrainian (KOI8-U)")},
    {132, "IBM866", messageKey("Cyrillic (DOS)")},
    {133, "IBM437", messageKey("Latin-US (DOS)")},
    {134, "IBM850", messageKey("Western (DOS Latin 1)")},
    {135, "IBM852", messageKey("Central European (DOS Latin 2)")},
    {140, "GB2312", messageKey("Chinese (GB 2312)")},
    {141, "GBK", messageKey("Chinese (GBK)")},
    {142, "GB18030", messageKey("Chinese (GB 18030)")},
    {143, "Big5", messageKey("Traditional Chinese (Big 5)")},
    {144, "EUC-KR", messageKey("Korean (EUC)")},
    {145, "TIS-620", messageKey("Thai (TIS 620)")},
};

bool equalIgnoringCase(std::string_view left, std::string_view right)
{
    const auto lower = [](char letter) { return asciiLower(letter); };
    return std::ranges::equal(left, right, {}, lower, lower);
}

// FNV-1a over the lower-case name, in the upper half of the numbers.
std::uint32_t identifierOfName(std::string_view registeredName)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : registeredName)
        hash = (hash ^ static_cast<unsigned char>(asciiLower(c))) * 16777619U;
    return hash | 0x80000000U;
}

TextEncoding describe(std::string_view registeredName)
{
    for (const auto& common : commonEncodings)
        if (equalIgnoringCase(common.registeredName, registeredName))
            return {common.identifier, std::string(registeredName), localized(common.nameKey)};
    return {identifierOfName(registeredName), std::string(registeredName), std::string(registeredName)};
}

// The registered name of a converter or alias; null when it has none.
const char* registeredNameOf(const char* alias)
{
    for (const char* standard : {"MIME", "IANA"}) {
        UErrorCode status = U_ZERO_ERROR;
        const auto* name = ucnv_getStandardName(alias, standard, &status);
        if (U_SUCCESS(status) && name != nullptr) return name;
    }
    return nullptr;
}

std::vector<TextEncoding> listEncodings()
{
    std::vector<TextEncoding> encodings;
    std::set<std::string_view> names;
    for (int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        const auto* name = registeredNameOf(ucnv_getAvailableName(i));
        if (name != nullptr && names.insert(name).second) encodings.push_back(describe(name));
    }
    return encodings;
}

// Null for an identifier that is no encoding.
const TextEncoding* encodingOf(std::uint32_t identifier)
{
    const auto& encodings = availableTextEncodings();
    const auto found = std::ranges::find(encodings, identifier, &TextEncoding::identifier);
    return found == encodings.end() ? nullptr : &*found;
}

// The converter for a registered name; those that would write a byte-order mark are taken by their byte order.
const char* converterName(const std::string& registeredName)
{
    if (registeredName == "UTF-16") return "UTF-16LE";
    if (registeredName == "UTF-32") return "UTF-32LE";
    return registeredName.c_str();
}

// Leaves the error as it is, so that the conversion ends with it. ICU's own stopping callback drops characters that
// Unicode calls ignorable, such as the soft hyphen, without a word.
void stopAtEveryProblem(
    const void*, UConverterFromUnicodeArgs*, const UChar*, int32_t, UChar32, UConverterCallbackReason, UErrorCode*)
{
}

bool isASCII(std::string_view text)
{
    unsigned char seen = 0;
    for (const char c : text)
        seen |= static_cast<unsigned char>(c);
    return seen < 0x80;
}

// The longest start of `text` that is no longer than a segment and does not end inside a character.
std::size_t segmentLength(std::string_view text)
{
    constexpr std::size_t longest = 1 << 16;
    if (text.size() <= longest) return text.size();
    auto length = longest;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return length > 0 ? length : longest;
}

} // namespace

const std::vector<TextEncoding>& availableTextEncodings()
{
    static const auto encodings = listEncodings();
    return encodings;
}

std::string textEncodingName(std::uint32_t identifier)
{
    const auto* encoding = encodingOf(identifier);
    return encoding == nullptr ? std::string() : encoding->name;
}

std::string textEncodingRegisteredName(std::uint32_t identifier)
{
    const auto* encoding = encodingOf(identifier);
    return encoding == nullptr ? std::string() : encoding->registeredName;
}

bool needsByteOrderMark(std::uint32_t identifier)
{
    const auto name = textEncodingRegisteredName(identifier);
    return name == "UTF-16" || name == "UTF-32";
}

std::optional<std::uint32_t> findTextEncoding(std::string_view name)
{
    // A comma begins options of a converter, and the empty name is ICU's default converter.
    if (name.empty()) return std::nullopt;
    for (const auto& encoding : availableTextEncodings())
        if (equalIgnoringCase(encoding.name, name)) return encoding.identifier;
    const auto* registeredName =
        name.find(',') == std::string_view::npos ? registeredNameOf(std::string(name).c_str()) : nullptr;
    return registeredName == nullptr ? std::nullopt : std::optional(describe(registeredName).identifier);
}

void TextEncoder::Close::operator()(UConverter* converter) const { ucnv_close(converter); }

TextEncoder::TextEncoder(Converter converter)
    : m_converter(std::move(converter))
{
    if (!m_converter) return;
    const auto type = ucnv_getType(m_converter.get());
    m_keepsASCII = false;
    // These convert each character by a table and have no states, so that one look at every ASCII character proves
    // what becomes of any ASCII text.
    if (type != UCNV_SBCS && type != UCNV_LATIN_1 && type != UCNV_US_ASCII) return;
    std::string ascii(128, '\0');
    for (std::size_t i = 0; i < ascii.size(); ++i)
        ascii[i] = static_cast<char>(i);
    std::string converted;
    m_keepsASCII = convert(ascii, converted) && converted == ascii;
}

std::optional<TextEncoder> TextEncoder::create(std::uint32_t identifier)
{
    if (identifier == encodingUTF8) return TextEncoder(nullptr);
    const auto* encoding = encodingOf(identifier);
    if (encoding == nullptr) return std::nullopt;
    // Success includes the warning that a name stands for several variants of an encoding.
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(converterName(encoding->registeredName), &status));
    if (U_FAILURE(status)) return std::nullopt;
    ucnv_setFromUCallBack(converter.get(), stopAtEveryProblem, nullptr, nullptr, nullptr, &status);
    ucnv_setFallback(converter.get(), false);
    if (U_FAILURE(status)) return std::nullopt;
    return TextEncoder(std::move(converter));
}

bool TextEncoder::keeps(std::string_view text) const { return !m_converter || (m_keepsASCII && isASCII(text)); }

bool TextEncoder::append(std::string_view text, std::string& out)
{
    if (keeps(text)) {
        out += text;
        return true;
    }
    const auto length = out.size();
    if (convert(text, out)) return true;
    out.resize(length);
    return false;
}

bool TextEncoder::convert(std::string_view text, std::string& out)
{
    ucnv_resetFromUnicode(m_converter.get());
    // One round at least: the end of a text may need bytes of its own.
    for (bool isLast = false; !isLast;) {
        const auto length = segmentLength(text);
        isLast = length == text.size();
        if (!convertSegment(text.substr(0, length), isLast, out)) return false;
        text.remove_prefix(length);
    }
    return true;
}

bool TextEncoder::convertSegment(std::string_view segment, bool isLast, std::string& out)
{
    UErrorCode status = U_ZERO_ERROR;
    int32_t unitCount = 0;
    m_units.resize(segment.size()); // a character never has more UTF-16 units than UTF-8 bytes
    u_strFromUTF8(m_units.data(), static_cast<int32_t>(m_units.size()), &unitCount, segment.data(),
        static_cast<int32_t>(segment.size()), &status);
    if (U_FAILURE(status)) return false;
    const auto* source = m_units.data();
    const auto* sourceEnd = source + unitCount;
    do {
        std::array<char, 4096> bytes;
        auto* target = bytes.data();
        status = U_ZERO_ERROR;
        ucnv_fromUnicode(m_converter.get(), &target, bytes.data() + bytes.size(), &source, sourceEnd, nullptr,
            isLast ? 1 : 0, &status);
        out.append(bytes.data(), target);
    } while (status == U_BUFFER_OVERFLOW_ERROR);
    return U_SUCCESS(status);
}

} // namespace vellumo
