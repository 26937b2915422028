// SPDX-License-Identifier: MIT
#include "samples/Properties.h"

#include "samples/TextCodec.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

using Names = std::vector<std::string>;

Names distinctNames(const std::vector<PropertyOwner>& owners)
{
    Names names;
    for (const auto& owner : owners) {
        for (const auto& property : *owner.properties) {
            if (std::find(names.begin(), names.end(), property.name) == names.end()) names.push_back(property.name);
        }
    }
    return names;
}

bool appendName(Bytes& out, const std::string& name, JetVersion version)
{
    const auto encoded = encodeText(name, version);
    if (!encoded) return false;
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(encoded->size()));
    appendBytes(out, *encoded);
    return true;
}

void appendChunk(Bytes& out, std::uint16_t kind, ByteSpan body)
{
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(body.size() + 6));
    appendNumber<std::uint16_t>(out, kind);
    appendBytes(out, body);
}

Bytes encodeNumber(const Property& property)
{
    const auto number = static_cast<std::uint32_t>(std::get<std::int32_t>(property.value));
    Bytes out;
    appendNumber<std::uint32_t>(out, number);
    if (property.type == PropertyType::Boolean || property.type == PropertyType::Byte) out.resize(1);
    if (property.type == PropertyType::Integer && !property.displayOnly) out.resize(2);
    return out;
}

std::optional<Bytes> encodeValue(const Property& property, JetVersion version)
{
    if (const auto* const text = std::get_if<std::string>(&property.value)) return encodeText(*text, version);
    if (const auto* const bytes = std::get_if<Bytes>(&property.value)) return *bytes;
    return encodeNumber(property);
}

bool appendProperty(Bytes& out, const Property& property, const Names& names, JetVersion version)
{
    const auto value = encodeValue(property, version);
    if (!value) return false;
    const auto nameIndex = std::find(names.begin(), names.end(), property.name) - names.begin();
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(value->size() + 8));
    out.push_back(property.displayOnly ? 0 : 1);
    out.push_back(static_cast<std::uint8_t>(property.type));
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(nameIndex));
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(value->size()));
    appendBytes(out, *value);
    return true;
}

bool appendOwner(Bytes& out, const PropertyOwner& owner, const Names& names, JetVersion version)
{
    Bytes name;
    if (!appendName(name, owner.column, version)) return false;
    Bytes body;
    appendNumber<std::uint32_t>(body, static_cast<std::uint32_t>(name.size() + 4));
    appendBytes(body, name);
    for (const auto& property : *owner.properties) {
        if (!appendProperty(body, property, names, version)) return false;
    }
    appendChunk(out, owner.column.empty() ? 0 : 1, body);
    return true;
}

} // namespace

Property booleanProperty(std::string name, bool value)
{
    return {std::move(name), PropertyType::Boolean, std::int32_t{value}};
}

Property byteProperty(std::string name, std::uint8_t value)
{
    return {std::move(name), PropertyType::Byte, std::int32_t{value}};
}

Property integerProperty(std::string name, std::int16_t value)
{
    return {std::move(name), PropertyType::Integer, std::int32_t{value}, false};
}

Property textProperty(std::string name, std::string value)
{
    return {std::move(name), PropertyType::Text, std::move(value)};
}

Property memoProperty(std::string name, std::string value)
{
    return {std::move(name), PropertyType::Memo, std::move(value)};
}

std::optional<Bytes> encodeProperties(const std::vector<PropertyOwner>& owners, JetVersion version)
{
    const auto names = distinctNames(owners);
    Bytes nameChunk;
    for (const auto& name : names) {
        if (!appendName(nameChunk, name, version)) return std::nullopt;
    }
    using namespace std::string_view_literals;
    Bytes out;
    appendText(out, version == JetVersion::Jet3 ? "KKD\0"sv : "MR2\0"sv);
    appendChunk(out, 0x80, nameChunk);
    for (const auto& owner : owners) {
        if (!appendOwner(out, owner, names, version)) return std::nullopt;
    }
    return out;
}

} // namespace vellumo::samples
