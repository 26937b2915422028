#pragma once

#include "browser/SortKeys.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vellumo {

class RowStore;

// Puts the rows of a table in the ascending order of one column, once. The keys are compared eight bytes at a time, and
// these lie beside the row numbers: most of the work never leaves the array that is being sorted.
class KeySorter {
public:
    // The store outlives the sorter.
    KeySorter(const RowStore& rows, std::size_t column, SortKind kind);

    // `order`: all row numbers, nulls first. `groupStarts`: where each run of equal values starts in it, ascending.
    void sort(std::vector<std::uint32_t>& order, std::vector<std::uint32_t>& groupStarts);

private:
    struct Entry {
        std::uint64_t head; // the next eight bytes of the key as a number, zeros behind its end
        std::uint32_t row;
    };

    void addKey(std::uint32_t row, std::string_view text);
    void collectTexts();
    void collectObjects();
    [[nodiscard]] std::string_view key(std::uint32_t row) const;
    [[nodiscard]] std::uint64_t headOf(std::uint32_t row, std::size_t depth) const;
    void sortFrom(std::span<Entry> entries, std::size_t depth);
    void sortEqualHeads(std::span<Entry> entries, std::size_t depth);
    void sortByWholeTexts(std::span<Entry> entries);
    [[nodiscard]] int compareTexts(std::uint32_t left, std::uint32_t right) const;
    void finish(std::span<const Entry> equal);

    const RowStore& m_rows;
    std::size_t m_column;
    SortKind m_kind;
    std::string m_keys;                            // one after the other in row order
    std::vector<std::uint64_t> m_keyEnds;          // one a row
    std::vector<Entry> m_entries;                  // one a row that is not null
    std::vector<std::uint32_t>* m_order = nullptr; // the caller's, while sort() runs
    std::vector<std::uint32_t>* m_groupStarts = nullptr;
};

} // namespace vellumo
