// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vellumo {

// Told about the progress of an opening on the thread that opens: rows read so far, and rows expected in all as the
// file states them (a hint: real files are off by some, and it may be 0). Returns false to stop.
using OpenObserver = std::function<bool(std::uint64_t rowsDone, std::uint64_t rowsExpected)>;

// What to look for beside the sound content of a file.
enum class Salvage : std::uint8_t {
    None,
    LostRows,           // tables that the catalogue does not name, and rows on pages that their table does not list
    LostAndDeletedRows, // and deleted rows whose bytes still stand in their page
};

// How to open a file, for all who have a part in it.
struct OpenOptions {
    OpenObserver observer{};         // may be empty
    unsigned readerCount = 0;        // threads that read rows, the calling one included; 0: as many as there are cores
    Salvage salvage = Salvage::None; // what is found becomes tables of their own, TAdmMDBTable::origin() tells
    bool newerFormats = false;       // accept files of Access 2007 to 2019
    std::optional<std::string> password{}; // UTF-8, for encrypted files of those
    std::optional<int> codePage{};         // of the texts of an Access 97 file, in place of the one that it states
    bool checksIndexes = false;            // hold the rows against the indexes: slower, and finds more of what is lost
};

} // namespace vellumo
