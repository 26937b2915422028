// SPDX-License-Identifier: MIT
#include "embedded/Attachment.h"

#include "embedded/ContentType.h"
#include "embedded/InflateRaw.h"
#include "embedded/Limits.h"
#include "embedded/TAdmBlobData.h"

#include <algorithm>
#include <new>
#include <zlib.h>

namespace vellumo {

namespace {

// The first field of the body says how the rest is stored.
enum : std::int32_t { storedFlag = 0, deflatedFlag = 1 };

constexpr std::size_t emptyRecord = 12;

} // namespace

// With e the length of the extension in UTF-16 characters, terminator included:
//   8 i32 e, 12 extension, 12+2e file
bool unwrapAttachedFile(Bytes record, OlePayload& out)
{
    if (record.size() < emptyRecord) return false;
    const auto characters = i32At(record, 8);
    if (characters < 0) return false;
    const auto fileOffset = emptyRecord + 2 * static_cast<std::size_t>(characters);
    if (fileOffset > record.size()) return false;
    // The last character is the terminator, whatever it says.
    for (std::size_t i = emptyRecord; i + 2 < fileOffset && record[i] != std::byte{0}; i += 2)
        out.extension += static_cast<char>(record[i]);
    const auto file = record.subspan(fileOffset);
    out.data.assign(file.begin(), file.end());
    return true;
}

//   0 i32 flag, 4 i32 size of the inner record, 8 the 2 bytes of a zlib header, 10 deflate stream of the inner record
std::optional<DeflatedRecord> deflatedRecordFrom(Bytes body)
{
    if (body.size() < 11 || i32At(body, 0) != deflatedFlag) return std::nullopt;
    const auto statedSize = i32At(body, 4);
    if (statedSize < static_cast<std::int32_t>(emptyRecord)) return std::nullopt;
    const auto stream = body.subspan(10);
    // The stated size does not decide what is allocated.
    return DeflatedRecord{
        std::min(static_cast<std::size_t>(statedSize), stream.size() * limits::bestDeflateRatio), stream};
}

bool unwrapUndeflated(Bytes body, OlePayload& out)
{
    if (body.size() < 5 || i32At(body, 0) == deflatedFlag) return false;
    if (i32At(body, 0) == storedFlag) return body.size() >= 20 && unwrapAttachedFile(body.subspan(8), out);
    out.data.assign(body.begin(), body.end());
    return true;
}

Unpacked unpack(const DeflatedRecord& deflated, UnpackBudget& budget)
{
    const auto room = std::min({deflated.roomNeeded, limits::unpackedBytesPerObject, budget.bytesLeft});
    // Once over the budget, the work of finding out which cells fit after all is not done either.
    if (room < deflated.roomNeeded && budget.isExceeded) return {nullptr, {}, Z_BUF_ERROR};
    // Not filled with zeros first: room that the stream does not use costs nothing.
    Unpacked out{std::unique_ptr<std::byte[]>(new (std::nothrow) std::byte[room]), {}, Z_MEM_ERROR};
    if (out.buffer == nullptr) return out;
    std::span<std::byte> record(out.buffer.get(), room);
    out.status = inflateRawAsFarAsItGoes(record, deflated.stream);
    out.record = record;
    budget.bytesLeft -= record.size();
    // The room was the limit, not the stream: zlib may have read all of it and still hold bytes back.
    const auto isFull = out.status != Z_OK && record.size() == room;
    if (!isFull || room == deflated.roomNeeded) return out;
    budget.isExceeded = true;
    return {nullptr, {}, Z_BUF_ERROR};
}

namespace {

// Layout: u32 1 for a packed content, 0 for a plain one; u32 length of the content, unpacked; content, packed as a
// zlib stream. The content: u32 bytes in front of the file, u32 1, u32 characters of the extension with its final NUL,
// extension in UTF-16, file.
constexpr std::size_t headerSize = 8;
constexpr std::size_t zlibHeaderSize = 2;
constexpr std::size_t extensionOffset = 12;
enum : std::uint32_t { plain = 0, packed = 1 };

struct AttachedContent {
    Unpacked unpacked{};
    Bytes bytes{};
    bool isWhole = false; // as long as it should be
};

AttachedContent packedContent(Bytes stream, std::size_t length, UnpackBudget& budget)
{
    AttachedContent content;
    const auto deflated = stream.subspan(std::min(zlibHeaderSize, stream.size()));
    content.unpacked = unpack({std::min(length, deflated.size() * limits::bestDeflateRatio), deflated}, budget);
    content.bytes = content.unpacked.record;
    content.isWhole = content.unpacked.status == Z_OK && content.bytes.size() == length;
    return content;
}

AttachedContent plainContent(Bytes stored, std::size_t length)
{
    AttachedContent content;
    content.bytes = stored.first(std::min(length, stored.size()));
    content.isWhole = content.bytes.size() == length;
    return content;
}

std::optional<AttachedContent> contentOf(Bytes stored, UnpackBudget& budget)
{
    if (stored.size() < headerSize) return std::nullopt;
    const std::size_t length = u32At(stored, 4);
    const auto rest = stored.subspan(headerSize);
    switch (u32At(stored, 0)) {
    case plain: return plainContent(rest, length);
    case packed: return packedContent(rest, length, budget);
    default: return std::nullopt;
    }
}

// Of letters, digits and the like alone; a file's name has the others too.
std::string extensionOf(Bytes characters)
{
    std::string extension;
    for (std::size_t i = 0; i + 1 < characters.size(); i += 2) {
        const auto character = u16At(characters, i);
        if (character == 0) break;
        if (character >= 0x80) return {};
        extension += static_cast<char>(character);
    }
    return extension;
}

// Null when the content has no sound header.
std::shared_ptr<TAdmBlobData> fileIn(Bytes content, bool isWhole)
{
    if (content.size() < extensionOffset) return nullptr;
    const std::size_t start = u32At(content, 0);
    const std::size_t characters = u32At(content, 8);
    if (start < extensionOffset || start > content.size() || characters > (start - extensionOffset) / 2) return nullptr;
    const auto file = content.subspan(start);
    const ObjectFacts facts{.state = isWhole ? ObjectState::Whole : ObjectState::Damaged};
    return std::make_shared<TAdmBlobData>(std::vector<std::byte>(file.begin(), file.end()),
        extensionOf(content.subspan(extensionOffset, 2 * characters)), facts);
}

} // namespace

std::shared_ptr<TAdmBlobData> decodeAttachmentCell(Bytes stored, bool isWhole, UnpackBudget& budget)
{
    if (stored.empty()) return nullptr;
    if (const auto content = contentOf(stored, budget))
        if (auto file = fileIn(content->bytes, isWhole && content->isWhole)) return file;
    return std::make_shared<TAdmBlobData>(std::vector<std::byte>(stored.begin(), stored.end()),
        std::string(contentTypeOf(stored).extension), ObjectFacts{.state = ObjectState::Damaged});
}

} // namespace vellumo
