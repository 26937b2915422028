#pragma once

#include "jet/TableDef.h"

#include <functional>
#include <optional>
#include <span>

// A table definition read from its raw bytes: what libmdb loses on the way (the stored order of columns, their flag
// bytes, the physical index behind a logical one) or mixes up (precision and scale). The layout is that of Jet 3 and
// Jet 4 table-definition pages; it is written down where it is decoded, in the source.
namespace vellumo::jet {

struct RawDefinition {
    std::uint32_t rowCount = 0;
    std::vector<ColumnDef> columns; // in stored order
    std::vector<IndexDef> indices;
};

// Decodes a name or text of the file's version.
using NameDecoder = std::function<std::string(std::span<const std::uint8_t>)>;

// `bytes`: all pages of the definition joined, the headers of the pages behind the first left out. nullopt when
// something lies outside of them; such a table cannot be read.
[[nodiscard]] std::optional<RawDefinition> parseDefinition(
    std::span<const std::uint8_t> bytes, bool isJet3, const NameDecoder& decodeName);

} // namespace vellumo::jet
