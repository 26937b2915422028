// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Bytes.h"
#include "samples/JetVersion.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// Properties of tables and columns and the block (LvProp) in which the catalog keeps them.
namespace vellumo::samples {

enum class PropertyType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3, // 2 bytes; 4 when display-only
    Long = 4,
    Guid = 9,
    Text = 10,
    Binary = 11,
    Memo = 12,
};

struct Property {
    std::string name;
    PropertyType type = PropertyType::Text;
    // A number for Boolean (0, 1), Byte, Integer and Long; text for Text and Memo; else bytes.
    std::variant<std::int32_t, std::string, Bytes> value;
    bool displayOnly = false;
};

[[nodiscard]] Property booleanProperty(std::string name, bool value);
[[nodiscard]] Property byteProperty(std::string name, std::uint8_t value);
[[nodiscard]] Property integerProperty(std::string name, std::int16_t value);
[[nodiscard]] Property textProperty(std::string name, std::string value);
[[nodiscard]] Property memoProperty(std::string name, std::string value);

// The properties of one table or column.
struct PropertyOwner {
    std::string column; // empty = the table itself
    const std::vector<Property>* properties = nullptr;
};

// nullopt when a name or text has no form in the version (Jet 3: a character outside code page 1252).
[[nodiscard]] std::optional<Bytes> encodeProperties(const std::vector<PropertyOwner>& owners, JetVersion version);

} // namespace vellumo::samples
