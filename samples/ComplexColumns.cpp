// SPDX-License-Identifier: MIT
#include "samples/ComplexColumns.h"

#include "samples/OleObjects.h"
#include "samples/SystemTables.h"

#include <map>
#include <memory>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t valueTableFlags = 0x800A0000;
constexpr std::uint32_t templateFlags = 0x80030000;
constexpr std::uint32_t systemFlag = 0x80000000;
constexpr std::uint32_t ownerFlag = 0x40000; // of a table that has such columns

using Rows = std::vector<std::vector<Value>>;

// A kind of values: the table that stands for it in the catalogue, and what it keeps of a value besides the keys.
struct Kind {
    std::string templateName;
    std::vector<ColumnDescription> columns;
    // The rows of a cell, without keys.
    Rows (*rows)(const Value& cell);
};

ColumnDescription attachmentColumn(const char* name, ColumnType type, bool isFixed = false)
{
    ColumnDescription column{.name = name, .type = type};
    column.placement = isFixed ? Placement::Fixed : Placement::Usual;
    column.moreFlags = ColumnDescription::attachmentFlag;
    return column;
}

Rows fileRows(const Value& cell)
{
    Rows rows;
    const auto* const files = std::get_if<FileValues>(&cell);
    if (files == nullptr) return rows;
    for (const auto& file : *files) {
        const auto storage = file.isPacked ? AttachmentStorage::Deflated : AttachmentStorage::Stored;
        rows.push_back(
            {attachmentRecord(file.extension, file.content, storage), {}, file.name, {}, file.extension, {}});
    }
    return rows;
}

Rows textRows(const Value& cell)
{
    Rows rows;
    if (const auto* const texts = std::get_if<TextValues>(&cell))
        for (const auto& text : *texts)
            rows.push_back({text});
    return rows;
}

Rows numberRows(const Value& cell)
{
    Rows rows;
    if (const auto* const numbers = std::get_if<NumberValues>(&cell))
        for (const auto number : *numbers)
            rows.push_back({number});
    return rows;
}

Rows versionRows(const Value& cell)
{
    Rows rows;
    if (const auto* const versions = std::get_if<VersionValues>(&cell))
        for (const auto& version : *versions)
            rows.push_back({version.text, version.modified});
    return rows;
}

Kind kindOf(const ColumnDescription& column)
{
    using enum ColumnType;
    switch (column.complex) {
    case Complex::Files:
        return {"MSysComplexType_Attachment",
            {attachmentColumn("FileData", Ole), attachmentColumn("FileFlags", Long, true),
                attachmentColumn("FileName", Text), attachmentColumn("FileTimeStamp", DateTime, true),
                attachmentColumn("FileType", Text), attachmentColumn("FileURL", Memo)},
            fileRows};
    case Complex::Numbers: return {"MSysComplexType_Long", {{.name = "Value", .type = Long}}, numberRows};
    case Complex::Versions:
        return {"MSysComplexTypeVH_7B4A12A4BE0B4564884754E9E31577B2",
            {{.name = column.historyOf, .type = Memo}, {.name = "Modified_F9B5E312", .type = DateTime}}, versionRows};
    default: break;
    }
    return {"MSysComplexType_Text", {{.name = "Value", .type = Text, .compressed = true}}, textRows};
}

class Expansion {
public:
    explicit Expansion(const DatabaseDescription& description)
        : m_out(description)
    {
    }

    [[nodiscard]] DatabaseDescription run()
    {
        const auto count = m_out.tables.size();
        for (std::size_t table = 0; table < count; ++table)
            expand(table);
        if (m_entries.empty()) return std::move(m_out);
        m_out.tables.push_back(complexColumnsTable(m_entries));
        m_out.tables.back().flags = systemFlag;
        return std::move(m_out);
    }

private:
    void expand(std::size_t table)
    {
        std::vector<std::size_t> columns;
        for (std::size_t i = 0; i < m_out.tables[table].columns.size(); ++i)
            if (m_out.tables[table].columns[i].complex != Complex::None) columns.push_back(i);
        if (columns.empty()) return;
        auto rows = std::make_shared<std::vector<Row>>(allRows(m_out.tables[table]));
        for (const auto column : columns)
            expandColumn(table, column, *rows);
        m_out.tables[table].flags |= ownerFlag;
        m_out.tables[table].rows = rowsOf(std::move(*rows));
    }

