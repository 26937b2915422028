#pragma once

#include "embedded/Bytes.h"

#include <cstddef>
#include <memory>

namespace vellumo {

class TAdmBlobData;

// What decoding the object cells of one file may still unpack. Shared by the cells that one reader decodes.
struct UnpackBudget {
    std::size_t bytesLeft = 0; // unpacked bytes, of all further cells together
    bool isExceeded = false;   // set when a cell was left packed for lack of it; never unset here
};

// The object that a cell holds; never null for a cell with bytes, null for one without. `stored`: the raw value of an
// OLE Object or Attachment cell; `isWhole`: false when the value broke off where it was read, so that no payload of it
// may pass for a whole file. Bytes that no rule can decode are kept as they are stored, with the extension that their
// content suggests. Any thread.
[[nodiscard]] std::shared_ptr<TAdmBlobData> decodeObjectCell(Bytes stored, bool isWhole, UnpackBudget& budget);

} // namespace vellumo
