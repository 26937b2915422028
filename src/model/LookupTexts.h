// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <memory>
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

// A copy with the shown texts in place of the stored values in every column whose lookup is resolved; such a column is
// a text column, and keys that it was part of are not keys any more. A stored value that the list does not have stays.
// Null when no column of the table is resolved. The copy may outlive the table.
[[nodiscard]] std::unique_ptr<TAdmMDBTable> tableWithLookupTexts(const TAdmMDBTable& table);

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
    std::unique_ptr<TAdmMDBFile> file; // never null
    std::vector<LookupNote> notes;
};
// A copy of an open file with every table so, for one that is to be written; `file` may go.
[[nodiscard]] LookupCopy fileWithLookupTexts(const TAdmMDBFile& file);

} // namespace vellumo
