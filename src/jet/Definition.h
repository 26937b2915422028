#pragma once

#include "jet/TableDef.h"

#include <functional>
#include <optional>

// A table definition read from its raw bytes. The layout is that of Jet 3 and Jet 4 table-definition pages; it is
// written down where it is decoded, in the source.
namespace vellumo::jet {

// All pages of a definition joined, the headers of those behind the first left out. Empty when the first page is none
// of a definition; `isComplete` false when a later one is not, or the chain circles or is too long.
struct DefinitionBytes {
    std::vector<std::uint8_t> bytes;
    bool isComplete = false;
};
[[nodiscard]] DefinitionBytes readDefinition(Pages& pages, PageBuffer& buffer, std::uint32_t firstPage);

// Decodes a name of the file's version.
using NameDecoder = std::function<std::string(ByteSpan)>;

struct ParsedDefinition {
    TableDef table; // without name, page, properties and data pages
    // Whether every part ended where it should: a definition whose counts or lengths are damaged can still make sense
    // by chance, but then the parts behind do not fit together.
    bool isSound = false;
};

// `bytes` as above. nullopt when the columns lie outside of them or contradict each other; such a table cannot be read.
// Without its indexes it can.
[[nodiscard]] std::optional<ParsedDefinition> parseDefinition(
    ByteSpan bytes, bool isJet3, const NameDecoder& decodeName);

} // namespace vellumo::jet
