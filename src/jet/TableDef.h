#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellumo::jet {

struct ColumnDef {
    std::string name; // UTF-8
    int typeCode = 0;
    int size = 0;      // bytes as stored
    int number = 0;    // the column number that rows and indexes use
    int precision = 0; // numeric columns, else 0
    int scale = 0;
    bool isHyperlink = false;
    bool isCalculated = false;
    std::vector<std::pair<std::string, std::string>> properties; // Access properties, name and value
};

struct IndexKeyDef {
    std::size_t column; // position in TableDef::columns
    bool isAscending;
};

struct IndexDef {
    static constexpr int primaryKeyType = 1;
    static constexpr int uniqueFlag = 1;

    std::string name;
    int type = 0; // 0 plain, 1 primary key, 2 foreign key
    int flags = 0;
    std::vector<IndexKeyDef> keys; // in key order; a key whose column does not exist is left out
};

// What a table's definition pages tell. Plain data: it outlives the handle it was read with and may be read by
// several threads.
class TableDef {
public:
    std::string name;
    std::uint32_t definitionPage = 0;
    // As the definition states it; real files are off by some.
    std::uint32_t statedRowCount = 0;
    std::vector<ColumnDef> columns;       // in stored order
    std::vector<std::size_t> numberOrder; // positions in `columns`, ordered by column number
    std::vector<IndexDef> indices;
    // The pages that may hold rows, ascending; all lie inside the file.
    std::vector<std::uint32_t> dataPages;
};

// The Access name of a type code ("Long Integer"), "" for a code that no column has.
[[nodiscard]] std::string_view mdb_get_colbacktype_string_fromMdbType(int typeCode);

} // namespace vellumo::jet
