#include "model/TAdmMDBColumn.h"

#include "jet/TableDef.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <charconv>

namespace vellumo {

namespace {

// The number at the start of `text`; 0 where there is none.
int leadingNumber(std::string_view text)
{
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::string yesOrNo(std::string_view property) { return property == "yes" ? localized("YES") : localized("NO"); }

const char* textFormatName(std::string_view property)
{
    if (property == "0") return messageKey("Plain Text");
    if (property == "1") return messageKey("Rich Text");
    return messageKey("Unknown");
}

} // namespace

TAdmMDBColumn::OptionalText TAdmMDBColumn::decimalPlaces() const
{
    // 255 is how Access stores "as many as the value needs".
    if (m_decimalPlaces == "255") return localized("Auto");
    return m_decimalPlaces;
}

void TAdmMDBColumn::setTextAlign(std::string_view property)
{
    switch (leadingNumber(property)) {
    case 1: m_textAlign = localized("Left"); break;
    case 2: m_textAlign = localized("Center"); break;
    case 3: m_textAlign = localized("Right"); break;
    case 4: m_textAlign = localized("Distribute"); break;
    default: m_textAlign = localized("General"); break;
    }
}

TextAlignment TAdmMDBColumn::textAlignForCell() const
{
    if (!m_textAlign) return TextAlignment::Natural;
    if (*m_textAlign == localized("Left")) return TextAlignment::Left;
    if (*m_textAlign == localized("Center")) return TextAlignment::Center;
    if (*m_textAlign == localized("Right")) return TextAlignment::Right;
    if (*m_textAlign == localized("Distribute")) return TextAlignment::Justified;
    return TextAlignment::Natural;
}

void TAdmMDBColumn::applyProperty(std::string_view property, std::string_view value)
{
    if (property == "AllowZeroLength") {
        m_allowZeroLength = yesOrNo(value);
    } else if (property == "UnicodeCompression") {
        m_unicodeCompression = yesOrNo(value);
    } else if (property == "Required") {
        m_required = yesOrNo(value);
    } else if (property == "DecimalPlaces") {
        m_decimalPlaces = value;
    } else if (property == "DefaultValue") {
        m_defaultValue = value;
    } else if (property == "TextAlign") {
        setTextAlign(value);
    } else if (property == "Description") {
        m_description = value;
    } else if (property == "ResultType") {
        if (value != "0") m_resultType = jet::mdb_get_colbacktype_string_fromMdbType(leadingNumber(value));
    } else if (property == "Expression") {
        m_expression = value;
    } else if (property == "TextFormat" && m_dataType == "Memo/Hyperlink") {
        m_textFormat = localized(textFormatName(value));
    }
}

std::vector<std::string> TAdmMDBColumn::getObjectLabels() const
{
    std::vector<std::string> labels;
    const auto add = [&](const char* key) { labels.push_back(localized(key)); };
    add(messageKey("Name"));
    add(messageKey("Type"));
    if (m_resultType) add(messageKey("Result Type"));
    if (m_expression) add(messageKey("Expression"));
    if (m_fieldSize >= 0) add(messageKey("Size"));
    if (m_precision >= 0) {
        add(messageKey("Precision"));
        add(messageKey("Scale"));
    }
    if (m_allowZeroLength) add(messageKey("Allow zero length"));
    if (m_decimalPlaces) add(messageKey("Decimal places"));
    if (m_defaultValue) add(messageKey("Default value"));
    if (m_required) add(messageKey("Required"));
    if (m_unicodeCompression) add(messageKey("Unicode compression"));
    if (m_textAlign) add(messageKey("Text alignment"));
    if (m_description) add(messageKey("Description"));
    if (m_textFormat) add(messageKey("Text Format"));
    return labels;
}

std::vector<InfoValue> TAdmMDBColumn::infoValues() const
{
    std::vector<InfoValue> values;
    const auto add = [&](const OptionalText& text) {
        if (text) values.emplace_back(*text);
    };
    values.emplace_back(name());
    values.emplace_back(m_isCalculatedType ? localizedFormat("Calculated", {m_dataType}) : m_dataType);
    add(m_resultType);
    add(m_expression);
    if (m_fieldSize >= 0) values.emplace_back(std::int64_t{m_fieldSize});
    if (m_precision >= 0) {
        values.emplace_back(std::int64_t{m_precision});
        values.emplace_back(std::int64_t{m_scale});
    }
    add(m_allowZeroLength);
    add(decimalPlaces());
    add(m_defaultValue);
    add(m_required);
    add(m_unicodeCompression);
    add(m_textAlign);
    add(m_description);
    add(m_textFormat);
    return values;
}

} // namespace vellumo
