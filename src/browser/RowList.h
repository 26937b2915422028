// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RecordSearch.h"
#include "browser/RowOrder.h"

#include <memory>
#include <optional>
#include <stop_token>

namespace vellumo {

// Which rows of a table are wanted, and in which order.
struct RowWish {
    SearchSettings search;
    std::size_t column = 0;
    int direction = 0; // of the column: 1 ascending, -1 descending, 0 stored order

    bool operator==(const RowWish&) const = default;
};

// The rows that were wished for. Cheap to copy.
struct RowList {
    using Rows = std::shared_ptr<const std::vector<std::uint32_t>>;

    RowWish wish;
    Rows found; // ascending; null: without a search
    Rows rows;  // null: all, in stored order
};

// The making of a list. Whoever asks for it says what is known already; then any thread may run it.
struct RowListTask {
    const RowStore* store; // unchanged while it runs
    SortKind sortKind;     // of the wish's column
    std::optional<RowList> known;
    std::shared_ptr<const RowOrder> order; // by the wish's column; null: to be sorted
    RowList list;                          // its wish at first, the rest after run()

    [[nodiscard]] bool needsSearch() const;
    [[nodiscard]] bool needsSort() const { return list.wish.direction != 0 && !order; }
    // So long that people would notice.
    [[nodiscard]] bool takesLong() const;
    // When it is stopped, which takes effect at once, the list is of no use.
    void run(const std::stop_token& stop = {});

private:
    [[nodiscard]] RowList::Rows search(const std::stop_token& stop) const;
    [[nodiscard]] RowList::Rows ordered() const;
};

} // namespace vellumo
