// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"
#include "rows/ColumnType.h"
#include "rows/RowGroup.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vellumo::jet {

// The value of an Access property; one that is no yes or no and no whole number is a text, as that of a cell would be.
using PropertyValue = std::variant<bool, std::int64_t, std::string>;
// The Access properties of a table or a column, name and value, in the order of the file.
using PropertyList = std::vector<std::pair<std::string, PropertyValue>>;

class ValueGroups;

// What the values of a complex column are: files, plain values, or what its memo once was.
enum class ComplexKind : std::uint8_t { Attachments, Values, Versions };
[[nodiscard]] constexpr bool isComplex(ColumnType type)
{
    return type == ColumnType::Attachment || type == ColumnType::MultipleValues;
}

struct ColumnDef {
    std::string name{}; // UTF-8
    ColumnType type = ColumnType::Unknown;
    std::size_t size = 0;          // bytes as stored
    unsigned number = 0;           // the column number that rows and indexes use
    bool isFixed = false;          // lies in the fixed part of a row
    std::size_t fixedOffset = 0;   // from the start of the fixed part
    std::size_t variableIndex = 0; // among the values of the variable part
    int precision = 0;             // numeric columns, else 0
    int scale = 0;
    bool isAutoNumber = false;
    bool isHyperlink = false;
    bool isCalculated = false;
    bool isWrapped = false; // calculated, and so in a wrapper of its own and of the type that the properties tell
    PropertyList properties{};

    // Columns of several values (ComplexColumns.h).
    std::uint32_t complexId = 0;
    ComplexKind complexKind = ComplexKind::Values;
    std::shared_ptr<const ValueGroups> groups{}; // null: not read, or not to be had
    // Those of a table of values: the group of a value, and its own number.
    bool isGroupKey = false;
    bool isValueKey = false;
};

// A hidden column that keeps what a memo was before.
struct HistoryDef {
    ColumnDef column{};
    std::optional<std::size_t> memo{}; // position in TableDef::columns, once it is known
};

struct IndexKeyDef {
    std::size_t column; // position in TableDef::columns
    bool isAscending;
};

struct IndexDef {
    static constexpr int primaryKeyType = 1;
    static constexpr int uniqueFlag = 1;

    std::string name{};
    int type = 0; // 0 plain, 1 primary key, 2 foreign key
    int flags = 0;
    std::vector<IndexKeyDef> keys{}; // in key order; a key whose column does not exist is left out
};

// What a table's definition pages tell. Plain data: it outlives the pages it was read from and may be read by several
// threads.
struct TableDef {
    std::string name{};
    std::uint32_t definitionPage = 0;
    bool isSystem = false; // as the definition says
    // As the definition states it. Real files have more rows than they state, sound ones never fewer.
    std::uint32_t statedRowCount = 0;
    std::int32_t lastAutoNumber = 0; // given out; some files do not keep it
    PropertyList properties{};
    unsigned columnLimit = 0;         // rows know at most this many columns, deleted ones included
    std::vector<ColumnDef> columns{}; // in stored order
    std::vector<HistoryDef> histories{};
    std::vector<IndexDef> indices{};
    std::vector<std::uint32_t> indexRoots{}; // root page of each physical index
    std::uint32_t pageMapPointer = 0;        // to the usage map of the data pages
    PageList dataPages{};
};

// The value as text: "yes" or "no" for true and false, plain digits for numbers.
[[nodiscard]] std::string propertyText(const PropertyValue& value);

// Cells of object columns are kept as blobs, all others as text.
[[nodiscard]] std::vector<CellKind> cellKinds(const TableDef& table);
// Positions in `columns`, ordered by column number.
[[nodiscard]] std::vector<std::size_t> numberOrder(const std::vector<ColumnDef>& columns);

// A table definition read from its raw bytes. The layout is that of Jet 3 and Jet 4 table-definition pages; it is
// written down where it is decoded, in the source.

// All pages of a definition joined, the headers of those behind the first left out. Empty when the first page is none
// of a definition; `isComplete` false when a later one is not, or the chain circles or is too long.
struct DefinitionBytes {
    std::vector<std::uint8_t> bytes;
    bool isComplete = false;
};
[[nodiscard]] DefinitionBytes readDefinition(Pages& pages, PageBuffer& buffer, std::uint32_t firstPage);

// Whether the table is one that the system keeps for itself, as the first page of its definition says; nullopt when it
// does not say: then that page is no first one.
[[nodiscard]] std::optional<bool> isSystemDefinition(ByteSpan page, bool isJet3);

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
