// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Pages of a database made byte by byte, for tests that say what must come out of them.
namespace vellumo::test {

// Little-endian numbers as bytes.
[[nodiscard]] std::string u8(std::size_t value);
[[nodiscard]] std::string u16(std::size_t value);
[[nodiscard]] std::string u32(std::size_t value);
[[nodiscard]] jet::ByteSpan spanOf(std::string_view bytes);
[[nodiscard]] std::string textOf(jet::ByteSpan bytes);

// Pages in memory. One that was not put there cannot be read.
class MemoryPages : public jet::Pages {
public:
    explicit MemoryPages(const jet::PageFormat& format, std::uint32_t count = 100)
        : Pages(format, count)
    {
    }
    std::map<std::uint32_t, std::string> content;
    std::size_t reads = 0;

protected:
    [[nodiscard]] bool readPage(std::uint32_t number, std::uint8_t* to) override;
};

constexpr unsigned deletedRow = 0xC000;
constexpr unsigned movedAway = 0x4000;
constexpr unsigned movedHere = 0x8000;

struct StoredRow {
    std::string bytes;
    unsigned flags = 0;
};
[[nodiscard]] std::string dataPage(
    const jet::PageFormat& format, std::uint32_t owner, const std::vector<StoredRow>& rows);
// Rows of memos and objects.
[[nodiscard]] std::string longValuePage(const jet::PageFormat& format, std::initializer_list<std::string> rows);
// Where the offset of a row stands on a data page.
[[nodiscard]] std::size_t rowEntry(const jet::PageFormat& format, std::size_t row);
// The 12 bytes that a row holds of a value that lies elsewhere, or before one that follows.
[[nodiscard]] std::string longValueHeader(std::size_t lengthAndKind, std::uint32_t pointer);

struct RowParts {
    unsigned columns = 0;
    std::string fixed{};
    std::optional<std::vector<std::string>> values{}; // variable ones; none: written without their offsets and number
    std::string mask{};
    std::vector<unsigned> jumps{}; // Jet 3
};
[[nodiscard]] std::string rowBytes(bool isJet3, const RowParts& parts);

struct ColumnParts {
    std::string name; // ASCII
    unsigned type;
    unsigned number;
    unsigned variableIndex = 0;
    unsigned offset = 0;
    unsigned size = 0;
    unsigned flags = 0; // 1: fixed
    unsigned moreFlags = 0;
    unsigned precision = 0;
    unsigned scale = 0;
};
struct IndexParts {
    std::string name;                            // ASCII
    std::vector<std::pair<unsigned, bool>> keys; // column number, ascending
    unsigned root;                               // page
    unsigned flags;
    unsigned kind;
};
struct DefinitionParts {
    unsigned rows = 0;
    unsigned columnLimit = 0;
    std::uint32_t mapPointer = 0;
    std::vector<ColumnParts> columns{};
    std::vector<IndexParts> indexes{};
};
// As joined from its pages.
[[nodiscard]] std::string definitionBytes(bool isJet3, const DefinitionParts& parts);
// The same on pages of the given numbers, of which there are as many as it takes.
void putDefinition(MemoryPages& pages, const std::string& definition, const std::vector<std::uint32_t>& numbers);

} // namespace vellumo::test
