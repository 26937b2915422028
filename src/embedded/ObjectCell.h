// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <cstddef>
#include <memory>

namespace vellumo {

class TAdmBlobData;

// What decoding the object cells of one file may still unpack. Shared by the cells that one reader decodes.
struct UnpackBudget {
    std::size_t bytesLeft = 0; // made by inflating, of all further cells together, be they good or broken
    bool isExceeded = false;   // set when a cell was left packed for lack of it; never unset here
};

// The object that a cell holds; never null for a cell with bytes, null for one without. `stored`: the raw value of an
// OLE Object or Attachment cell; `isWhole`: false when the value broke off where it was read.
//
// Bytes that no rule can decode are kept as they are stored, with the extension that their content suggests. Paint's
// and static pictures, device-independent bitmaps and the PDF of an Acrobat object come out as whole files. A link has
// the path that it points to, and the picture that was kept to show it, or else the cell's bytes.
//
// Damaged is an object of which bytes are missing, whatever was made of the rest: the value broke off; the wrapper or
// a package states more than is there (one that states less is cut to it, and whole); a deflated stream breaks off or
// yields more than is stated, in which case what was unpacked so far is kept; or the budget, or the limit for one
// object, was hit, in which case the packed bytes are kept. What merely is of an unknown kind is whole.
//
// Only inflating counts against the budget: all else is no larger than the cell. Any thread. std::bad_alloc may leave.
[[nodiscard]] std::shared_ptr<TAdmBlobData> decodeObjectCell(Bytes stored, bool isWhole, UnpackBudget& budget);

} // namespace vellumo
