// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/ObjectCell.h"
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

// The record's bytes as far as they can be unpacked, and zlib's status.
struct Unpacked {
    std::unique_ptr<std::byte[]> buffer;
    Bytes record;
    int status = 0;
};
// What goes over the budget, or over the limit for one object, gives none.
[[nodiscard]] Unpacked unpack(const DeflatedRecord& deflated, UnpackBudget& budget);

// Reads a body that is not deflated; one with a flag of no known meaning is the payload itself. False when it makes no
// sense.
[[nodiscard]] bool unwrapUndeflated(Bytes body, OlePayload& out);

// The file of one value of an attachment column; null for a value without bytes. `stored` and `isWhole` as for
// decodeObjectCell(), whose budget it shares. Other than object cells, which hold whatever a program once put there,
// these have one form, and what is not of it is damaged: then the bytes are kept as they are stored, or as far as they
// were unpacked. The extension is the one that the value states.
[[nodiscard]] std::shared_ptr<TAdmBlobData> decodeAttachmentCell(Bytes stored, bool isWhole, UnpackBudget& budget);

} // namespace vellumo
