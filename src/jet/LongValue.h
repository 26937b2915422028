// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Pages.h"

#include <atomic>
#include <vector>

namespace vellumo::jet {

// A memo or object value, put together from where it lies: in the row behind its 12-byte header, in a row of a
// long-value page, or in a chain of such rows.
//
// The header states the length; no more than that is gathered. A chain that breaks off, leads to no long value or
// circles gives what was found up to there and isComplete() = false.
class LongValue {
public:
    // Bytes that the readers of a file may still gather from other pages. Any thread.
    using Budget = std::atomic<std::int64_t>;

    // Both outlive this object.
    LongValue(Pages& pages, Budget& budget)
        : m_pages(pages)
        , m_budget(budget)
    {
    }
    void read(ByteSpan stored);

    // Valid until the next read, and while `stored` is.
    [[nodiscard]] ByteSpan bytes() const { return m_bytes; }
    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    // The value is incomplete because the budget did not suffice.
    [[nodiscard]] bool isOverBudget() const { return m_isOverBudget; }

private:
    [[nodiscard]] ByteSpan rowAtPointer(std::uint32_t pointer);
    [[nodiscard]] bool takeFromBudget(std::size_t count);
    void readOneRow(std::uint32_t pointer, std::size_t length);
    void readChain(std::uint32_t pointer, std::size_t length);

    Pages& m_pages;
    Budget& m_budget;
    PageBuffer m_buffer;
    std::vector<std::uint8_t> m_gathered;
    ByteSpan m_bytes;
    bool m_isComplete = false;
    bool m_isOverBudget = false;
};

} // namespace vellumo::jet
