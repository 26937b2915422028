// SPDX-License-Identifier: MIT
#include "browser/RowOrder.h"

#include "browser/SortKeys.h"
#include "rows/RowStore.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vellumo {

class RowStore;

// Puts the rows of a table in the ascending order of one column, once. The keys are compared eight bytes at a time, and
// these lie beside the row numbers: most of the work never leaves the array that is being sorted.
class KeySorter {
public:
    // The store outlives the sorter.
    KeySorter(const RowStore& rows, std::size_t column, SortKind kind, std::stop_token stop);

    // `order`: all row numbers, nulls first. `groupStarts`: where each run of equal values starts in it, ascending.
    // Nothing of use when it was stopped.
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
    void sortByHeads(std::span<Entry> entries) const;
    void sortEqualHeads(std::span<Entry> entries, std::size_t depth);
    void sortByWholeTexts(std::span<Entry> entries);
    [[nodiscard]] int compareTexts(std::uint32_t left, std::uint32_t right) const;
    void finish(std::span<const Entry> equal);

    const RowStore& m_rows;
    std::size_t m_column;
    SortKind m_kind;
    std::stop_token m_stop;
    std::string m_keys;                            // one after the other in row order
    std::vector<std::uint64_t> m_keyEnds;          // one a row
    std::vector<Entry> m_entries;                  // one a row that is not null
    std::vector<std::uint32_t>* m_order = nullptr; // the caller's, while sort() runs
    std::vector<std::uint32_t>* m_groupStarts = nullptr;
};

namespace {

// Longer keys are cut, and texts whose keys agree so far compared as a whole: bounds the memory that long memos take.
constexpr std::size_t longestKey = 1024;
constexpr std::size_t headSize = 8;
// What is sorted in one go, between two looks whether to stop.
constexpr std::size_t entriesAtOnce = 1 << 16;

} // namespace

KeySorter::KeySorter(const RowStore& rows, std::size_t column, SortKind kind, std::stop_token stop)
    : m_rows(rows)
    , m_column(column)
    , m_kind(kind)
    , m_stop(std::move(stop))
{
    m_keyEnds.reserve(rows.rowCount());
    m_entries.reserve(rows.rowCount());
}

void KeySorter::sort(std::vector<std::uint32_t>& order, std::vector<std::uint32_t>& groupStarts)
{
    m_order = &order;
    m_groupStarts = &groupStarts;
    order.clear();
    order.reserve(m_rows.rowCount());
    groupStarts.clear();
    if (m_rows.kinds()[m_column] == CellKind::Blob) {
        collectObjects();
    } else {
        collectTexts();
    }
    if (!order.empty()) groupStarts.push_back(0); // the nulls
    sortFrom(m_entries, 0);
}

void KeySorter::addKey(std::uint32_t row, std::string_view text)
{
    if (text.empty()) {
        m_order->push_back(row);
    } else {
        const auto start = m_keys.size();
        appendSortKey(m_kind, text, m_keys);
        m_keys.resize(std::min(m_keys.size(), start + longestKey));
        m_entries.push_back({0, row});
    }
    m_keyEnds.push_back(m_keys.size());
}

void KeySorter::collectTexts()
{
    std::uint32_t row = 0;
    for (const auto& group : m_rows.groups()) {
        if (m_stop.stop_requested()) return;
        const auto& chunk = group.texts[m_column];
        for (std::uint32_t i = 0; i < group.rowCount; ++i)
            addKey(row++, chunk.text(i));
    }
}

// Objects have no order of their own: each gets the same key.
void KeySorter::collectObjects()
{
    std::uint32_t row = 0;
    for (const auto& group : m_rows.groups())
        for (const auto& blob : group.blobs[m_column]) {
            if (blob) {
                m_keys += '\1';
                m_entries.push_back({0, row});
            } else {
                m_order->push_back(row);
            }
            m_keyEnds.push_back(m_keys.size());
            ++row;
        }
}

std::string_view KeySorter::key(std::uint32_t row) const
{
    const auto start = row == 0 ? 0 : m_keyEnds[row - 1];
    return std::string_view(m_keys).substr(start, m_keyEnds[row] - start);
}

