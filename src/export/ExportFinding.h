// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// What a target cannot take as the file holds it, and what became of it. A new kind is one row of the table in
// ExportFinding.cpp.
enum class FindingKind : std::uint8_t {
    Unreadable,         // written as null
    NotANumberAsNull,   // infinite values too
    NotANumberAsText,   //
    DigitsAsText,       // numbers of more digits than the target keeps
    DateAsText,         // dates that the target has no number for
    EmptyText,          // written as null
    TextCut,            // detail: how much a cell holds
    LineBreaks,         // CR LF became LF
    CharactersReplaced, // by U+FFFD
    CharactersEscaped,  // detail: in what form
    TextEncoded,        // as base64
    FormulaGuarded,     // an apostrophe in front
    BytesLeftOut,       // only their number was written
    FilesLeftOut,       // those of a cell behind the first, which is its value
    // Of SQL, values:
    MinusZero,       // written as 0
    FractionRounded, // of dates, to six digits
    TooLong,         // for a server that is not configured for it
    // and definitions; detail: the name of what it is about, as it is there or as it was.
    NameChanged,
    NullsAgainstRule,
    EmptyAgainstRule,
    DefaultLeftOut, // detail: the expression
    CommentCut,
    NumberingLost,
    RepeatedKeys,
    IndexLeftOut,
    IndexShortened,
    RelationUnchecked,
    RelationLeftOut,
    CascadeLost,
    // Of the classic style, told before it is written.
    ObjectsLeftOut,
    ObjectsRefused, // detail of this and the others below: the target
    ValuesRefused,
    TextsRefused,
    NumbersRefused,
    DatesRefused,
    TextsTooLong,
    NumbersRounded,
    NumbersParted,
    BytesAsDigits,
    ValuesAsText,
    BackslashesDoubled,
    ZerosLost,
    EmptyForNull,
    SecondsLost,
    MillisecondsLost,
    TextsBreakXML,
    NameBreaksXML,
    CutAtZero,
    NotInEncoding, // count: letters
    EncodingNotSaid,
    NoType,
    NameCut,
    NameRefused,
    RowsTooWide,
    RelationBroken, // column of this and the others below: the relation
    RelationToNowhere,
    RelationEnforced,
    RelationSetsNull,
};

struct ExportFinding {
    FindingKind kind;
    std::string table;  // "" for what concerns all tables
    std::string column; // "" for what concerns the table as a whole
    std::string detail; // fills the text's last placeholder
    std::size_t count = 0;
};

// What writers find while they write, counted by table, column, kind and detail; in the order in which they came.
class ExportFindings {
public:
    void add(FindingKind kind, std::string_view table, std::string_view column, std::size_t count = 1,
        std::string_view detail = {});
    [[nodiscard]] const std::vector<ExportFinding>& all() const { return m_findings; }

private:
    std::vector<ExportFinding> m_findings;
};

// The finding as a line (localised): "Products.Remark: 3 texts were cut after 32767 characters."
[[nodiscard]] std::string findingText(const ExportFinding& finding);

// The first findings as lines, then one that counts the rest.
[[nodiscard]] std::vector<std::string> findingLines(const std::vector<ExportFinding>& findings);

// How many of these findings of the classic style the exact style does not have.
enum class Avoided : std::uint8_t { None, Some, All };
[[nodiscard]] Avoided avoidedByExact(const std::vector<ExportFinding>& findings);

} // namespace vellumo
