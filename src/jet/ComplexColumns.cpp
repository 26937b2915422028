// SPDX-License-Identifier: MIT
#include "jet/ComplexColumns.h"

#include "embedded/FileNames.h"
#include "embedded/TAdmBlobData.h"
#include "jet/Database.h"
#include "jet/LookupList.h"

#include <algorithm>
#include <charconv>
#include <tuple>

namespace vellumo::jet {

namespace {

constexpr std::string_view attachmentTemplate = "MSysComplexType_Attachment";
constexpr std::string_view historyTemplates = "MSysComplexTypeVH_";

std::optional<std::int32_t> numberIn(std::string_view text)
{
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

// The templates of the kinds are tables in the catalogue, which goes by their names.
ComplexKind kindOf(std::uint32_t templateId, const std::vector<CatalogEntry>& catalog)
{
    const auto found = std::ranges::find(catalog, templateId, &CatalogEntry::id);
    if (found == catalog.end()) return ComplexKind::Values;
    if (found->name == attachmentTemplate) return ComplexKind::Attachments;
    return found->name.starts_with(historyTemplates) ? ComplexKind::Versions : ComplexKind::Values;
}

template <typename Is> std::optional<std::size_t> columnWhere(const TableDef& table, const Is& is)
{
    const auto found = std::ranges::find_if(table.columns, is);
    if (found == table.columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - table.columns.begin());
}

std::optional<std::size_t> columnNamed(const TableDef& table, std::string_view name)
{
    return columnWhere(table, [&](const ColumnDef& column) { return column.name == name; });
}

bool isMemo(const ColumnDef& column) { return column.type == ColumnType::Memo; }

bool isKey(const ColumnDef& column) { return column.isGroupKey || column.isValueKey; }

// Walks over the rows in the order in which their values were made: group, time of change where there is one, number of
// the value.
struct ValueRow {
    std::int32_t group = 0;
    std::string changed; // in an order that sorts
    std::int32_t number = 0;
    std::size_t row = 0;

    auto operator<=>(const ValueRow&) const = default;
};

// "MM/DD/YYYY hh:mm:ss" as "YYYYMM/DD/ hh:mm:ss".
std::string sortable(std::string_view date)
{
    constexpr std::size_t yearAt = 6;
    constexpr std::size_t timeAt = 10;
    if (date.size() < timeAt) return std::string(date);
    return std::string(date.substr(yearAt, 4)).append(date.substr(0, yearAt)).append(date.substr(timeAt));
}

std::vector<ValueRow> inOrder(const TableDef& table, const RowStore& rows, std::size_t groupColumn, bool isHistory)
{
    const auto number = columnWhere(table, [](const ColumnDef& column) { return column.isValueKey; });
    const auto changed =
        columnWhere(table, [](const ColumnDef& column) { return column.type == ColumnType::DateTime; });
    std::vector<ValueRow> order;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        // Without a readable number it belongs to nobody, which is counted like a group that nobody claims.
        ValueRow value{numberIn(rows.text(row, groupColumn)).value_or(0), {}, 0, row};
        if (number) value.number = numberIn(rows.text(row, *number)).value_or(0);
        if (isHistory && changed) value.changed = sortable(rows.text(row, *changed));
        order.push_back(std::move(value));
    }
    std::ranges::sort(order);
    return order;
}

std::shared_ptr<TAdmBlobData> objectIn(const RowStore& rows, std::size_t row, std::size_t column)
{
    const auto value = rows.value(row, column);
    const auto* object = std::get_if<std::shared_ptr<TAdmBlobData>>(&value);
    return object == nullptr ? nullptr : *object;
}

// Adds the files of attachment columns.
class FileGroups {
public:
    FileGroups(const TableDef& table, const RowStore& rows)
        : m_rows(rows)
        , m_data(columnNamed(table, "FileData"))
        , m_name(columnNamed(table, "FileName"))
        , m_type(columnNamed(table, "FileType"))
        , m_address(columnNamed(table, "FileURL"))
    {
    }
    [[nodiscard]] bool isReadable() const { return m_data && m_rows.kinds()[*m_data] == CellKind::Blob; }

    void add(const ValueRow& value, ValueGroup& group) const
    {
        auto file = fileOf(value.row);
        if (group.object)
            group.object->addFurtherFile(std::move(file));
        else
            group.object = std::move(file);
    }

private:
    [[nodiscard]] std::string textOf(std::size_t row, const std::optional<std::size_t>& column) const
    {
        return column ? std::string(m_rows.text(row, *column)) : std::string();
    }

    // A file that is not in the database lies where its address says.
    [[nodiscard]] std::shared_ptr<TAdmBlobData> fileOf(std::size_t row) const
    {
        auto file = objectIn(m_rows, row, *m_data);
        if (!file) {
            auto address = textOf(row, m_address);
            const auto state = address.empty() ? ObjectState::Damaged : ObjectState::Linked;
            file = std::make_shared<TAdmBlobData>(
                std::vector<std::byte>(), std::string(), ObjectFacts{.state = state, .linkTarget = std::move(address)});
        }
        file->setStoredName(cleanFileName(textOf(row, m_name)), textOf(row, m_type));
        return file;
    }

