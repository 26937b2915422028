// SPDX-License-Identifier: MIT
#include "embedded/OleObject.h"

#include "embedded/Limits.h"
#include "embedded/OleField.h"

#include <algorithm>

namespace vellumo {

namespace {

// The kinds of document that Access users embed: the extension of their files, and for those kept inside a compound
// file the name of the stream that is the document. For the others the native data is the document.
struct DocumentClass {
    std::string_view name;
    std::string_view extension;
    std::string_view stream;
};
constexpr DocumentClass documentClasses[] = {
    {"PBrush", "bmp", ""},
    {"Word.Document.8", "doc", ""},
    {"Excel.Sheet.8", "xls", ""},
    {"Excel.Chart.8", "xls", ""},
    {"PowerPoint.Show.8", "ppt", ""},
    {"WordPad.Document.1", "rtf", "Contents"},
    {"Word.Document.12", "docx", "Package"},
    {"Excel.Sheet.12", "xlsx", "Package"},
    {"PowerPoint.Show.12", "pptx", "Package"},
    {"Word.DocumentMacroEnabled.12", "docm", "Package"},
    {"Excel.SheetMacroEnabled.12", "xlsm", "Package"},
    {"PowerPoint.ShowMacroEnabled.12", "pptm", "Package"},
    {"Word.OpenDocumentText.12", "odt", "EmbeddedOdf"},
    {"Excel.OpenDocumentSpreadsheet.12", "ods", "EmbeddedOdf"},
    {"PowerPoint.OpenDocumentPresentation.12", "odp", "EmbeddedOdf"},
};

bool unwrapPackage(Bytes native, OlePayload& out)
{
    const auto package = olePackageFrom(native);
    if (!package) return false;
    // The size is known to be wrong at times; what is there is kept.
    out.data.assign(package->file.begin(), package->file.end());
    const auto label = package->label;
    if (const auto dot = label.rfind('.'); dot != std::string_view::npos) out.extension = label.substr(dot + 1);
    return true;
}

} // namespace

bool unwrapNative(std::string_view className, Bytes native, OlePayload& out)
{
    if (className == "Package") return unwrapPackage(native, out);
    const auto* found = std::find_if(std::begin(documentClasses), std::end(documentClasses),
        [&](const DocumentClass& known) { return known.name == className; });
    const auto isKnown = found != std::end(documentClasses);
    if (isKnown) out.extension = found->extension;
    // A compound file that lacks the document's stream is kept as it is.
    const auto mayHoldStream = isKnown && !found->stream.empty() && isOleStream(native);
    if (mayHoldStream && extractOleStream(native, found->stream, out.data) == 0) return true;
    out.data.assign(native.begin(), native.end());
    return true;
}

namespace {

constexpr std::uint16_t oleSignature = 0x1C15;

// The text of `length` bytes at `offset`, up to its first zero. None unless its last byte is a zero.
std::optional<std::string_view> countedText(Bytes bytes, std::int64_t offset, std::int64_t length)
{
    constexpr int longest = 255;
    if (offset < 0 || length <= 0 || length > longest) return std::nullopt;
    if (offset + length > static_cast<std::int64_t>(bytes.size())) return std::nullopt;
    const auto text = bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
    if (text.back() != std::byte{0}) return std::nullopt;
    return std::string_view(reinterpret_cast<const char*>(text.data()));
}

// Takes the bytes up to the next zero, and that zero, off the front of `rest`. None, and nothing taken, without a zero.
std::optional<std::string_view> takeText(Bytes& rest)
{
    const auto end = std::find(rest.begin(), rest.end(), std::byte{0});
    if (end == rest.end()) return std::nullopt;
    const auto length = static_cast<std::size_t>(end - rest.begin());
    const std::string_view text(reinterpret_cast<const char*>(rest.data()), length);
    rest = rest.subspan(length + 1);
    return text;
}

// Takes a length of 4 bytes and a text of that length, terminator included, off the front of `rest`.
std::optional<std::string_view> takeCountedText(Bytes& rest)
{
    if (rest.size() < 4) return std::nullopt;
    const std::size_t length = u32At(rest, 0);
    if (length > limits::longestLinkPath || length > rest.size() - 4) return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(rest.data()) + 4, length);
    rest = rest.subspan(4 + length);
    return text.substr(0, text.find('\0'));
}

} // namespace

