// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A lookup column stores one thing, often a number, and Access shows another, often a name, that it looks up in a list
// or a table. Here that is done once for a whole table: its copy holds what is shown, so that whoever searches, sorts
// or writes the copy does so with what people see. The copy shares all other values with the table.
namespace vellumo {

enum class LookupState {
    None,       // the column shows what it stores
    Resolved,   // it can be told what it shows
    Unresolved, // it shows something else, of which only Access can tell what
};
[[nodiscard]] LookupState lookupState(const TAdmMDBColumn& column);

// Whether what the column shows is to be looked up in a table or query, resolved or not.
[[nodiscard]] bool hasTableLookup(const TAdmMDBColumn& column);

// Told how many rows were gone through; returns false to stop.
using LookupObserver = std::function<bool(std::uint64_t rowsDone)>;
// The rows that lookUp() goes through: those of the table once a column, and those of each source. 0 when nothing is to
// be looked up.
[[nodiscard]] std::uint64_t lookupRowCount(const TAdmMDBTable& table);

// What a column shows.
struct ShownColumn {
    LookupState state = LookupState::None;
    std::vector<TextChunk> texts{}; // one a group of rows when it is resolved
    std::size_t longest = 0;        // of them, in characters
};
using ShownColumns = std::vector<ShownColumn>; // one a column
// Goes through the rows of the table and of others of its file, on any thread. nullopt: stopped.
[[nodiscard]] std::optional<ShownColumns> lookUp(const TAdmMDBTable& table, const LookupObserver& observer = {});

// A copy with the shown texts in place of the stored values in every column whose lookup is resolved; such a column is
// a text column, and keys that it was part of are not keys any more. A stored value that the list does not have stays.
// Of several values each is looked up; where it cannot be told where one of them ends, all stay.
// Null when no column of the table is resolved. The copy may outlive the table. Main thread only.
[[nodiscard]] std::unique_ptr<TAdmMDBTable> tableWithLookupTexts(const TAdmMDBTable& table, ShownColumns columns);

// What looking up leaves different from what people may expect.
struct LookupNote {
    enum class Kind {
        Unresolved,   // `name`: a column that shows what is stored
        NoIndex,      // `name`: an index that is left out, because a text stands in the place of its key
        NoForeignKey, // `name`: a relation, the same
    };
    Kind kind;
    std::string table{};
    std::string name{};
};
// The note as a sentence (localised).
[[nodiscard]] std::string lookupNoteText(const LookupNote& note);

struct LookupCopy {
    std::unique_ptr<TAdmMDBFile> file; // null: stopped
    std::vector<LookupNote> notes;
};
// A copy of an open file with every table so, for one that is to be written; `file` may go.
[[nodiscard]] LookupCopy fileWithLookupTexts(const TAdmMDBFile& file, const LookupObserver& observer = {});

} // namespace vellumo
