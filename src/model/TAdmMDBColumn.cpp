// SPDX-License-Identifier: MIT
#include "model/TAdmMDBColumn.h"

#include "model/ConnectionText.h"

#include <charconv>

namespace vellumo {

namespace {

// The number that a property is, or that its text begins with; nullopt where there is none.
std::optional<std::int64_t> numberOf(const jet::PropertyValue& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
    const auto text = jet::propertyText(value);
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

bool isYes(const jet::PropertyValue& value) { return jet::propertyText(value) == "yes"; }

TextFormat textFormatOf(const jet::PropertyValue& value)
{
    const auto text = jet::propertyText(value);
    if (text == "0") return TextFormat::Plain;
    return text == "1" ? TextFormat::Rich : TextFormat::Unknown;
}

} // namespace

void addListedProperties(const jet::PropertyList& properties, Information& list)
{
    constexpr struct {
        std::string_view property;
        PropertyId id;
    } listed[] = {{"Caption", PropertyId::Caption}, {"Format", PropertyId::Format},
        {"InputMask", PropertyId::InputMask}, {"ValidationRule", PropertyId::ValidationRule},
        {"ValidationText", PropertyId::ValidationText}, {"RowSource", PropertyId::RowSource}};
    for (const auto& [wanted, id] : listed)
        for (const auto& [property, value] : properties)
            if (property == wanted)
                if (auto text = withoutPasswords(jet::propertyText(value)); !text.empty())
                    list.push_back({id, std::move(text)});
}

void TAdmMDBColumn::setTextAlign(std::int64_t property)
{
    constexpr TextAlignment inOrderOfNumbers[] = {TextAlignment::Natural, TextAlignment::Left, TextAlignment::Center,
        TextAlignment::Right, TextAlignment::Justified};
    const bool isKnown = property >= 0 && property < std::ssize(inOrderOfNumbers);
    m_textAlign = inOrderOfNumbers[isKnown ? property : 0];
}

void TAdmMDBColumn::setProperties(jet::PropertyList properties)
{
    m_properties = std::move(properties);
    for (const auto& [property, value] : m_properties)
        applyProperty(property, value);
}

void TAdmMDBColumn::applyProperty(std::string_view property, const jet::PropertyValue& value)
{
    if (property == "AllowZeroLength") {
        m_allowZeroLength = isYes(value);
    } else if (property == "UnicodeCompression") {
        m_unicodeCompression = isYes(value);
    } else if (property == "Required") {
        m_required = isYes(value);
    } else if (property == "DecimalPlaces") {
        // What is no number says nothing of places; it stays among the properties.
        if (const auto count = numberOf(value)) m_decimalPlaces = DecimalPlaces{*count};
    } else if (property == "DefaultValue") {
        m_defaultValue = jet::propertyText(value);
    } else if (property == "TextAlign") {
        setTextAlign(numberOf(value).value_or(0));
    } else if (property == "Description") {
        m_description = jet::propertyText(value);
    } else if (property == "ResultType") {
        if (jet::propertyText(value) != "0") m_resultType = columnTypeOfCode(numberOf(value).value_or(0));
    } else if (property == "Expression") {
        m_expression = jet::propertyText(value);
    } else if (property == "TextFormat" && m_type == ColumnType::Memo) {
        m_textFormat = textFormatOf(value);
    }
}

Information TAdmMDBColumn::information() const
{
    Information list = {{PropertyId::Name, name()}, {PropertyId::Type, ColumnTypeInfo{m_type, m_isCalculatedType}}};
    const auto add = [&](PropertyId id, const auto& value) {
        if (value) list.push_back({id, *value});
    };
    if (m_resultType) list.push_back({PropertyId::ResultType, ColumnTypeInfo{*m_resultType, false}});
    add(PropertyId::Expression, m_expression);
    if (m_fieldSize >= 0) list.push_back({PropertyId::Size, std::int64_t{m_fieldSize}});
    if (m_precision >= 0) {
        list.push_back({PropertyId::Precision, std::int64_t{m_precision}});
        list.push_back({PropertyId::Scale, std::int64_t{m_scale}});
    }
    add(PropertyId::AllowZeroLength, m_allowZeroLength);
    add(PropertyId::DecimalPlaces, m_decimalPlaces);
    add(PropertyId::DefaultValue, m_defaultValue);
    add(PropertyId::Required, m_required);
    add(PropertyId::UnicodeCompression, m_unicodeCompression);
    add(PropertyId::TextAlignment, m_textAlign);
    add(PropertyId::Description, m_description);
    add(PropertyId::TextFormat, m_textFormat);
    addListedProperties(m_properties, list);
    return list;
}

} // namespace vellumo
