#include "embedded/OleField.h"

#include "embedded/InflateRaw.h"
#include "embedded/OleStream.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <zlib.h>

namespace vellumo {

namespace {

constexpr std::uint16_t oleSignature = 0x1C15;

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

std::vector<std::byte> copyOf(Bytes bytes) { return {bytes.begin(), bytes.end()}; }

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

// What follows the header that Access puts in front of an object:
//   0 u16 signature, 2 i16 header size, 8 i16 and 10 i16 lengths of the friendly name and the class name,
//   12 i16 and 14 i16 their offsets from the start of the cell.
// A cell with another signature and a header size of 0 has no header and is body as a whole.
std::optional<Bytes> bodyOf(Bytes cell)
{
    constexpr std::size_t shortestHeader = 20;
    if (cell.size() < 4) return std::nullopt;
    const auto headerSize = i16At(cell, 2);
    if (headerSize < 0 || static_cast<std::size_t>(headerSize) > cell.size()) return std::nullopt;
    if (u16At(cell, 0) != oleSignature && headerSize == 0) return cell;
    if (cell.size() < shortestHeader) return std::nullopt;
    if (!countedText(cell, i16At(cell, 12), i16At(cell, 8))) return std::nullopt;
    if (!countedText(cell, i16At(cell, 14), i16At(cell, 10))) return std::nullopt;
    return cell.subspan(static_cast<std::size_t>(headerSize));
}

// The native data of the class "Package", one file of any kind:
//   2 bytes, label\0, source path\0, 8 bytes, temporary path\0, u32 file size, file
bool unwrapPackage(Bytes native, OlePayload& out)
{
    constexpr std::size_t shortest = 17;
    if (native.size() < shortest) return false;
    auto rest = native.subspan(2);
    const auto label = takeText(rest);
    if (!label || !takeText(rest) || rest.size() < 8) return false;
    rest = rest.subspan(8);
    if (!takeText(rest) || rest.size() < 4) return false;
    const auto fileSize = u32At(rest, 0);
    rest = rest.subspan(4);
    // The size is known to be wrong at times; what is there is kept.
    out.data = copyOf(rest.first(std::min<std::size_t>(fileSize, rest.size())));
    if (const auto dot = label->rfind('.'); dot != std::string_view::npos) out.extension = label->substr(dot + 1);
    return true;
}

// The native data of any other class. A compound file that lacks the document's stream is kept as it is.
void unwrapDocument(std::string_view className, Bytes native, OlePayload& out)
{
    const auto* found = std::find_if(std::begin(documentClasses), std::end(documentClasses),
        [&](const DocumentClass& known) { return known.name == className; });
    const auto isKnown = found != std::end(documentClasses);
    if (isKnown) out.extension = found->extension;
    const auto mayHoldStream = isKnown && !found->stream.empty() && isOleStream(native);
    if (mayHoldStream && extractOleStream(native, found->stream, out.data) == 0) return;
    out.data = copyOf(native);
}

// An embedded object of OLE 1.0, with n the length of its class name, terminator included:
//   8 u32 n, 12 class name, 20+n i32 size of the native data, 24+n native data
// The lengths of two more texts at 12+n and 16+n are taken as 0, as Access always writes them.
bool unwrapObject(Bytes body, OlePayload& out)
{
    if (body.size() < 12) return false;
    const auto className = countedText(body, 12, i32At(body, 8));
    if (!className) return false;
    const auto nativeOffset = 24 + std::size_t{u32At(body, 8)};
    if (nativeOffset > body.size()) return false;
    const auto nativeSize = i32At(body, nativeOffset - 4);
    auto native = body.subspan(nativeOffset);
    if (nativeSize < 0 || static_cast<std::size_t>(nativeSize) > native.size()) return false;
    native = native.first(static_cast<std::size_t>(nativeSize));
    if (*className == "Package") return unwrapPackage(native, out);
    unwrapDocument(*className, native, out);
    return true;
}

// The inner record of an attachment, with e the length of the extension in UTF-16 characters, terminator included:
//   8 i32 e, 12 extension, 12+2e file
bool unwrapAttachedFile(Bytes record, OlePayload& out)
{
    if (record.size() < 12) return false;
    const auto characters = i32At(record, 8);
    if (characters < 0) return false;
    const auto fileOffset = 12 + 2 * static_cast<std::size_t>(characters);
    if (fileOffset > record.size()) return false;
    // The last character is the terminator, whatever it says.
    for (std::size_t i = 12; i + 2 < fileOffset && record[i] != std::byte{0}; i += 2)
        out.extension += static_cast<char>(record[i]);
    out.data = copyOf(record.subspan(fileOffset));
    return true;
}

//   4 i32 size of the inner record, 8 the 2 bytes of a zlib header, 10 deflate stream of the inner record
bool unwrapDeflated(Bytes body, OlePayload& out)
{
    // Deflate makes at most 258 bytes of 2 bits, so room beyond this could not be filled: the stated size does not
    // decide what is allocated.
    constexpr std::size_t bestRatio = 1032;
    if (body.size() < 11) return false;
    const auto statedSize = i32At(body, 4);
    if (statedSize < 12) return false;
    const auto source = body.subspan(10);
    const auto room = std::min(static_cast<std::size_t>(statedSize), source.size() * bestRatio);
    // Not filled with zeros first: room that the stream does not use costs nothing.
    const std::unique_ptr<std::byte[]> buffer(new (std::nothrow) std::byte[room]);
    if (buffer == nullptr) return false;
    std::span<std::byte> record(buffer.get(), room);
    return inflateRaw(record, source) == Z_OK && unwrapAttachedFile(record, out);
}

// A file of an attachment column: 0 i32 flag, which says how the rest is stored.
bool unwrapAttachment(Bytes body, OlePayload& out)
{
    if (body.size() < 5) return false;
    switch (i32At(body, 0)) {
    case 0: return body.size() >= 20 && unwrapAttachedFile(body.subspan(8), out);
    case 1: return unwrapDeflated(body, out);
    default: out.data = copyOf(body); return true;
    }
}

bool unwrap(Bytes cell, OlePayload& out)
{
    const auto body = bodyOf(cell);
    if (!body) return false;
    return u16At(cell, 0) == oleSignature ? unwrapObject(*body, out) : unwrapAttachment(*body, out);
}

} // namespace

int mdb_read_ole_field(Bytes cell, OlePayload& out)
try {
    OlePayload payload;
    if (!unwrap(cell, payload)) return 1;
    out = std::move(payload);
    return 0;
} catch (const std::bad_alloc&) {
    return 1;
}

} // namespace vellumo
