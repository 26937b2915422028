// SPDX-License-Identifier: MIT
#include "browser/GridValue.h"

#include "embedded/TAdmBlobData.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

using Object = std::shared_ptr<TAdmBlobData>;

} // namespace

GridValue getValueForTableColumn(const TAdmMDBTable* table, std::size_t column, std::size_t row)
{
    if (table == nullptr) return {};
    auto value = table->rows().value(row, column);
    if (auto* object = std::get_if<Object>(&value)) return std::move(*object);
    if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
    return NullCell();
}

std::string cellDisplayText(const GridValue& value)
{
    if (std::holds_alternative<NullCell>(value)) return textInstead(value);
    if (const auto* text = std::get_if<std::string_view>(&value)) return std::string(*text);
    if (const auto* object = std::get_if<Object>(&value)) return (*object)->cellDescription();
    return {};
}

std::optional<std::string_view> valueText(const GridValue& value, std::string& buffer)
{
    if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
    const auto* object = std::get_if<Object>(&value);
    auto text = object == nullptr ? std::nullopt : (*object)->textualDescription();
    if (!text) return std::nullopt;
    return buffer = std::move(*text);
}

std::string textInstead(const GridValue& value)
{
    if (std::holds_alternative<NullCell>(value)) return localized("[NULL]");
    return std::holds_alternative<Object>(value) ? localized("[NON-TEXTUAL DATA]") : localized("No fields selected");
}

std::string objectNote(const TAdmBlobData& object)
{
    return object.state() == ObjectState::Damaged ? localized("This object is damaged.") : std::string();
}

void appendCopiedValue(const GridValue& value, std::string& buffer, std::string& out)
{
    if (const auto text = valueText(value, buffer)) {
        const auto start = out.size();
        out += *text;
        for (auto i = out.find_first_of("\n\t", start); i != std::string::npos; i = out.find_first_of("\n\t", i))
            out[i] = ' ';
    }
    out += '\t';
}

void endCopiedRow(std::string& out)
{
    if (!out.empty()) out.back() = '\n';
}

} // namespace vellumo
