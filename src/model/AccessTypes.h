#pragma once

#include <string_view>

namespace vellumo {

// Codes of the column types as the format stores them.
enum class AccessType {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    LongInteger = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    OLE = 11,
    Memo = 12,
    ReplicationId = 15,
    Numeric = 16,
    ComplexValue = 18,
};

// The name that Access gives to a type code; "" for a code that no column has.
[[nodiscard]] std::string_view accessTypeName(int code);

} // namespace vellumo
