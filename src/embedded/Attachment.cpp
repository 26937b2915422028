// SPDX-License-Identifier: MIT
#include "embedded/Attachment.h"

#include "embedded/Limits.h"

#include <algorithm>

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

} // namespace vellumo
