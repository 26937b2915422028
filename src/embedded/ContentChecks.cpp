#include "embedded/ContentChecks.h"

#include "embedded/OleStream.h"
#include "embedded/PayloadText.h"
#include "embedded/PictureFiles.h"
#include "embedded/ZipNames.h"
#include "text/Ascii.h"
#include "text/UTF8.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n\f\v";

std::string beginningOf(std::string_view text)
{
    constexpr std::size_t lookedAt = 4096;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    return asciiLower(text.substr(0, lookedAt));
}

bool isTextByte(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return (code >= 32 && code != 127) || whiteSpace.find(c) != std::string_view::npos;
}

// Bytes of the sound frame whose header begins at `offset`; 0 when none does. MPEG 1 (version 3), 2 and 2.5 (0).
std::size_t soundFrameSize(Bytes bytes, std::size_t offset)
{
    constexpr unsigned kiloBits1[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    constexpr unsigned kiloBits2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
    constexpr unsigned hertz[] = {44100, 48000, 32000, 0};
    if (offset > bytes.size() || bytes.size() - offset < 4) return 0;
    const auto second = std::to_integer<unsigned>(bytes[offset + 1]);
    const auto third = std::to_integer<unsigned>(bytes[offset + 2]);
    const auto version = second >> 3U & 3U;
    if (bytes[offset] != std::byte{0xFF} || (second & 0xE6U) != 0xE2 || version == 1) return 0;
    const auto rate = hertz[third >> 2U & 3U] >> (version == 3 ? 0U : version == 2 ? 1U : 2U);
    const auto kiloBits = (version == 3 ? kiloBits1 : kiloBits2)[third >> 4U];
    if (rate == 0 || kiloBits == 0) return 0;
    return (version == 3 ? 144000U : 72000U) * kiloBits / rate + (third >> 1U & 1U);
}

} // namespace

Content::Content(Bytes content)
    : bytes(content)
    , text(reinterpret_cast<const char*>(content.data()), content.size())
    , beginning(beginningOf(text))
{
    if (!text.starts_with(zipMark)) return;
    zipNames = vellumo::zipNames(bytes);
    mimeType = zipMimeType(bytes);
}

bool holds(const Content& content, std::string_view inside)
{
    if (content.text.starts_with(compoundFileMark)) return hasOleEntry(content.bytes, inside);
    if (!content.text.starts_with(zipMark))
        return content.text.size() > 8 && content.text.substr(8).starts_with(inside);
    return content.mimeType.starts_with(inside)
        || std::ranges::any_of(content.zipNames, [&](auto name) { return name.starts_with(inside); });
}

bool isBmp(const Content& content) { return isBitmapFile(content.bytes); }

bool isMetafileWithoutMark(const Content& content) { return isBareMetafile(content.bytes); }

// 2 u16 kind, 4 u16 number of pictures; then 16 bytes a picture, the last 8 of them its length and where it begins.
// Other formats begin much the same.
bool isIcon(const Content& content)
{
    const auto bytes = content.bytes;
    if (bytes.size() < 22 || u16At(bytes, 4) == 0) return false;
    const auto length = u32At(bytes, 14);
    const auto start = u32At(bytes, 18);
    return start >= 22 && start < bytes.size() && length <= bytes.size() - start;
}

// 1 version, 2 packing, 3 bits a pixel, 64 a zero, 65 planes
bool isPcx(const Content& content)
{
    constexpr std::size_t headerSize = 128;
    if (content.bytes.size() < headerSize) return false;
    const auto at = [&](std::size_t offset) { return std::to_integer<unsigned>(content.bytes[offset]); };
    const auto isDepth = at(3) == 1 || at(3) == 2 || at(3) == 4 || at(3) == 8;
    return at(1) <= 5 && at(2) == 1 && isDepth && at(64) == 0 && at(65) >= 1 && at(65) <= 4;
}

// Something may stand in front of the mark.
bool isPdf(const Content& content)
{
    constexpr std::size_t lookedAt = 1024;
    return content.text.substr(0, lookedAt).find("%PDF-") != std::string_view::npos;
}

// The mark of a frame is short: two of them in a row, unless the first is all there is.
bool isSoundFrames(const Content& content)
{
    const auto first = soundFrameSize(content.bytes, 0);
    return first != 0 && (first >= content.bytes.size() || soundFrameSize(content.bytes, first) != 0);
}

bool isOpenXml(const Content& content) { return holds(content, "[Content_Types].xml"); }

bool isProgramZip(const Content& content)
{
    return holds(content, "META-INF/MANIFEST.MF") || holds(content, "AndroidManifest.xml")
        || std::ranges::any_of(content.zipNames, [](auto name) { return name.ends_with(".class"); });
}

bool isHtml(const Content& content)
{
    constexpr std::string_view tags[] = {
        "<!doctype html", "<html", "<head>", "<body>", "<body ", "<script", "<iframe", "<hta:"};
    return content.beginning.starts_with('<')
        && std::ranges::any_of(tags, [&](auto tag) { return content.beginning.find(tag) != std::string::npos; });
}

bool isSvg(const Content& content)
{
    return content.beginning.starts_with('<') && content.beginning.find("<svg") != std::string::npos;
}

bool isLauncher(const Content& content)
{
    if (content.beginning.starts_with("[internetshortcut]")) return true;
    // Comments may stand in front.
    const auto isCommented = content.beginning.starts_with('#');
    return content.beginning.starts_with("[desktop entry]")
        || (isCommented && content.beginning.find("\n[desktop entry]") != std::string::npos);
}

bool isScript(const Content& content) { return content.beginning.starts_with("#!"); }

bool isBatch(const Content& content) { return content.beginning.starts_with("@echo off"); }

bool isXml(const Content& content) { return content.beginning.starts_with("<?xml"); }

// In an 8-bit encoding most letters of a text are still those of ASCII.
bool isText(const Content& content)
{
    const auto text = content.text;
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        const auto decoded = decodeText(content.bytes);
        return decoded && std::ranges::all_of(*decoded, isTextByte);
    }
    if (text.empty() || !std::ranges::all_of(text, isTextByte)) return false;
    const auto high = std::ranges::count_if(text, [](char c) { return static_cast<unsigned char>(c) >= 128; });
    return isWellFormedUTF8(text) || static_cast<std::size_t>(high) * 4 < text.size();
}

bool isNoText(const Content& content) { return !isText(content); }

} // namespace vellumo
