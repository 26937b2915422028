// SPDX-License-Identifier: MIT
#include "model/Information.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <fmt/ranges.h>

namespace vellumo {

namespace {

const char* labelKey(PropertyId id)
{
    switch (id) {
    case PropertyId::Name: return messageKey("Name");
    case PropertyId::Where: return messageKey("Where");
    case PropertyId::Size: return messageKey("Size");
    case PropertyId::Created: return messageKey("Created");
    case PropertyId::Modified: return messageKey("Modified");
    case PropertyId::LastOpened: return messageKey("Last opened");
    case PropertyId::RowCount: return messageKey("Number of rows");
    case PropertyId::ColumnCount: return messageKey("Number of columns");
    case PropertyId::Type: return messageKey("Type");
    case PropertyId::ResultType: return messageKey("Result Type");
    case PropertyId::Expression: return messageKey("Expression");
    case PropertyId::Precision: return messageKey("Precision");
    case PropertyId::Scale: return messageKey("Scale");
    case PropertyId::AllowZeroLength: return messageKey("Allow zero length");
    case PropertyId::DecimalPlaces: return messageKey("Decimal places");
    case PropertyId::DefaultValue: return messageKey("Default value");
    case PropertyId::Required: return messageKey("Required");
    case PropertyId::UnicodeCompression: return messageKey("Unicode compression");
    case PropertyId::TextAlignment: return messageKey("Text alignment");
    case PropertyId::Description: return messageKey("Description");
    case PropertyId::TextFormat: return messageKey("Text Format");
    case PropertyId::IndexKeys: return messageKey("Index keys");
    case PropertyId::PrimaryKey: return messageKey("Primary key");
    case PropertyId::Unique: return messageKey("Unique");
    case PropertyId::Columns: return messageKey("Columns");
    case PropertyId::ReferencedTable: return messageKey("Referenced table");
    case PropertyId::ReferencedColumns: return messageKey("Referenced columns");
    case PropertyId::OnUpdateCascade: return messageKey("On update cascade");
    case PropertyId::OnDeleteCascade: return messageKey("On delete cascade");
    case PropertyId::DatabasePassword: return messageKey("Database password");
    case PropertyId::Caption: return messageKey("Caption");
    case PropertyId::Format: return messageKey("Format");
    case PropertyId::InputMask: return messageKey("Input mask");
    case PropertyId::ValidationRule: return messageKey("Validation rule");
    case PropertyId::ValidationText: return messageKey("Validation text");
    case PropertyId::RowSource: return messageKey("Row source");
    }
    return "";
}

const char* alignmentKey(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Left: return messageKey("Left");
    case TextAlignment::Right: return messageKey("Right");
    case TextAlignment::Center: return messageKey("Center");
    case TextAlignment::Justified: return messageKey("Distribute");
    case TextAlignment::Natural: break;
    }
    return messageKey("General");
}

const char* textFormatKey(TextFormat textFormat)
{
    switch (textFormat) {
    case TextFormat::Plain: return messageKey("Plain Text");
    case TextFormat::Rich: return messageKey("Rich Text");
    case TextFormat::Unknown: break;
    }
    return messageKey("Unknown");
}

struct ValueText {
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool isSet) const { return isSet ? localized("YES") : localized("NO"); }
    std::string operator()(FileSize size) const { return formatComputerFileSize(size.bytes); }
    std::string operator()(Timestamp date) const
    {
        return dateWithFinderFormat(date, std::chrono::system_clock::now());
    }
    std::string operator()(ColumnTypeInfo info) const
    {
        const auto name = factsOf(info.type).accessName;
        return info.isCalculated ? localizedFormat("Calculated", {name}) : std::string(name);
    }
    std::string operator()(DecimalPlaces places) const
    {
        return places.count == DecimalPlaces::automatic ? localized("Auto") : std::to_string(places.count);
    }
    std::string operator()(TextAlignment alignment) const { return localized(alignmentKey(alignment)); }
    std::string operator()(TextFormat textFormat) const { return localized(textFormatKey(textFormat)); }
    std::string operator()(IdlePassword) const { return localized("Set; it protects nothing"); }
    std::string operator()(const std::vector<std::string>& names) const
    {
        return fmt::format("{}", fmt::join(names, ", "));
    }
    std::string operator()(const std::vector<IndexKey>& keys) const
    {
        std::string text;
        for (const auto& key : keys) {
            if (!text.empty()) text += ", ";
            text += format("%@ (%@)", {key.name, key.isAscending ? localized("Ascending") : localized("Descending")});
        }
        return text;
    }
};

} // namespace

std::string infoLabel(PropertyId id) { return localized(labelKey(id)); }

std::string infoText(const InfoValue& value) { return std::visit(ValueText(), value); }

} // namespace vellumo
