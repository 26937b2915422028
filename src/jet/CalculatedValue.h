// SPDX-License-Identifier: MIT
#pragma once

#include "jet/RowLayout.h"

namespace vellumo::jet {

// The value of a calculated column, which has a wrapper: 16 bytes, u32 length, value, 3 bytes. Null for a length of 0;
// damaged, with what there is, when that is less than the length states.
[[nodiscard]] inline Cell unwrapped(ByteSpan stored)
{
    constexpr std::size_t lengthOffset = 16;
    constexpr std::size_t valueOffset = 20;
    if (stored.size() < valueOffset) return {stored.empty() ? CellState::Null : CellState::Damaged};
    const std::size_t length = load32(&stored[lengthOffset]);
    if (length > stored.size() - valueOffset) return {CellState::Damaged, stored.subspan(valueOffset)};
    return {length == 0 ? CellState::Null : CellState::Present, stored.subspan(valueOffset, length)};
}

} // namespace vellumo::jet
