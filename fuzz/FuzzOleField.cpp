// SPDX-License-Identifier: MIT
#include "embedded/Attachment.h"
#include "embedded/OleField.h"
#include "embedded/TAdmBlobData.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace vellumo;

constexpr std::size_t budgetBytes = std::size_t{1} << 20U;
// Beside what is unpacked: a header in front of a picture.
constexpr std::size_t mostAddedBytes = 22;

void require(bool isTrue)
{
    if (!isTrue) std::abort();
}

// A refused cell leaves nothing behind.
void tryTheRules(Bytes cell)
{
    OlePayload payload;
    if (mdb_read_ole_field(cell, payload) != 0) return require(payload.data.empty() && payload.extension.empty());
    // The best that deflate can do: more bytes cannot have come from this cell.
    require(payload.data.size() <= cell.size() * 1032);
}

// What comes out is shown as the grid and the detail pane would show it.
void tryTheObject(decltype(decodeObjectCell)* decode, Bytes cell, bool isWhole)
{
    UnpackBudget budget{budgetBytes};
    const auto object = decode(cell, isWhole, budget);
    require((object == nullptr) == cell.empty());
    require(budget.bytesLeft <= budgetBytes);
    if (object == nullptr) return;
    const auto unpacked = budgetBytes - budget.bytesLeft;
    require(object->data().size() <= std::max(unpacked, cell.size() + mostAddedBytes));
    require(isWhole || object->state() == ObjectState::Damaged);
    require(!budget.isExceeded || object->state() == ObjectState::Damaged);
    require(object->storedName().find_first_of("/\\\n\t") == std::string::npos);
    require(!object->cellDescription().empty());
    require(!object->description().empty() || object->data().size() <= 4);
    require(object->fileName("x").find('/') == std::string::npos);
    require(!object->mayBeOpened() || !object->extensionByContent().empty());
}

} // namespace

// One input is one raw cell of an object or attachment column.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto cell = std::as_bytes(std::span(data, size));
    tryTheRules(cell);
    for (auto* const decode : {decodeObjectCell, decodeAttachmentCell}) {
        tryTheObject(decode, cell, true);
        tryTheObject(decode, cell, false);
    }
    return 0;
}
