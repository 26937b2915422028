// SPDX-License-Identifier: MIT
#include "embedded/OleField.h"

#include "embedded/Attachment.h"
#include "embedded/InflateRaw.h"
#include "embedded/Limits.h"
#include "embedded/OleObject.h"
#include "embedded/cfb/Stream.h"
#include "text/Ascii.h"

#include <memory>
#include <new>
#include <zlib.h>

namespace vellumo {

namespace {

bool readWhole(cfb::Stream stream, Bytes file, std::vector<std::byte>& out)
{
    // No block is in a chain twice, so a whole stream is never longer than the file.
    if (stream.fail() || stream.size() > file.size()) return false;
    std::vector<std::byte> content(stream.size());
    if (stream.read(content) < content.size()) return false;
    out = std::move(content);
    return true;
}

} // namespace

bool isOleStream(Bytes bytes) { return cfb::hasSignature(bytes); }

int extractOleStream(Bytes file, std::string_view name, std::vector<std::byte>& out)
{
    cfb::Storage storage(file);
    storage.open();
    if (storage.result() != cfb::StorageResult::Opened) return 1;
    return readWhole(cfb::Stream(storage, name), file, out) ? 0 : 2;
}

std::vector<std::byte> findOleStream(
    Bytes file, std::string_view lowerCaseName, const std::function<bool(Bytes)>& isWanted)
{
    cfb::Storage storage(file);
    storage.open();
    std::vector<std::byte> content;
    std::size_t left = limits::streamsOfOneName;
    for (const auto& entry : storage.directory().entries()) {
        if (!entry.isValid() || entry.isDirectory() || asciiLower(entry.name) != lowerCaseName) continue;
        if (left-- == 0) break;
        if (readWhole(cfb::Stream(storage, entry), file, content) && isWanted(content)) return content;
    }
    return {};
}

bool hasOleEntry(Bytes file, std::string_view name)
{
    cfb::Storage storage(file);
    storage.open();
    return storage.directory().entry(name) != nullptr;
}

namespace {

bool unwrapDeflated(const DeflatedRecord& deflated, OlePayload& out)
{
    // Not filled with zeros first: room that the stream does not use costs nothing.
    const std::unique_ptr<std::byte[]> buffer(new (std::nothrow) std::byte[deflated.roomNeeded]);
    if (buffer == nullptr) return false;
    std::span<std::byte> record(buffer.get(), deflated.roomNeeded);
    return inflateRaw(record, deflated.stream) == Z_OK && unwrapAttachedFile(record, out);
}

bool unwrap(Bytes cell, OlePayload& out)
{
    const auto body = oleCellBody(cell);
    if (!body) return false;
    if (hasOleSignature(cell)) {
        const auto object = oleObjectFrom(*body);
        return object && !object->isNativeCut && unwrapNative(object->className, object->native, out);
    }
    if (const auto deflated = deflatedRecordFrom(*body)) return unwrapDeflated(*deflated, out);
    return unwrapUndeflated(*body, out);
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