std::uint64_t KeySorter::headOf(std::uint32_t row, std::size_t depth) const
{
    const auto whole = key(row);
    const auto rest = whole.substr(std::min(depth, whole.size()));
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < headSize; ++i)
        head = head << 8 | (i < rest.size() ? static_cast<unsigned char>(rest[i]) : 0U);
    return head;
}

void KeySorter::sortFrom(std::span<Entry> entries, std::size_t depth)
{
    if (m_stop.stop_requested()) return;
    for (auto& entry : entries)
        entry.head = headOf(entry.row, depth);
    sortByHeads(entries);
    if (m_stop.stop_requested()) return;
    for (std::size_t start = 0; start < entries.size();) {
        auto end = start + 1;
        while (end < entries.size() && entries[end].head == entries[start].head)
            ++end;
        sortEqualHeads(entries.subspan(start, end - start), depth);
        start = end;
    }
}

void KeySorter::sortByHeads(std::span<Entry> entries) const
{
    const auto isBefore = [](const Entry& left, const Entry& right) {
        return left.head != right.head ? left.head < right.head : left.row < right.row;
    };
    if (m_stop.stop_requested()) return;
    if (entries.size() <= entriesAtOnce) return std::sort(entries.begin(), entries.end(), isBefore);
    const auto half = entries.size() / 2;
    std::nth_element(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(half), entries.end(), isBefore);
    sortByHeads(entries.first(half));
    sortByHeads(entries.subspan(half));
}

// `entries` agree up to and including the eight bytes at `depth`, and stand in stored order.
void KeySorter::sortEqualHeads(std::span<Entry> entries, std::size_t depth)
{
    const bool isKeyOver = (entries.front().head & 0xFF) == 0; // no key contains a zero byte
    if (entries.size() == 1 || isKeyOver) {
        finish(entries);
    } else if (depth + headSize < longestKey) {
        sortFrom(entries, depth + headSize);
    } else {
        sortByWholeTexts(entries);
    }
}

void KeySorter::sortByWholeTexts(std::span<Entry> entries)
{
    std::stable_sort(entries.begin(), entries.end(),
        [this](const Entry& left, const Entry& right) { return compareTexts(left.row, right.row) < 0; });
    for (std::size_t start = 0; start < entries.size();) {
        auto end = start + 1;
        while (end < entries.size() && compareTexts(entries[start].row, entries[end].row) == 0)
            ++end;
        finish(entries.subspan(start, end - start));
        start = end;
    }
}

int KeySorter::compareTexts(std::uint32_t left, std::uint32_t right) const
{
    const auto leftText = m_rows.text(left, m_column);
    const auto rightText = m_rows.text(right, m_column);
    if (leftText == rightText || m_stop.stop_requested()) return 0;
    std::string leftKey;
    std::string rightKey;
    appendSortKey(m_kind, leftText, leftKey);
    appendSortKey(m_kind, rightText, rightKey);
    return leftKey.compare(rightKey);
}

void KeySorter::finish(std::span<const Entry> equal)
{
    m_groupStarts->push_back(static_cast<std::uint32_t>(m_order->size()));
    for (const auto& entry : equal)
        m_order->push_back(entry.row);
}

RowOrder::RowOrder(const RowStore& rows, std::size_t column, SortKind kind, std::stop_token stop)
{
    KeySorter sorter(rows, column, kind, std::move(stop));
    sorter.sort(m_rows, m_groupStarts);
}

std::vector<std::uint32_t> RowOrder::rows(int direction) const
{
    if (direction >= 0) return m_rows;
    std::vector<std::uint32_t> reversed;
    reversed.reserve(m_rows.size());
    auto end = m_rows.size();
    for (auto start = m_groupStarts.rbegin(); start != m_groupStarts.rend(); ++start) {
        reversed.insert(reversed.end(), m_rows.begin() + *start, m_rows.begin() + static_cast<std::ptrdiff_t>(end));
        end = *start;
    }
    return reversed;
}

} // namespace vellumo
