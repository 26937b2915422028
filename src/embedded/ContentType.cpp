// SPDX-License-Identifier: MIT
#include "embedded/ContentType.h"

#include "embedded/OleField.h"
#include "embedded/PayloadText.h"
#include "embedded/PictureFiles.h"
#include "embedded/ZipNames.h"
#include "text/Ascii.h"
#include "text/UTF8.h"

#include <algorithm>

namespace vellumo {

namespace {

using namespace std::string_view_literals;

// A row matches when the signature stands at its offset, the container holds what it must, and the check agrees; what a
// row leaves open is not asked. The first row that matches counts, so what is special stands before its family.
struct Row {
    ContentType type;
    std::string_view signature;
    std::size_t offset = 0;
    std::string_view inside{};
    ContentCheck check = nullptr;
};

// Texts that go by the name of something in particular, at whose beginning nothing needs to stand.
constexpr auto textual =
    "xml sh bash py pl rb php bat cmd js jse vbs vbe wsf wsh ps1 reg html htm xhtml hta desktop url"sv;
constexpr auto unknownExtension = "bin"sv;
constexpr auto riff = "RIFF"sv;
constexpr auto ftyp = "ftyp"sv;

using enum ContentKind;
constexpr Row rows[] = {
    {{Picture, "jpg", "jpeg jpe jfif"}, "\xFF\xD8\xFF"sv},
    {{Picture, "png", ""}, "\x89PNG\r\n\x1A\n"sv},
    {{Picture, "gif", ""}, "GIF87a"sv},
    {{Picture, "gif", ""}, "GIF89a"sv},
    {{Picture, "bmp", "dib"}, "BM"sv, 0, "", isBmp},
    {{Picture, "tif", "tiff"}, "II*\0"sv},
    {{Picture, "tif", "tiff"}, "MM\0*"sv},
    {{Picture, "ico", ""}, "\0\0\1\0"sv, 0, "", isIcon},
    {{Picture, "cur", ""}, "\0\0\2\0"sv, 0, "", isIcon},
    {{Picture, "wmf", ""}, "\xD7\xCD\xC6\x9A"sv},
    {{Picture, "wmf", ""}, "", 0, "", isMetafileWithoutMark},
    {{Picture, "emf", ""}, " EMF\0\0\1\0"sv, 40},
    {{Picture, "webp", ""}, riff, 0, "WEBP"},
    {{Picture, "psd", ""}, "8BPS\0\1"sv},
    {{Picture, "heic", "heif"}, ftyp, 4, "heic"},
    {{Picture, "heic", "heif"}, ftyp, 4, "mif1"},
    {{Picture, "avif", ""}, ftyp, 4, "avif"},
    {{Picture, "jp2", "jpx"}, "\0\0\0\x0CjP  "sv},
    {{Document, "rtf", "doc"}, "{\\rtf"},
    {{Document, "ps", "eps ai"}, "%!PS"},
    {{Document, "eps", "ps"}, "\xC5\xD0\xD3\xC6"},
    {{Document, "doc", "dot"}, compoundFileMark, 0, "WordDocument"},
    {{Document, "xls", "xlt"}, compoundFileMark, 0, "Workbook"},
    {{Document, "xls", "xlt"}, compoundFileMark, 0, "Book"},
    {{Document, "ppt", "pps pot"}, compoundFileMark, 0, "PowerPoint Document"},
    {{Document, "vsd", "vst"}, compoundFileMark, 0, "VisioDocument"},
    {{Document, "msg", ""}, compoundFileMark, 0, "__properties_version1.0"},
    {{Family, unknownExtension, "msi msp"}, compoundFileMark},
    {{Document, "docm", "dotm"}, zipMark, 0, "word/vbaProject.bin"},
    {{Document, "xlsm", "xltm xlam xlsb"}, zipMark, 0, "xl/vbaProject.bin"},
    {{Document, "pptm", "ppsm potm"}, zipMark, 0, "ppt/vbaProject.bin"},
    {{Document, "xlsb", ""}, zipMark, 0, "xl/workbook.bin"},
    {{Document, "docx", "dotx"}, zipMark, 0, "word/", isOpenXml},
    {{Document, "xlsx", "xltx"}, zipMark, 0, "xl/", isOpenXml},
    {{Document, "pptx", "ppsx potx"}, zipMark, 0, "ppt/", isOpenXml},
    {{Document, "vsdx", ""}, zipMark, 0, "visio/", isOpenXml},
    {{Document, "odt", "ott"}, zipMark, 0, "application/vnd.oasis.opendocument.text"},
    {{Document, "ods", "ots"}, zipMark, 0, "application/vnd.oasis.opendocument.spreadsheet"},
    {{Document, "odp", "otp"}, zipMark, 0, "application/vnd.oasis.opendocument.presentation"},
    {{Document, "odg", "otg"}, zipMark, 0, "application/vnd.oasis.opendocument.graphics"},
    {{Document, "epub", ""}, zipMark, 0, "application/epub+zip"},
    {{Program, "jar", "war ear apk xpi"}, zipMark, 0, "", isProgramZip},
    {{Family, "zip", ""}, zipMark},
    {{Archive, "zip", ""}, "PK\5\6"},
    {{Archive, "7z", ""}, "7z\xBC\xAF\x27\x1C"},
    {{Archive, "rar", ""}, "Rar!\x1A\7"},
    {{Archive, "gz", "tgz svgz wmz emz"}, "\x1F\x8B\x08"},
    {{Archive, "bz2", ""}, "1AY&SY", 4},
    {{Archive, "xz", ""}, "\xFD\x37zXZ\0"sv},
    {{Archive, "cab", ""}, "MSCF\0\0\0\0"sv},
    {{Archive, "tar", ""}, "ustar", 257},
    {{Database, "mdb", "mde mdw mda mdt"}, "\0\1\0\0Standard Jet DB"sv},
    {{Database, "accdb", "accde accdr accdt"}, "\0\1\0\0Standard ACE DB"sv},
    {{Database, "sqlite", "sqlite3 db db3"}, "SQLite format 3\0"sv},
    {{Media, "wav", ""}, riff, 0, "WAVE"},
    {{Media, "avi", ""}, riff, 0, "AVI "},
    {{Media, "mp3", ""}, "ID3\2"},
    {{Media, "mp3", ""}, "ID3\3"},
    {{Media, "mp3", ""}, "ID3\4"},
    {{Media, "mp3", ""}, "\xFF", 0, "", isSoundFrames},
    {{Media, "ogg", "ogv oga opus"}, "OggS\0"sv},
    {{Media, "flac", ""}, "fLaC"},
    {{Media, "mid", "midi"}, "MThd\0\0\0\6"sv},
    {{Media, "mov", ""}, ftyp, 4, "qt  "},
    {{Media, "mp4", "m4a m4v m4b 3gp mov"}, ftyp, 4},
    {{Media, "wmv", "wma asf"}, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"},
    {{Media, "mkv", "webm mka"}, "\x1A\x45\xDF\xA3"},
    {{Media, "mpg", "mpeg vob"}, "\0\0\1\xBA"sv},
    {{Media, "mpg", "mpeg"}, "\0\0\1\xB3"sv},
    {{Media, "snd", "au"}, ".snd\0"sv},
    {{Program, "exe", "dll com scr sys pif cpl msi msp"}, "MZ", 0, "", isNoText},
    {{Program, "elf", "so appimage run"}, "\x7F\x45LF"},
    {{Program, "class", "dylib"}, "\xCA\xFE\xBA\xBE"},
    {{Program, "macho", "dylib"}, "\xFE\xED\xFA\xCE"},
    {{Program, "macho", "dylib"}, "\xFE\xED\xFA\xCF"},
    {{Program, "macho", "dylib"}, "\xCE\xFA\xED\xFE"},
    {{Program, "macho", "dylib"}, "\xCF\xFA\xED\xFE"},
    {{Program, "wasm", ""}, "\0asm"sv},
    {{Program, "dex", ""}, "dex\n03"},
    {{Program, "lnk", ""}, "L\0\0\0\1\x14\2\0"sv},
    {{Program, "deb", ""}, "!<arch>\n"},
    {{Program, "rpm", ""}, "\xED\xAB\xEE\xDB"},
    {{Program, "chm", ""}, "ITSF\3"},
    {{Program, "sh", "bash py pl rb php"}, "", 0, "", isScript},
    {{Program, "desktop", "url"}, "", 0, "", isLauncher},
    {{Program, "bat", "cmd js jse vbs vbe wsf wsh ps1 reg"}, "", 0, "", isBatch},
    {{Program, "html", "htm xhtml hta"}, "", 0, "", isHtml},
    {{Program, "svg", ""}, "", 0, "", isSvg},
    {{Document, "pdf", ""}, "", 0, "", isPdf},
    {{Picture, "pcx", ""}, "\x0A", 0, "", isPcx},
    {{Family, "xml", ""}, "", 0, "", isXml},
    {{Family, "txt", textual}, "", 0, "", isText},
    {{Unknown, unknownExtension, ""}, ""},
};

bool matches(const Row& row, const Content& content)
{
    if (content.text.size() < row.offset || !content.text.substr(row.offset).starts_with(row.signature)) return false;
    return (row.inside.empty() || holds(content, row.inside)) && (row.check == nullptr || row.check(content));
}

} // namespace

const ContentType& contentTypeOf(Bytes bytes)
{
    const Content content(bytes);
    // The last row matches anything.
    return std::ranges::find_if(rows, [&](const Row& row) { return matches(row, content); })->type;
}

bool goesBy(const ContentType& type, std::string_view extension)
{
    if (extension.empty()) return false;
    if (extension == type.extension) return true;
    const auto padded = [](std::string_view text) { return " " + std::string(text) + " "; };
    return padded(type.otherExtensions).find(padded(extension)) != std::string::npos;
}

bool isKnownByContent(std::string_view extension)
{
    return std::ranges::any_of(rows, [&](const Row& row) {
        return row.type.kind != Unknown && extension != unknownExtension && goesBy(row.type, extension);
    });
}

bool isProgramExtension(std::string_view extension)
{
    return std::ranges::any_of(
        rows, [&](const Row& row) { return row.type.kind == Program && goesBy(row.type, extension); });
}

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