    const RowStore& m_rows;
    std::optional<std::size_t> m_data, m_name, m_type, m_address;
};

void addText(std::string_view text, ValueGroup& group)
{
    if (group.count != 0) group.text += valueSeparator;
    group.text += text;
    group.ends.push_back(static_cast<std::uint32_t>(group.text.size()));
}

} // namespace

std::vector<ComplexColumn> complexColumnsFrom(
    const TableDef& table, const RowStore& rows, const std::vector<CatalogEntry>& catalog)
{
    constexpr const char* names[] = {"ConceptualTableID", "ComplexID", "FlatTableID", "ComplexTypeObjectID"};
    std::optional<std::size_t> columns[std::size(names)];
    for (std::size_t i = 0; i < std::size(names); ++i)
        columns[i] = columnNamed(table, names[i]);
    std::vector<ComplexColumn> found;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        std::optional<std::int32_t> ids[std::size(names)];
        for (std::size_t i = 0; i < std::size(names); ++i)
            if (columns[i]) ids[i] = numberIn(rows.text(row, *columns[i]));
        if (!ids[0] || !ids[1] || !ids[2]) continue;
        const auto id = [&](std::size_t i) { return static_cast<std::uint32_t>(ids[i].value_or(0)); };
        found.push_back({id(0), id(1), id(2), kindOf(id(3), catalog)});
    }
    return found;
}

const ValueGroup* ValueGroups::find(std::int32_t number) const
{
    const auto found = m_groups.find(number);
    return found == m_groups.end() ? nullptr : &found->second;
}

const ValueGroup* ValueGroups::claim(std::int32_t number) const
{
    const auto* group = find(number);
    if (group != nullptr) group->isClaimed = true;
    return group;
}

std::uint64_t ValueGroups::unclaimedValues() const
{
    std::uint64_t count = 0;
    for (const auto& [number, group] : m_groups)
        if (!group.isClaimed) count += group.count;
    return count;
}

void keepValueColumns(TableDef& table, ComplexKind kind)
{
    std::erase_if(table.columns, [&](const ColumnDef& column) {
        if (isKey(column)) return false;
        switch (kind) {
        case ComplexKind::Attachments:
            return column.name != "FileData" && column.name != "FileName" && column.name != "FileType"
                && column.name != "FileURL";
        case ComplexKind::Versions: return !isMemo(column) && column.type != ColumnType::DateTime;
        case ComplexKind::Values: return column.name != "Value";
        }
        return true;
    });
    table.indices.clear(); // which count columns
}

std::shared_ptr<ValueGroups> groupValues(ComplexKind kind, const TableDef& table, const RowStore& rows)
{
    const auto key = columnWhere(table, [](const ColumnDef& column) { return column.isGroupKey; });
    const auto value = kind == ComplexKind::Values ? columnNamed(table, "Value") : columnWhere(table, isMemo);
    const auto modified =
        columnWhere(table, [](const ColumnDef& column) { return column.type == ColumnType::DateTime; });
    const FileGroups files(table, rows);
    if (!key || (kind == ComplexKind::Attachments ? !files.isReadable() : !value)) return nullptr;
    const auto lookup = kind == ComplexKind::Values ? LookupList(table.columns[*value].properties) : LookupList();
    auto groups = std::make_shared<ValueGroups>();
    for (const auto& place : inOrder(table, rows, *key, kind == ComplexKind::Versions)) {
        auto& group = groups->groupOf(place.group);
        switch (kind) {
        case ComplexKind::Attachments: files.add(place, group); break;
        case ComplexKind::Values: addText(lookup.shown(rows.text(place.row, *value)), group); break;
        case ComplexKind::Versions:
            group.versions.push_back({modified ? std::string(rows.text(place.row, *modified)) : std::string(),
                std::string(rows.text(place.row, *value))});
            break;
        }
        ++group.count;
    }
    return groups;
}

void takeLookupOf(const TableDef& values, ColumnDef& column)
{
    constexpr std::string_view lookupProperties[] = {"DisplayControl", "RowSourceType", "RowSource", "BoundColumn",
        "ColumnCount", "ColumnHeads", "ColumnWidths", "ListRows", "ListWidth", "LimitToList", "AllowValueListEdits",
        "ListItemsEditForm", "ShowOnlyRowSourceValues"};
    const auto value = columnNamed(values, "Value");
    if (!value) return;
    const auto isOf = [](const PropertyList& list, std::string_view name) {
        return std::ranges::find(list, name, &PropertyList::value_type::first) != list.end();
    };
    for (const auto& property : values.columns[*value].properties)
        if (std::ranges::find(lookupProperties, property.first) != std::end(lookupProperties)
            && !isOf(column.properties, property.first))
            column.properties.push_back(property);
}

// The history keeps the name that its memo had when it began; where that was changed since, the memo is known if no
// other one keeps a history.
std::optional<std::size_t> memoOfHistory(const TableDef& owner, const TableDef& versions)
{
    const auto kept = columnWhere(versions, isMemo);
    if (!kept) return std::nullopt;
    const auto& name = versions.columns[*kept].name;
    if (const auto memo = columnNamed(owner, name); memo && isMemo(owner.columns[*memo])) return memo;
    const auto hasHistory = [](const ColumnDef& column) {
        return isMemo(column) && std::ranges::any_of(column.properties, [](const auto& property) {
            return property.first == "AppendOnly" && property.second == PropertyValue(true);
        });
    };
    if (std::ranges::count_if(owner.columns, hasHistory) != 1) return std::nullopt;
    return columnWhere(owner, hasHistory);
}

} // namespace vellumo::jet
