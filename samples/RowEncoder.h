// SPDX-License-Identifier: MIT
#pragma once

#include "samples/LongValues.h"
#include "samples/TableShape.h"

#include <map>
#include <string>
#include <vector>

namespace vellumo::samples {

// A long value of the row encoded last.
struct EncodedLongValue {
    std::size_t column = 0;       // index in the description
    std::size_t headerOffset = 0; // of its 12 bytes, from the start of the row
    std::vector<RowPlace> pieces; // empty when inline
};

// Turns rows of one table into the bytes of the format.
//
// A row is the number of columns, the fixed values, the variable values one after the other, their offsets from the
// last to the first, their number, and a mask of the columns that are not null. The row knows the columns that there
// were when it was written: offsets and number are left out when none of them was variable. Jet 3 keeps the low bytes
// of the offsets alone and adds, for every 256 bytes of the row, at which value the offsets pass them.
class RowEncoder {
public:
    // `longValues` has an entry for every memo and object column (by its index). All three outlive the encoder.
    RowEncoder(const TableDescription& table, const TableShape& shape, JetVersion version,
        std::map<std::size_t, LongValues>& longValues);

    // The bytes of `row`, valid until the next call; empty when it cannot be stored: see error().
    [[nodiscard]] ByteSpan encode(const Row& row);
    [[nodiscard]] const std::string& error() const { return m_error; }
    [[nodiscard]] const std::vector<EncodedLongValue>& longValues() const { return m_encodedLongValues; }

private:
    [[nodiscard]] const Value& valueOf(const Row& row, std::size_t column) const;
    void startRow(int columnCount);
    [[nodiscard]] bool encodeFixed(const Row& row, int columnCount);
    [[nodiscard]] bool encodeVariable(const Row& row, int columnCount);
    void appendTrailer(std::size_t valuesEnd);
    void appendJumps(std::size_t valuesEnd, std::size_t trailerSize);
    [[nodiscard]] bool appendValue(std::size_t column, const Value& value);
    [[nodiscard]] bool appendCalculated(std::size_t column, const Value& value);
    [[nodiscard]] bool appendResult(const ColumnDescription& column, const Value& value, Bytes& out) const;
    [[nodiscard]] bool appendLongValue(std::size_t column, const Value& value);
    [[nodiscard]] bool appendTextValue(const ColumnDescription& column, const std::string& text, Bytes& out) const;
    [[nodiscard]] bool fail(std::size_t column);
    void setMask(int number)
    {
        m_mask[static_cast<std::size_t>(number) / 8] |= static_cast<std::uint8_t>(1 << number % 8);
    }

    const TableDescription& m_table;
    const TableShape& m_shape;
    JetVersion m_version;
    std::map<std::size_t, LongValues>& m_longValues;
    Bytes m_row;
    Bytes m_mask;
    Bytes m_text;
    std::vector<std::size_t> m_offsets; // of the variable values, from the start of the row
    std::vector<EncodedLongValue> m_encodedLongValues;
    std::string m_error;
};

} // namespace vellumo::samples