    static std::vector<Row> allRows(const TableDescription& table)
    {
        std::vector<Row> rows;
        for (Row row; table.rows && table.rows(rows.size(), row); row.state = RowState::Live)
            rows.push_back(row);
        return rows;
    }

    void expandColumn(std::size_t table, std::size_t index, std::vector<Row>& rows)
    {
        auto kind = kindOf(m_out.tables[table].columns[index]);
        const auto templateId = idOfTemplate(kind);
        auto& column = m_out.tables[table].columns[index];
        if (column.complex == Complex::Texts || column.complex == Complex::Numbers) {
            kind.columns[0].properties = std::move(column.properties);
            column.properties = {booleanProperty("AllowMultipleValues", true)};
        }
        column.type = ColumnType::Complex;
        if (column.complex == Complex::Versions) column.moreFlags |= ColumnDescription::historyFlag;
        column.complexId = static_cast<std::uint32_t>(m_entries.size() + 1);
        const auto name = column.name;
        auto values = valueTable(m_out.tables[table].name, name, kind);
        values.rows = rowsOf(groupRows(rows, index, kind));
        m_out.tables[table].indexes.push_back(
            {.name = name + "_B649D85014354490BB4AD3B5AB75A5A4", .columns = {{name}}, .unique = true});
        const auto valueTableId = idOfTable(m_out.tables.size());
        m_out.tables.push_back(std::move(values));
        m_entries.push_back({name, templateId, valueTableId, idOfTable(table)});
    }

    // The keys stand behind the others: the number of the group, and the number of the value.
    [[nodiscard]] TableDescription valueTable(
        const std::string& owner, const std::string& column, const Kind& kind) const
    {
        TableDescription table{
            .name = "f_F42896D510474144890B9076E2CD27D" + std::to_string(m_entries.size() % 10) + "_" + column};
        table.flags = valueTableFlags;
        table.columns = kind.columns;
        for (const auto& [name, flag] : {std::pair{"_" + column, ColumnDescription::groupFlag},
                 {owner + "_" + column, ColumnDescription::valueFlag}}) {
            ColumnDescription key{.name = name, .type = ColumnType::Long, .placement = Placement::Variable};
            key.moreFlags = flag;
            key.autonumber = flag == ColumnDescription::valueFlag;
            table.columns.push_back(std::move(key));
        }
        table.indexes = {{.name = "_" + column, .columns = {{"_" + column}}},
            {.name = "MSysComplexPKIndex", .columns = {{owner + "_" + column}}, .primary = true}};
        return table;
    }

    // Cells become the numbers of their groups.
    static Rows groupRows(std::vector<Row>& rows, std::size_t column, const Kind& kind)
    {
        Rows all;
        std::int64_t group = 0;
        for (auto& row : rows) {
            ++group;
            if (row.values.size() <= column) row.values.resize(column + 1);
            for (auto& values : kind.rows(row.values[column])) {
                values.push_back(group);
                values.push_back(static_cast<std::int64_t>(all.size() + 1));
                all.push_back(std::move(values));
            }
            row.values[column] = group;
        }
        return all;
    }

    std::uint32_t idOfTemplate(const Kind& kind)
    {
        const auto known = m_templates.find(kind.templateName);
        if (known != m_templates.end()) return known->second;
        const auto id = idOfTable(m_out.tables.size());
        m_out.tables.push_back({.name = kind.templateName, .columns = kind.columns, .flags = templateFlags});
        m_templates.emplace(kind.templateName, id);
        return id;
    }

    [[nodiscard]] static std::uint32_t idOfTable(std::size_t index)
    {
        return firstTablePage + static_cast<std::uint32_t>(index);
    }

    DatabaseDescription m_out;
    std::map<std::string, std::uint32_t> m_templates;
    std::vector<ComplexColumnEntry> m_entries;
};

} // namespace

DatabaseDescription withValueTables(const DatabaseDescription& description) { return Expansion(description).run(); }

} // namespace vellumo::samples
