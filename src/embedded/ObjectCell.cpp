// SPDX-License-Identifier: MIT
#include "embedded/ObjectCell.h"

#include "embedded/Attachment.h"
#include "embedded/ContentType.h"
#include "embedded/FileNames.h"
#include "embedded/InflateRaw.h"
#include "embedded/Limits.h"
#include "embedded/OleField.h"
#include "embedded/OleObject.h"
#include "embedded/OlePictures.h"
#include "embedded/TAdmBlobData.h"

#include <algorithm>
#include <new>
#include <zlib.h>

namespace vellumo {

namespace {

struct Decoded {
    OlePayload payload;
    ObjectFacts facts;

    [[nodiscard]] bool isNothing() const { return payload.data.empty() && payload.extension.empty(); }
};

ObjectState stateOf(bool isDamaged) { return isDamaged ? ObjectState::Damaged : ObjectState::Whole; }

Decoded asStored(Bytes stored, ObjectState state)
{
    return {{{stored.begin(), stored.end()}, std::string(contentTypeOf(stored).extension)}, {state, {}, {}}};
}

Decoded fromLink(const OleLink& link, Bytes stored)
{
    Decoded out;
    if (auto picture = presentationFileFrom(link.presentation); !picture.file.bytes.empty())
        out.payload = {std::move(picture.file.bytes), picture.extension};
    else
        out = asStored(stored, ObjectState::Linked);
    out.facts = {ObjectState::Linked, {}, textFromAnsi(link.path)};
    return out;
}

std::string storedNameOf(const OlePackage& package)
{
    auto name = cleanFileName(textFromAnsi(package.label));
    return name.empty() ? cleanFileName(textFromAnsi(package.sourcePath)) : name;
}

// Packages that went through OLE 2 lie in a compound file, with their size in front. `buffer` then holds the data.
Bytes packageData(Bytes native, std::vector<std::byte>& buffer)
{
    const auto isInside = isOleStream(native) && extractOleStream(native, "Ole10Native", buffer) == 0;
    return isInside && buffer.size() >= 4 ? Bytes(buffer).subspan(4) : native;
}

Decoded fromPackage(const OleObject& object, Bytes stored)
{
    std::vector<std::byte> buffer;
    const auto native = packageData(object.native, buffer);
    const auto package = olePackageFrom(native);
    Decoded out;
    // What is no package is a shortcut, say: nothing tells that bytes of it are missing.
    if (!package || !unwrapNative(object.className, native, out.payload))
        return asStored(stored, stateOf(object.isNativeCut));
    out.facts = {stateOf(object.isNativeCut || package->isFileCut), storedNameOf(*package), {}};
    // A file of no bytes is a file, but one without a name is not there.
    return out.isNothing() && out.facts.storedName.empty() ? asStored(stored, out.facts.state) : std::move(out);
}

Decoded fromObject(Bytes body, Bytes stored)
{
    if (const auto link = oleLinkFrom(body)) return fromLink(*link, stored);
    const auto object = oleObjectFrom(body);
    if (!object) return asStored(stored, ObjectState::Damaged);
    if (object->className == "Package") return fromPackage(*object, stored);
    Decoded out;
    auto file = oleFileFrom(*object);
    if (!file.file.bytes.empty())
        out.payload = {std::move(file.file.bytes), file.extension};
    else if (!unwrapNative(object->className, object->native, out.payload) || out.payload.data.empty())
        return asStored(stored, stateOf(object->isNativeCut));
    out.facts.state = stateOf(object->isNativeCut || file.file.isCut);
    return out;
}

// Other cells may begin with the same flag; a deflated one has a header of zlib there too.
bool hasZlibHeader(Bytes body)
{
    const auto method = std::to_integer<unsigned>(body[8]);
    return (method & 0x0FU) == 8 && (method << 8U | std::to_integer<unsigned>(body[9])) % 31 == 0;
}

Decoded fromDeflated(const DeflatedRecord& deflated, Bytes body, Bytes stored, UnpackBudget& budget)
{
    const auto unpacked = unpack(deflated, budget);
    Decoded out;
    const auto isRead = unwrapAttachedFile(unpacked.record, out.payload) && !out.isNothing();
    if (isRead && unpacked.status == Z_OK) return out;
    if (!hasZlibHeader(body)) return asStored(stored, ObjectState::Whole);
    if (!isRead || out.payload.data.empty()) return asStored(stored, ObjectState::Damaged);
    out.facts.state = ObjectState::Damaged;
    return out;
}

Decoded fromAttachment(Bytes body, Bytes stored, UnpackBudget& budget)
{
    if (const auto deflated = deflatedRecordFrom(body)) return fromDeflated(*deflated, body, stored, budget);
    Decoded out;
    if (!unwrapUndeflated(body, out.payload) || out.isNothing()) return asStored(stored, ObjectState::Whole);
    if (!out.payload.extension.empty()) return out;
    // Some programs store a picture as the clipboard has it.
    auto bitmap = bitmapFileFrom(out.payload.data);
    if (bitmap && !bitmap->isCut) out.payload = {std::move(bitmap->bytes), "bmp"};
    return out;
}

Decoded decode(Bytes stored, UnpackBudget& budget)
{
    const auto isOle = hasOleSignature(stored);
    const auto body = oleCellBody(stored);
    // A bare file has no wrapper that could be broken.
    if (!body) return asStored(stored, stateOf(isOle));
    return isOle ? fromObject(*body, stored) : fromAttachment(*body, stored, budget);
}

} // namespace

std::shared_ptr<TAdmBlobData> decodeObjectCell(Bytes stored, bool isWhole, UnpackBudget& budget)
{
    if (stored.empty()) return nullptr;
    auto decoded = decode(stored, budget);
    if (!isWhole) decoded.facts.state = ObjectState::Damaged;
    return std::make_shared<TAdmBlobData>(
        std::move(decoded.payload.data), std::move(decoded.payload.extension), std::move(decoded.facts));
}

} // namespace vellumo
