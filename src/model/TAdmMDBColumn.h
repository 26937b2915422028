// SPDX-License-Identifier: MIT
#pragma once

#include "jet/Definition.h"
#include "model/TAdmMDBObject.h"

#include <optional>
#include <string_view>

namespace vellumo {

class TAdmMDBTable;

// A column of a table with its Access properties. An absent property is nullopt, which is not the same as an empty text
// or a no.
class TAdmMDBColumn : public TAdmMDBObject {
public:
    [[nodiscard]] TAdmMDBTable* table() const { return m_table; }
    void setTable(TAdmMDBTable* table) { m_table = table; }

    [[nodiscard]] ColumnType type() const { return m_type; }
    void setType(ColumnType type) { m_type = type; }
    // The Access name of the type, such as "Long Integer"; "" for an unknown one.
    [[nodiscard]] std::string_view dataType() const { return factsOf(m_type).accessName; }
    void setDataType(std::string_view name) { m_type = columnTypeNamed(name); }

    // Text columns: most characters; -1 where it does not apply.
    [[nodiscard]] std::int32_t fieldSize() const { return m_fieldSize; }
    void setFieldSize(std::int32_t size) { m_fieldSize = size; }
    // Numeric columns: decimal digits in all, and behind the point; -1 where they do not apply.
    [[nodiscard]] std::int32_t precision() const { return m_precision; }
    void setPrecision(std::int32_t precision) { m_precision = precision; }
    [[nodiscard]] std::int32_t scale() const { return m_scale; }
    void setScale(std::int32_t scale) { m_scale = scale; }

    // Columns of several values whose lookup is a table: the stored values that the cells were made of. Null for
    // others.
    [[nodiscard]] const std::shared_ptr<const jet::ValueGroups>& storedValues() const { return m_storedValues; }
    void setStoredValues(std::shared_ptr<const jet::ValueGroups> values) { m_storedValues = std::move(values); }

    using OptionalText = std::optional<std::string>;

    // All Access properties as the file has them. Those below are taken from them.
    [[nodiscard]] const jet::PropertyList& properties() const { return m_properties; }
    void setProperties(jet::PropertyList properties);

    [[nodiscard]] std::optional<bool> allowZeroLength() const { return m_allowZeroLength; }
    void setAllowZeroLength(std::optional<bool> allow) { m_allowZeroLength = allow; }
    [[nodiscard]] std::optional<bool> unicodeCompression() const { return m_unicodeCompression; }
    [[nodiscard]] std::optional<bool> required() const { return m_required; }

    [[nodiscard]] std::optional<DecimalPlaces> decimalPlaces() const { return m_decimalPlaces; }
    [[nodiscard]] const OptionalText& defaultValue() const { return m_defaultValue; }
    void setDefaultValue(OptionalText text) { m_defaultValue = std::move(text); }
    [[nodiscard]] const OptionalText& description() const { return m_description; }
    void setDescription(OptionalText text) { m_description = std::move(text); }

    // Calculated columns: the type of the result, and the expression.
    [[nodiscard]] std::optional<ColumnType> resultType() const { return m_resultType; }
    [[nodiscard]] const OptionalText& expression() const { return m_expression; }

    // Memo columns.
    [[nodiscard]] std::optional<TextFormat> textFormat() const { return m_textFormat; }

    [[nodiscard]] std::optional<TextAlignment> textAlign() const { return m_textAlign; }
    // Takes the property's number: 1 left, 2 centre, 3 right, 4 distributed, all else general.
    void setTextAlign(std::int64_t property);
    // Natural where the property is absent or general.
    [[nodiscard]] TextAlignment textAlignForCell() const { return m_textAlign.value_or(TextAlignment::Natural); }

    [[nodiscard]] bool isPrimaryKey() const { return m_isPrimaryKey; }
    void setIsPrimaryKey(bool isPrimaryKey) { m_isPrimaryKey = isPrimaryKey; }
    // Access gives its values out.
    [[nodiscard]] bool isAutoNumber() const { return m_isAutoNumber; }
    void setIsAutoNumber(bool isAutoNumber) { m_isAutoNumber = isAutoNumber; }
    [[nodiscard]] bool isHyperlink() const { return m_isHyperlink; }
    void setIsHyperlink(bool isHyperlink) { m_isHyperlink = isHyperlink; }
    [[nodiscard]] bool isCalculatedType() const { return m_isCalculatedType; }
    void setIsCalculatedType(bool isCalculated) { m_isCalculatedType = isCalculated; }

    // The grid's sort direction: 1 ascending, -1 descending, 0 none.
    [[nodiscard]] int sortOrder() const { return m_sortOrder; }
    void setSortOrder(int order) { m_sortOrder = order; }

    // An object column: its cells are decoded objects, not texts.
    [[nodiscard]] bool isOLE() const { return isObjectType(m_type); }

    [[nodiscard]] Information information() const override;

private:
    void applyProperty(std::string_view property, const jet::PropertyValue& value);

    TAdmMDBTable* m_table = nullptr; // the owner
    ColumnType m_type = ColumnType::Unknown;
    std::int32_t m_fieldSize = -1;
    std::int32_t m_precision = -1;
    std::int32_t m_scale = -1;
    std::shared_ptr<const jet::ValueGroups> m_storedValues;
    jet::PropertyList m_properties;
    std::optional<bool> m_allowZeroLength;
    std::optional<bool> m_unicodeCompression;
    std::optional<bool> m_required;
    std::optional<DecimalPlaces> m_decimalPlaces;
    OptionalText m_defaultValue;
    OptionalText m_description;
    std::optional<ColumnType> m_resultType;
    OptionalText m_expression;
    std::optional<TextFormat> m_textFormat;
    std::optional<TextAlignment> m_textAlign;
    bool m_isPrimaryKey = false;
    bool m_isAutoNumber = false;
    bool m_isHyperlink = false;
    bool m_isCalculatedType = false;
    int m_sortOrder = 0;
};

// Appends what people are told of an object's Access properties beyond those that are always listed: caption, format,
// input mask, validation, and where a lookup takes its values from. Passwords are masked.
void addListedProperties(const jet::PropertyList& properties, Information& list);

} // namespace vellumo
