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

} // namespace

Buffer bytesOf(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    return {bytes, bytes + text.size()};
}

std::string textOf(const Buffer& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

Buffer objectCell(std::string_view className, const Buffer& native)
{
    Buffer cell;
    for (const unsigned field : {0x1C15U, 33U, 2U, 0U, 7U, 6U, 20U, 27U}) // header size 33; names at 20 and 27
        addU16(cell, field);
    addU32(cell, 0xFFFFFFFF);
    appendText(cell, "Friend");
    appendText(cell, "Class");
    addU32(cell, 0x501);
    addU32(cell, 2);
    addU32(cell, static_cast<std::uint32_t>(className.size() + 1));
    appendText(cell, className);
    addU32(cell, 0);
    addU32(cell, 0);
    addU32(cell, static_cast<std::uint32_t>(native.size()));
    append(cell, native);
    return cell;
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
