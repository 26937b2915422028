// SPDX-License-Identifier: MIT
#include "browser/ColumnLayouts.h"

#include "model/TAdmMDBFile.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <string_view>

namespace vellumo {

namespace {

// A table is a line: "path table column=width column=width ..", the columns as they are displayed. Names have no spaces
// and no bytes that a settings file might not take.
bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' || c == '.'
        || c == '_' || c == '-';
}

std::string encoded(std::string_view name)
{
    std::string text;
    for (const char c : name)
        if (isPlain(c))
            text += c;
        else
            text += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    return text;
}

std::string keyOf(const TAdmMDBTable& table)
{
    return encoded(table.file() == nullptr ? "" : table.file()->fullPath()) + ' ' + encoded(table.name()) + ' ';
}

// The first part of `text` up to the separator, which goes with it.
std::string_view takeUpTo(std::string_view& text, char separator)
{
    const auto part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

ColumnLayout layoutFrom(std::string_view columns, const TAdmMDBTable& table)
{
    std::vector<std::string> unplaced; // the names of the columns; "" for one that has its place
    for (const auto& column : table.columns())
        unplaced.push_back(encoded(column->name()));
    ColumnLayout layout;
    layout.widths.resize(unplaced.size());
    const auto place = [&](std::size_t column) {
        unplaced[column].clear();
        layout.order.push_back(column);
    };
    while (!columns.empty()) {
        auto text = takeUpTo(columns, ' ');
        const auto found = std::ranges::find(unplaced, takeUpTo(text, '='));
        if (found == unplaced.end() || found->empty()) continue; // the table has changed
        const auto column = static_cast<std::size_t>(found - unplaced.begin());
        // What is no number leaves the width open.
        std::from_chars(text.data(), text.data() + text.size(), layout.widths[column]);
        place(column);
    }
    for (std::size_t column = 0; column < unplaced.size(); ++column)
        if (!unplaced[column].empty()) place(column);
    return layout;
}

std::string lineOf(const TAdmMDBTable& table, const ColumnLayout& layout)
{
    auto line = keyOf(table);
    for (const auto column : layout.order)
        line += fmt::format("{}={} ", encoded(table.columns()[column]->name()), layout.widths[column]);
    line.back() = '\n';
    return line;
}

} // namespace

std::optional<ColumnLayout> ColumnLayouts::find(const TAdmMDBTable& table) const
{
    const auto stored = m_defaults.string(defaultsKey).value_or("");
    const auto key = keyOf(table);
    for (std::string_view lines = stored; !lines.empty();)
        if (auto line = takeUpTo(lines, '\n'); line.starts_with(key)) return layoutFrom(line.substr(key.size()), table);
    return std::nullopt;
}

void ColumnLayouts::keep(const TAdmMDBTable& table, const ColumnLayout& layout)
{
    auto kept = lineOf(table, layout);
    const auto stored = m_defaults.string(defaultsKey).value_or("");
    const auto key = keyOf(table);
    for (std::string_view lines = stored; !lines.empty();) {
        const auto line = takeUpTo(lines, '\n');
        if (line.starts_with(key)) continue;
        if (kept.size() + line.size() >= mostBytes) break; // those changed longest ago come last
        kept.append(line).append("\n");
    }
    m_defaults.setString(defaultsKey, kept);
}

} // namespace vellumo
