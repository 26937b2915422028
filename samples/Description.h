// SPDX-License-Identifier: MIT
#pragma once

#include "samples/JetVersion.h"
#include "samples/Properties.h"
#include "samples/Values.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What a database to be written holds, in code. Names and texts are UTF-8. Only data: writeDatabase() checks it.
namespace vellumo::samples {

// Codes as the format stores them.
enum class ColumnType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
    Complex = 18, // a number of a group of values
    BigInt = 19,
    DateTimeExtended = 20,
};

// What the cells of a column hold when that is not one value. Such a column's type is left to the writer.
enum class Complex {
    None,
    Files,    // an attachment column
    Texts,    // several texts
    Numbers,  // several numbers
    Versions, // the history of a memo, of which Access shows nothing
};

enum class Placement {
    Usual,    // Binary, Text, Ole and Memo variable, the others fixed
    Fixed,    // in the fixed part of the row; not for Ole and Memo
    Variable, // after it; not for Boolean
};

struct ColumnDescription {
    std::string name{};
    ColumnType type = ColumnType::Text;
    int size = 0; // Text: characters, Binary: bytes; 0 = 255
    std::optional<int>
        number{}; // 0..254, the order of the values in a row; by default the place in the list of columns
    Placement placement = Placement::Usual;
    int precision = 18;      // Numeric only
    int scale = 0;           // Numeric only
    bool autonumber = false; // Long or Guid
    bool hyperlink = false;  // Memo
    // A value in the wrapper that calculated columns of newer files have; needs the property "ResultType".
    bool calculated = false;
    std::optional<ColumnType> entryType{}; // that the definition states, if not `type`: calculated columns have such
    bool compressed = false;               // Jet 4: texts are stored compressed where that is shorter
    bool deleted = false;                  // takes a number and room in rows, but is no longer listed in the definition
    std::vector<Property> properties{};    // of a complex column: of its values
    Complex complex = Complex::None;       // newer files only
    std::string historyOf{};               // the memo of Complex::Versions

    // As it is stored, for columns made by hand.
    static constexpr std::uint8_t valueFlag = 0x04;
    static constexpr std::uint8_t groupFlag = 0x08;
    static constexpr std::uint8_t attachmentFlag = 0x10;
    static constexpr std::uint8_t historyFlag = 0x20;
    std::uint8_t moreFlags = 0;
    std::uint32_t complexId = 0;
};

enum class RowState {
    Live,
    Deleted,      // marked as deleted, the bytes still there
    DeletedEmpty, // the same after the file was compacted: no bytes left
    Moved,        // the row's place holds a pointer, the row itself lies on another page; scans meet it there
};

// One value for each entry of TableDescription::columns in that order; missing ones at the end are null.
struct Row {
    std::vector<Value> values{};
    RowState state = RowState::Live;
    int columnCount = 0; // columns with this number or a higher one were added after the row was written; 0 = none
    int slack = 0;       // unused bytes between values and offsets; tables with variable columns only
};

// Fills `row` with the row number `index` (0, 1, ..; asked for in this order, each once) or returns false: there are no
// more. On entry `row` is a live row whose values are those of the row before, so that their memory can be used again.
using RowSource = std::function<bool(std::size_t index, Row& row)>;

[[nodiscard]] RowSource rowsOf(std::vector<Row> rows);
[[nodiscard]] RowSource rowsOf(std::vector<std::vector<Value>> rows);

struct IndexColumn {
    std::string column{};
    bool ascending = true;
};

struct IndexDescription {
    std::string name{};
    std::vector<IndexColumn> columns{}; // 1 to 10
    bool primary = false;               // implies unique and required
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
    std::optional<int> number{}; // by default the place in the list of indexes; leave out numbers to make gaps
};

struct RelationDescription {
    std::string name{};
    std::string table{}; // the referencing one
    std::vector<std::string> columns{};
    std::string referencedTable{};
    std::vector<std::string> referencedColumns{}; // pairwise; when enforced, the columns of a unique index
    bool oneToOne = false;
    bool enforced = true;
    bool cascadeUpdates = false;
    bool cascadeDeletes = false;
};

// A row of a saved query; what it means depends on the attribute. Empty texts are stored as null.
struct QueryRow {
    int attribute = 0;
    std::string name1{};
    std::string name2{};
    std::string expression{};
    std::optional<int> flag{};
};

// An entry of the catalog that is no table of this file.
struct CatalogEntry {
    std::string name{};
    int type = 5; // 4 and 6 linked tables, 5 query, -32768 form ..
    std::uint32_t flags = 0;
    std::vector<QueryRow> query{}; // those of one attribute in their order
    std::string database{};        // of linked tables
    std::string connect{};
    std::string foreignName{};
};

struct TableDescription {
    std::string name{};
    std::vector<ColumnDescription> columns{}; // in stored order
    std::vector<IndexDescription> indexes{};
    RowSource rows{}; // empty = no rows
    std::vector<Property> properties{};
    std::uint32_t flags = 0;                       // catalog flags: 8 hidden, 2 and 0x80000000 system
    std::optional<std::uint32_t> statedRowCount{}; // a row count to state in place of the true one
    CatalogEntry link{.type = 1};                  // type 4: a table on a server, to which this one leads
};

struct DatabaseDescription {
    JetVersion version = JetVersion::Jet4;
    int newerVersion = 0; // 2 to 6: a file of Access 2007 to 2019, which is laid out like one of Jet 4
    std::vector<TableDescription> tables{};
    std::vector<RelationDescription> relations{};
    std::vector<CatalogEntry> otherEntries{};
    Date created{45000.5};         // 2023-03-15 12:00
    std::uint32_t databaseKey = 0; // pages are encoded with it when it is not 0
    std::string password{};        // Jet 4, ASCII, up to 20 characters; encodes nothing
};

} // namespace vellumo::samples
