// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <compare>
#include <cstdint>
#include <string>

namespace vellumo {

// What a row of the tree, or an entry of a jump bar, stands for: nothing, a file, or a table of a file. Borrowed, for
// as long as its file is neither closed nor taken out of the list: whoever wants to remember one keeps its ItemId.
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

// The name of a TreeItem, to be kept whatever becomes of it. FileList gives it and finds what it names.
struct ItemId {
    std::uint64_t file = 0; // no other entry of the list ever has the same; 0: nothing
    int table = -1;         // its place among the file's tables; -1: the file itself
    std::string tableName;  // places change when a file is opened again, and a damaged file may use a name twice

    [[nodiscard]] bool isNone() const { return file == 0; }
    [[nodiscard]] bool isTable() const { return table >= 0; }

    auto operator<=>(const ItemId&) const = default;
};

} // namespace vellumo
