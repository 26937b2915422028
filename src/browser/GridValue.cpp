#include "browser/GridValue.h"

#include "embedded/TAdmBlobData.h"
#include "text/Messages.h"

namespace vellumo {

const std::string& nullText()
{
    static const std::string text = localized("[NULL]");
    return text;
}

const std::string& nonTextualDataText()
{
    static const std::string text = localized("[NON-TEXTUAL DATA]");
    return text;
}

const std::string& noFieldsText()
{
    static const std::string text = localized("No fields selected");
    return text;
}

GridValue getValueForTableColumn(const TAdmMDBTable* table, std::size_t column, std::size_t row)
{
    if (table == nullptr) return {};
    auto value = table->rows().value(row, column);
    if (auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) return std::move(*blob);
    if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
    return std::string_view(nullText());
}

std::string cellDisplayText(const GridValue& value)
{
    if (const auto* text = std::get_if<std::string_view>(&value)) return std::string(*text);
    if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) return (*blob)->cellDescription();
    return {};
}

std::string_view valueDescription(const GridValue& value, std::string& buffer)
{
    if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
    if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) return buffer = (*blob)->description();
    return {};
}

std::string objectNote(const TAdmBlobData& object)
{
    return object.state() == ObjectState::Damaged ? localized("This object is damaged.") : std::string();
}

} // namespace vellumo
