// SPDX-License-Identifier: MIT
#include "jet/LookupList.h"

#include <algorithm>
#include <charconv>

namespace vellumo::jet {

namespace {

const PropertyValue* valueOf(const PropertyList& properties, std::string_view name)
{
    const auto found = std::ranges::find(properties, name, &PropertyList::value_type::first);
    return found == properties.end() ? nullptr : &found->second;
}

std::string textOf(const PropertyList& properties, std::string_view name)
{
    const auto* value = valueOf(properties, name);
    return value == nullptr ? std::string() : propertyText(*value);
}

std::size_t countOf(const PropertyList& properties, std::string_view name)
{
    const auto text = textOf(properties, name);
    std::size_t count = 1;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return std::clamp<std::size_t>(count, 1, 255);
}

std::string_view trimmed(std::string_view text)
{
    const auto first = std::min(text.find_first_not_of(' '), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The items between semicolons; an item in quotes (either kind, doubled inside) may contain them.
std::vector<std::string> itemsOf(std::string_view source)
{
    std::vector<std::string> items;
    std::string item;
    char quote = 0;
    bool wasQuoted = false;
    const auto end = [&] {
        items.push_back(wasQuoted ? item : std::string(trimmed(item)));
        item.clear();
        wasQuoted = false;
    };
    for (std::size_t i = 0; i < source.size(); ++i) {
        const char c = source[i];
        if (quote != 0 && c == quote && i + 1 < source.size() && source[i + 1] == quote) {
            item += c;
            ++i;
        } else if (quote != 0 && c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == '"' || c == '\'') && trimmed(item).empty() && !wasQuoted) {
            quote = c;
            wasQuoted = true;
            item.clear();
        } else if (quote == 0 && c == ';') {
            end();
        } else if (quote != 0 || !wasQuoted) {
            item += c; // blanks behind a closing quote are none of the item's
        }
    }
    if (!item.empty() || wasQuoted) end();
    return items;
}

// "a;b;c" as rows of so many columns; the last may have fewer.
std::vector<std::vector<std::string>> valueListRows(std::string_view list, std::size_t columnCount)
{
    std::vector<std::vector<std::string>> rows;
    for (auto& item : itemsOf(list)) {
        if (rows.empty() || rows.back().size() == columnCount) rows.emplace_back();
        rows.back().push_back(std::move(item));
    }
    return rows;
}

} // namespace

std::optional<std::size_t> shownLookupColumn(std::string_view widths, std::size_t columnCount)
{
    for (std::size_t column = 0; column < columnCount; ++column) {
        const auto width = widths.substr(0, widths.find(';'));
        widths.remove_prefix(std::min(width.size() + 1, widths.size()));
        int number = -1; // an empty one has a width of its own
        std::from_chars(width.data(), width.data() + width.size(), number);
        if (number != 0) return column;
    }
    return std::nullopt;
}

LookupList::LookupList(const PropertyList& properties)
{
    if (textOf(properties, "RowSourceType") != "Value List") return;
    const auto columns = countOf(properties, "ColumnCount");
    const auto bound = countOf(properties, "BoundColumn") - 1;
    const auto shown = shownLookupColumn(textOf(properties, "ColumnWidths"), columns);
    if (!shown) return;
    for (auto& row : valueListRows(textOf(properties, "RowSource"), columns))
        if (std::max(bound, *shown) < row.size()) m_shown.emplace(row[bound], row[*shown]);
}

std::string_view LookupList::shown(std::string_view stored) const
{
    const auto found = m_shown.find(stored);
    return found == m_shown.end() || found->second.empty() ? stored : std::string_view(found->second);
}

} // namespace vellumo::jet
