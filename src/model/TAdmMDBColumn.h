#pragma once

#include "model/TAdmMDBObject.h"

#include <optional>
#include <string_view>

namespace vellumo {

class TAdmMDBTable;

enum class TextAlignment { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };

// A column of a table with its Access properties as texts ready for display. An absent property is nullopt, which is
// not the same as an empty text.
class TAdmMDBColumn : public TAdmMDBObject {
public:
    [[nodiscard]] TAdmMDBTable* table() const { return m_table; }
    void setTable(TAdmMDBTable* table) { m_table = table; }

    // The Access name of the type, such as "Long Integer"; all that exporters know of a type.
    [[nodiscard]] const std::string& dataType() const { return m_dataType; }
    void setDataType(std::string name) { m_dataType = std::move(name); }

    // Text columns: most characters; -1 where it does not apply.
    [[nodiscard]] std::int32_t fieldSize() const { return m_fieldSize; }
    void setFieldSize(std::int32_t size) { m_fieldSize = size; }
    // Numeric columns: decimal digits in all, and behind the point; -1 where they do not apply.
    [[nodiscard]] std::int32_t precision() const { return m_precision; }
    void setPrecision(std::int32_t precision) { m_precision = precision; }
    [[nodiscard]] std::int32_t scale() const { return m_scale; }
    void setScale(std::int32_t scale) { m_scale = scale; }

    using OptionalText = std::optional<std::string>;

    // "YES" or "NO" (localised).
    [[nodiscard]] const OptionalText& allowZeroLength() const { return m_allowZeroLength; }
    void setAllowZeroLength(OptionalText text) { m_allowZeroLength = std::move(text); }
    [[nodiscard]] const OptionalText& unicodeCompression() const { return m_unicodeCompression; }
    void setUnicodeCompression(OptionalText text) { m_unicodeCompression = std::move(text); }
    [[nodiscard]] const OptionalText& required() const { return m_required; }
    void setRequired(OptionalText text) { m_required = std::move(text); }

    // The property's own text, but "Auto" (localised) for "255".
    [[nodiscard]] OptionalText decimalPlaces() const;
    void setDecimalPlaces(OptionalText text) { m_decimalPlaces = std::move(text); }
    [[nodiscard]] const OptionalText& defaultValue() const { return m_defaultValue; }
    void setDefaultValue(OptionalText text) { m_defaultValue = std::move(text); }
    [[nodiscard]] const OptionalText& description() const { return m_description; }
    void setDescription(OptionalText text) { m_description = std::move(text); }

    // Calculated columns: the type name of the result, and the expression.
    [[nodiscard]] const OptionalText& resultType() const { return m_resultType; }
    void setResultType(OptionalText name) { m_resultType = std::move(name); }
    [[nodiscard]] const OptionalText& expression() const { return m_expression; }
    void setExpression(OptionalText text) { m_expression = std::move(text); }

    // Memo columns: "Plain Text", "Rich Text" or "Unknown" (localised).
    [[nodiscard]] const OptionalText& textFormat() const { return m_textFormat; }
    void setTextFormat(OptionalText text) { m_textFormat = std::move(text); }

    // "General", "Left", "Center", "Right" or "Distribute" (localised).
    [[nodiscard]] const OptionalText& textAlign() const { return m_textAlign; }
    // Takes the property's number as text: 1 left, 2 centre, 3 right, 4 distributed, all else general.
    void setTextAlign(std::string_view property);
    [[nodiscard]] TextAlignment textAlignForCell() const;

    [[nodiscard]] bool isPrimaryKey() const { return m_isPrimaryKey; }
    void setIsPrimaryKey(bool isPrimaryKey) { m_isPrimaryKey = isPrimaryKey; }
    [[nodiscard]] bool isHyperlink() const { return m_isHyperlink; }
    void setIsHyperlink(bool isHyperlink) { m_isHyperlink = isHyperlink; }
    [[nodiscard]] bool isCalculatedType() const { return m_isCalculatedType; }
    void setIsCalculatedType(bool isCalculated) { m_isCalculatedType = isCalculated; }

    // The grid's sort direction: 1 ascending, -1 descending, 0 none.
    [[nodiscard]] int sortOrder() const { return m_sortOrder; }
    void setSortOrder(int order) { m_sortOrder = order; }

    // An object column: its cells are decoded objects, not texts.
    [[nodiscard]] bool isOLE() const { return m_dataType == "OLE"; }

    // Takes one Access property; those that the program has no use for are ignored.
    void applyProperty(std::string_view property, std::string_view value);

    [[nodiscard]] std::vector<std::string> getObjectLabels() const override;

protected:
    [[nodiscard]] std::vector<InfoValue> infoValues() const override;

private:
    TAdmMDBTable* m_table = nullptr; // the owner
    std::string m_dataType;
    std::int32_t m_fieldSize = -1;
    std::int32_t m_precision = -1;
    std::int32_t m_scale = -1;
    OptionalText m_allowZeroLength;
    OptionalText m_unicodeCompression;
    OptionalText m_required;
    OptionalText m_decimalPlaces;
    OptionalText m_defaultValue;
    OptionalText m_description;
    OptionalText m_resultType;
    OptionalText m_expression;
    OptionalText m_textFormat;
    OptionalText m_textAlign;
    bool m_isPrimaryKey = false;
    bool m_isHyperlink = false;
    bool m_isCalculatedType = false;
    int m_sortOrder = 0;
};

} // namespace vellumo
