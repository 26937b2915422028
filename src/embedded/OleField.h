// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// Whether the bytes begin like a compound file.
[[nodiscard]] bool isOleStream(Bytes bytes);

// Copies the stream `name` of the compound file `file` to `out`. 0: done. 1: `file` is no compound file, or a malformed
// one. 2: it has no such stream, or holds fewer of its bytes than the directory says. `out` is untouched after 1 and 2.
[[nodiscard]] int extractOleStream(Bytes file, std::string_view name, std::vector<std::byte>& out);

// The first stream of the name `lowerCaseName`, in any case and any folder, that is whole and that `isWanted` accepts;
// empty when there is none among the first few.
[[nodiscard]] std::vector<std::byte> findOleStream(
    Bytes file, std::string_view lowerCaseName, const std::function<bool(Bytes)>& isWanted);

// Whether the compound file has an entry of this name at its top.
[[nodiscard]] bool hasOleEntry(Bytes file, std::string_view name);

// What an object cell holds once its wrappers are off.
struct OlePayload {
    std::vector<std::byte> data;
    std::string extension; // without the dot, as the cell spells it (no encoding is known); "" when none is known
};

// Takes the wrappers off the whole raw value of an OLE Object or Attachment cell. 0: `out` holds the payload, which may
// be empty. 1: the cell is broken (or memory is short), and `out` is untouched. Any thread; in memory only.
[[nodiscard]] int mdb_read_ole_field(Bytes cell, OlePayload& out);

} // namespace vellumo