bool hasOleSignature(Bytes cell) { return cell.size() >= 2 && u16At(cell, 0) == oleSignature; }

//   0 u16 signature, 2 i16 header size, 8 i16 and 10 i16 lengths of the friendly name and the class name,
//   12 i16 and 14 i16 their offsets from the start of the cell.
std::optional<Bytes> oleCellBody(Bytes cell)
{
    constexpr std::size_t shortestHeader = 20;
    if (cell.size() < 4) return std::nullopt;
    const auto headerSize = i16At(cell, 2);
    if (headerSize < 0 || static_cast<std::size_t>(headerSize) > cell.size()) return std::nullopt;
    if (!hasOleSignature(cell) && headerSize == 0) return cell;
    if (cell.size() < shortestHeader) return std::nullopt;
    if (!countedText(cell, i16At(cell, 12), i16At(cell, 8))) return std::nullopt;
    if (!countedText(cell, i16At(cell, 14), i16At(cell, 10))) return std::nullopt;
    return cell.subspan(static_cast<std::size_t>(headerSize));
}

// With n the length of the class name, terminator included:
//   0 u32 version, 4 u32 format, 8 u32 n, 12 class name, 20+n i32 size of the native data, 24+n native data
// The lengths of two more texts at 12+n and 16+n are taken as 0, as Access always writes them. A static object has the
// picture's width and height there.
std::optional<OleObject> oleObjectFrom(Bytes body)
{
    if (body.size() < 12) return std::nullopt;
    const auto className = countedText(body, 12, i32At(body, 8));
    if (!className) return std::nullopt;
    const auto nativeOffset = 24 + std::size_t{u32At(body, 8)};
    if (nativeOffset > body.size() || i32At(body, nativeOffset - 4) < 0) return std::nullopt;
    const std::size_t stated = u32At(body, nativeOffset - 4);
    const auto rest = body.subspan(nativeOffset);
    const auto size = std::min(stated, rest.size());
    return OleObject{
        static_cast<OleFormat>(u32At(body, 4)), *className, rest.first(size), size < stated, rest.subspan(size)};
}

//   0 u32 version, 4 u32 format, then counted texts: class name, path, item inside the file, the path's name on the
//   network; 8 bytes; presentation
std::optional<OleLink> oleLinkFrom(Bytes body)
{
    if (body.size() < 8 || u32At(body, 4) != static_cast<std::uint32_t>(OleFormat::Linked)) return std::nullopt;
    auto rest = body.subspan(8);
    const auto className = takeCountedText(rest);
    const auto path = className ? takeCountedText(rest) : std::nullopt;
    if (!path || path->empty()) return std::nullopt;
    if (!takeCountedText(rest) || !takeCountedText(rest) || rest.size() < 8) return OleLink{*path, {}};
    return OleLink{*path, rest.subspan(8)};
}

//   0 u32 version, 4 u32 format (5, or 0 for none), 8 counted class name, then width, height, u32 size of the data,
//   data
std::optional<OlePresentation> olePresentationFrom(Bytes bytes)
{
    constexpr std::uint32_t presentationFormat = 5;
    if (bytes.size() < 8 || u32At(bytes, 4) != presentationFormat) return std::nullopt;
    auto rest = bytes.subspan(8);
    const auto className = takeCountedText(rest);
    if (!className || rest.size() < 12) return std::nullopt;
    const std::size_t size = u32At(rest, 8);
    rest = rest.subspan(12);
    if (size > rest.size()) return std::nullopt;
    return OlePresentation{*className, rest.first(size)};
}

//   2 bytes, label\0, source path\0, 8 bytes, temporary path\0, u32 file size, file
std::optional<OlePackage> olePackageFrom(Bytes native)
{
    constexpr std::size_t shortest = 17;
    if (native.size() < shortest) return std::nullopt;
    auto rest = native.subspan(2);
    const auto label = takeText(rest);
    const auto sourcePath = label ? takeText(rest) : std::nullopt;
    if (!sourcePath || rest.size() < 8) return std::nullopt;
    rest = rest.subspan(8);
    if (!takeText(rest) || rest.size() < 4) return std::nullopt;
    const std::size_t stated = u32At(rest, 0);
    rest = rest.subspan(4);
    const auto size = std::min(stated, rest.size());
    return OlePackage{*label, *sourcePath, rest.first(size), size < stated};
}

} // namespace vellumo
