#pragma once

#include "embedded/Bytes.h"

#include <string>
#include <vector>

namespace vellumo {

// What an object cell holds once its wrappers are off.
struct OlePayload {
    std::vector<std::byte> data;
    std::string extension; // without the dot, as the cell spells it (no encoding is known); "" when none is known
};

// Takes the wrappers off the whole raw value of an OLE Object or Attachment cell. 0: `out` holds the payload, which may
// be empty. 1: the cell is broken (or memory is short), and `out` is untouched. Any thread; in memory only.
[[nodiscard]] int mdb_read_ole_field(Bytes cell, OlePayload& out);

} // namespace vellumo
