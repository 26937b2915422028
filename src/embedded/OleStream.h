#pragma once

#include "embedded/Bytes.h"

#include <functional>
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

} // namespace vellumo
