#include "embedded/OleField.h"

#include "embedded/Attachment.h"
#include "embedded/InflateRaw.h"
#include "embedded/OleNative.h"
#include "embedded/OleObject.h"

#include <memory>
#include <new>
#include <zlib.h>

namespace vellumo {

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
