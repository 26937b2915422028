// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"

#include <string_view>

// The ways in which database files get damaged by people, programs and disks, for tests that damage a sound one.
namespace vellumo::samples {

enum class DamageMethod : std::uint8_t {
    LineEndsAdded,   // a transfer program took it for a text: LF became CR LF
    LineEndsRemoved, // and the other way
    CutAnywhere,
    CutAtPage,
    BytesInserted,
    ForeignTail, // the end is not this file's
    PagesSwapped,
    PagesZeroed,
    Catalogue, // bytes of the catalogue's definition and rows
    DefinitionPointers,
    PageHeaders,
    PagesOfFF,
    UsageMaps,
    SectorsZeroed, // 512 bytes each
    PagesDuplicated,
    Counts,    // of a page's rows, of a definition's columns and indexes
    RowBodies, // bytes among the rows of a table
    TailCut,   // up to eight pages are missing
    SingleBits,
};

struct DamageMethodFacts {
    DamageMethod method;
    std::string_view name;
    bool hitsValues; // may put other bytes in the place of values, which nobody can tell from other values
};

[[nodiscard]] std::span<const DamageMethodFacts> damageMethods();

// The bytes of a damaged copy of `file`, a whole file as writeDatabase() makes it, not encoded. The first page is left
// alone. The same seed gives the same damage; the result equals `file` when there is nothing that the method could hit.
[[nodiscard]] Bytes damaged(ByteSpan file, DamageMethod method, std::uint64_t seed);

} // namespace vellumo::samples
