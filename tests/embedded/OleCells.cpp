// SPDX-License-Identifier: MIT
#include "embedded/OleCells.h"

#include <zlib.h>

namespace vellumo::testing {

namespace {

void append(Buffer& buffer, const Buffer& more) { buffer.insert(buffer.end(), more.begin(), more.end()); }

void appendText(Buffer& buffer, std::string_view text)
{
    append(buffer, bytesOf(text));
    buffer.push_back(std::byte{0});
}

void appendCounted(Buffer& buffer, std::string_view text)
{
    addU32(buffer, static_cast<std::uint32_t>(text.size() + 1));
    appendText(buffer, text);
}

} // namespace

Buffer bytesOf(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    return {bytes, bytes + text.size()};
}

std::string textOf(const Buffer& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

namespace {

constexpr unsigned linked = 1;
constexpr unsigned embedded = 2;
constexpr unsigned staticPicture = 3;

// Access's header, and that of OLE as far as the class name.
Buffer headers(unsigned format, std::string_view className)
{
    Buffer cell;
    for (const unsigned field : {0x1C15U, 33U, 2U, 0U, 7U, 6U, 20U, 27U}) // header size 33; names at 20 and 27
        addU16(cell, field);
    addU32(cell, 0xFFFFFFFF);
    appendText(cell, "Friend");
    appendText(cell, "Class");
    addU32(cell, 0x501);
    addU32(cell, format);
    appendCounted(cell, className);
    return cell;
}

void appendSized(Buffer& buffer, const Buffer& content)
{
    addU32(buffer, static_cast<std::uint32_t>(content.size()));
    append(buffer, content);
}

} // namespace

Buffer objectCell(std::string_view className, const Buffer& native)
{
    auto cell = headers(embedded, className);
    addU32(cell, 0);
    addU32(cell, 0);
    appendSized(cell, native);
    return cell;
}

Buffer linkCell(std::string_view path, const Buffer& presentation)
{
    auto cell = headers(linked, "Excel.Sheet.8");
    appendCounted(cell, path);
    appendCounted(cell, "Sheet1!R1C1");
    addU32(cell, 0); // no name on the network
    addU32(cell, 0);
    addU32(cell, 3);
    append(cell, presentation);
    return cell;
}

Buffer staticCell(std::string_view className, const Buffer& picture)
{
    auto cell = headers(staticPicture, className);
    addU32(cell, 100);
    addU32(cell, 50);
    appendSized(cell, picture);
    return cell;
}

Buffer presentationOf(std::string_view className, const Buffer& picture)
{
    Buffer out;
    addU32(out, 0x501);
    addU32(out, 5);
    appendCounted(out, className);
    addU32(out, 100);
    addU32(out, 50);
    appendSized(out, picture);
    return out;
}

Buffer smallBitmap()
{
    Buffer dib;
    for (const std::uint32_t field : {40U, 2U, 2U, 0x00180001U, 0U, 0U, 0U, 0U, 0U, 0U})
        addU32(dib, field);
    append(dib, bytesOf("pixelsAApixelsBB"));
    return dib;
}

Buffer smallMetafile()
{
    Buffer picture;
    for (const unsigned field : {8U, 100U, 50U, 0U})
        addU16(picture, field);
    for (const unsigned field : {1U, 9U, 0x300U, 12U, 0U, 0U, 3U, 0U, 0U, 3U, 0U, 0U}) // the last three end it
        addU16(picture, field);
    return picture;
}

std::size_t bodyOffset(const Buffer& cell) { return std::to_integer<std::size_t>(cell[2]); }

Buffer packageNative(std::string_view label, const Buffer& file)
{
    Buffer native;
    addU16(native, 2);
    appendText(native, label);
    appendText(native, "C:\\somewhere");
    addU32(native, 0x30000);
    addU32(native, 99); // a length that is not to be trusted
    appendText(native, "C:\\temp\\x.tmp");
    addU32(native, static_cast<std::uint32_t>(file.size()));
    append(native, file);
    return native;
}

Buffer attachmentRecord(std::string_view extension, const Buffer& file)
{
    Buffer record;
    addU32(record, 0x14);
    addU32(record, 1);
    addU32(record, static_cast<std::uint32_t>(extension.size() + 1));
    for (const auto letter : extension)
        addU16(record, static_cast<unsigned char>(letter));
    addU16(record, 0);
    append(record, file);
    return record;
}

Buffer storedAttachment(const Buffer& record)
{
    Buffer cell(8);
    append(cell, record);
    return cell;
}

Buffer deflatedAttachment(const Buffer& record, std::uint32_t statedSize)
{
    Buffer cell;
    addU32(cell, 1);
    addU32(cell, statedSize);
    addU16(cell, 0x9C78);
    append(cell, deflated(record));
    return cell;
}

Buffer deflated(const Buffer& content)
{
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY);
    Buffer out(deflateBound(&stream, content.size()));
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

} // namespace vellumo::testing
