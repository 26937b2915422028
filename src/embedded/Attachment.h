// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/OleField.h"

#include <optional>

// The cells of attachment columns: a file behind a small record that tells its extension, stored as it is or deflated.
namespace vellumo {

// Reads a whole inner record. False when it makes no sense.
[[nodiscard]] bool unwrapAttachedFile(Bytes record, OlePayload& out);

// An inner record that is stored deflated.
struct DeflatedRecord {
    std::size_t roomNeeded = 0; // bytes that hold whatever it may unpack to, as far as the cell is to be believed
    Bytes stream;               // raw deflate
};

// None when the body holds no such record, or states a size below that of an empty one.
[[nodiscard]] std::optional<DeflatedRecord> deflatedRecordFrom(Bytes body);

// Reads a body that is not deflated; one with a flag of no known meaning is the payload itself. False when it makes no
// sense.
[[nodiscard]] bool unwrapUndeflated(Bytes body, OlePayload& out);

} // namespace vellumo
