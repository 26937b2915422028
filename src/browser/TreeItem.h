#pragma once

#include "model/TAdmMDBFile.h"

namespace vellumo {

// What a row of the tree, or an entry of a jump bar, stands for: nothing, a file, or a table of a file. Borrowed; every
// keeper of one lets go of it before its file is closed or leaves the list.
struct TreeItem {
    TAdmMDBFile* file = nullptr;
    TAdmMDBTable* table = nullptr; // of `file`

    [[nodiscard]] static TreeItem of(TAdmMDBFile& file) { return {&file, nullptr}; }
    [[nodiscard]] static TreeItem of(TAdmMDBTable& table) { return {table.file(), &table}; }

    [[nodiscard]] bool isNone() const { return file == nullptr; }
    [[nodiscard]] bool isFile() const { return file != nullptr && table == nullptr; }
    [[nodiscard]] bool isTable() const { return table != nullptr; }

    bool operator==(const TreeItem&) const = default;
};

} // namespace vellumo
