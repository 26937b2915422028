// SPDX-License-Identifier: MIT
#include "model/LookupTexts.h"

#include "jet/LookupList.h"
#include "model/RowSource.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <unordered_map>

namespace vellumo {

namespace {

constexpr std::int64_t listBox = 110;
constexpr std::int64_t comboBox = 111;

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
using TextsByStored = std::unordered_map<std::string, std::string, TextHash, std::equal_to<>>;

struct Lookup {
    LookupState state = LookupState::None;
    jet::LookupList list{}; // of a value list
    TextsByStored texts{};  // of a table

    // Null stays null, and nothing else becomes it.
    [[nodiscard]] std::string_view shown(std::string_view stored) const
    {
        if (stored.empty()) return {};
        const auto found = texts.empty() ? texts.end() : texts.find(stored);
        return found == texts.end() || found->second.empty() ? list.shown(stored) : std::string_view(found->second);
    }
};

// What the properties of a column say of its lookup.
struct LookupProperties {
    bool isLookup = false;
    std::string type{};
    std::string source{};
    std::size_t boundColumn = 0; // counted from 0
    std::size_t columnCount = 1;
    std::string widths{};
};

std::int64_t numberOf(const jet::PropertyValue& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
    const auto text = jet::propertyText(value);
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

LookupProperties propertiesOf(const TAdmMDBColumn& column)
{
    constexpr std::int64_t mostColumns = 255; // that a table has
    LookupProperties found;
    for (const auto& [name, value] : column.properties()) {
        if (name == "DisplayControl")
            found.isLookup = numberOf(value) == listBox || numberOf(value) == comboBox;
        else if (name == "RowSourceType")
            found.type = jet::propertyText(value);
        else if (name == "RowSource")
            found.source = jet::propertyText(value);
        else if (name == "BoundColumn")
            found.boundColumn = static_cast<std::size_t>(std::clamp<std::int64_t>(numberOf(value) - 1, 0, mostColumns));
        else if (name == "ColumnCount")
            found.columnCount = static_cast<std::size_t>(std::clamp<std::int64_t>(numberOf(value), 1, mostColumns));
        else if (name == "ColumnWidths")
            found.widths = jet::propertyText(value);
    }
    found.isLookup = found.isLookup && !found.source.empty();
    return found;
}

std::string textOf(const TAdmMDBTable& table, const SourceColumn& column, std::size_t row)
{
    std::string text;
    for (const auto& term : column) {
        if (const auto* place = std::get_if<std::size_t>(&term))
            text += table.rows().text(row, *place);
        else
            text += std::get<std::string>(term);
    }
    return text;
}

std::optional<TextsByStored> textsOfTable(
    const TAdmMDBFile& file, const LookupProperties& properties, std::size_t shown)
{
    const auto source = sourceTable(file, properties.source);
    if (!source || std::max(properties.boundColumn, shown) >= source->columns.size()) return std::nullopt;
    TextsByStored texts;
    for (std::size_t row = 0; row < source->table->rows().rowCount(); ++row) {
        auto stored = textOf(*source->table, source->columns[properties.boundColumn], row);
        if (!stored.empty()) texts.emplace(std::move(stored), textOf(*source->table, source->columns[shown], row));
    }
    return texts;
}

Lookup lookupOf(const TAdmMDBColumn& column)
{
    const auto properties = propertiesOf(column);
    if (!properties.isLookup || column.isOLE()) return {};
    const auto shown = jet::shownLookupColumn(properties.widths, properties.columnCount);
    if (shown == properties.boundColumn) return {};
    if (!shown) return {LookupState::Unresolved};
    if (properties.type == "Value List") return {LookupState::Resolved, jet::LookupList(column.properties())};
    const auto* table = column.table();
    const bool isTable = properties.type.empty() || properties.type == "Table/Query"; // which Access need not store
    if (!isTable || table == nullptr) return {LookupState::Unresolved};
    auto texts = textsOfTable(*table->file(), properties, *shown);
    if (!texts) return {LookupState::Unresolved};
    return {LookupState::Resolved, {}, std::move(*texts)};
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// The chunk with what is shown for each of its texts. `longest`: characters, raised as needed.
TextChunk shownTexts(const TextChunk& stored, const Lookup& lookup, std::size_t& longest)
{
    TextColumnBuilder builder;
    for (std::uint32_t row = 0; row < stored.rowCount(); ++row) {
        const auto text = lookup.shown(stored.text(row));
        longest = std::max(longest, characterCount(text));
        builder.append(text);
        builder.endText();
    }
    return builder.take();
}

void makeTextColumn(TAdmMDBColumn& column, std::size_t longest)
{
    constexpr std::size_t mostTextCharacters = 255;
    column.setType(longest > mostTextCharacters ? ColumnType::Memo : ColumnType::Text);
    column.setFieldSize(longest > mostTextCharacters ? -1 : static_cast<std::int32_t>(mostTextCharacters));
    column.setPrecision(-1);
    column.setScale(-1);
    column.setIsAutoNumber(false);
    column.setIsHyperlink(false);
}

template <typename Names> bool overlaps(const Names& names, const std::vector<std::string>& replaced)
{
    return std::ranges::any_of(
        names, [&](const std::string& name) { return std::ranges::find(replaced, name) != replaced.end(); });
}

std::vector<std::string> keyNames(const TAdmMDBIndex& index)
{
    std::vector<std::string> names;
    for (const auto& key : index.keys())
        names.push_back(key.name);
    return names;
}

struct TableCopy {
    std::unique_ptr<TAdmMDBTable> table;
    std::vector<std::string> replaced; // columns
};

// Everything but the values that are replaced is shared or small.
TableCopy copyOf(const TAdmMDBTable& table, std::vector<LookupNote>& notes)
{
    TableCopy copy{std::make_unique<TAdmMDBTable>(), {}};
    std::vector<RowGroup> groups(table.rows().groups().begin(), table.rows().groups().end());
    TAdmMDBTable::Columns columns;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        auto& column = columns.emplace_back(std::make_unique<TAdmMDBColumn>(*table.columns()[i]));
        const auto lookup = lookupOf(*table.columns()[i]);
        if (lookup.state == LookupState::Unresolved)
            notes.push_back({LookupNote::Kind::Unresolved, table.name(), column->name()});
        if (lookup.state != LookupState::Resolved) continue;
        std::size_t longest = 0;
        for (auto& group : groups)
            group.texts[i] = shownTexts(group.texts[i], lookup, longest);
        makeTextColumn(*column, longest);
        copy.replaced.push_back(column->name());
    }
    TAdmMDBTable::Indices indices;
    for (const auto& index : table.indices()) {
        if (!overlaps(keyNames(*index), copy.replaced))
            indices.push_back(std::make_unique<TAdmMDBIndex>(*index));
        else
            notes.push_back({LookupNote::Kind::NoIndex, table.name(), index->name()});
    }
    auto& made = *copy.table;
    made.setName(table.name());
    made.setFile(table.file());
    made.setOrigin(table.origin());
    made.setProperties(table.properties());
    made.setHistories(table.histories());
    for (const auto& column : columns)
        column->setIsPrimaryKey(false); // all of a key that is left out, too
    made.setColumns(std::move(columns));
    made.setIndices(std::move(indices));
    made.setHistories(table.histories());
    made.setColumnPrimaryKey();
    auto rows = made.emptyRows();
    for (auto& group : groups)
        rows.append(std::move(group));
    made.setRows(std::move(rows));
    return copy;
}

} // namespace

LookupState lookupState(const TAdmMDBColumn& column) { return lookupOf(column).state; }

std::unique_ptr<TAdmMDBTable> tableWithLookupTexts(const TAdmMDBTable& table)
{
    std::vector<LookupNote> notes;
    auto copy = copyOf(table, notes);
    return copy.replaced.empty() ? nullptr : std::move(copy.table);
}

std::string lookupNoteText(const LookupNote& note)
{
    switch (note.kind) {
    case LookupNote::Kind::Unresolved:
        return localizedFormat(
            "%@, column %@: its lookup is not resolved, what is stored is shown.", {note.table, note.name});
    case LookupNote::Kind::NoIndex:
        return localizedFormat("%@: the index %@ is left out, because of its lookup texts.", {note.table, note.name});
    case LookupNote::Kind::NoForeignKey: break;
    }
    return localizedFormat("%@: the relation %@ is left out, because of its lookup texts.", {note.table, note.name});
}

LookupCopy fileWithLookupTexts(const TAdmMDBFile& file)
{
    LookupCopy copy{std::make_unique<TAdmMDBFile>(), {}};
    std::map<std::string, std::vector<std::string>, std::less<>> replaced; // columns by table
    TAdmMDBFile::Tables tables;
    for (const auto& table : file.tables()) {
        auto made = copyOf(*table, copy.notes);
        replaced[table->name()] = std::move(made.replaced);
        tables.push_back(std::move(made.table));
    }
    TAdmMDBFile::ForeignKeys relations;
    for (const auto& relation : file.allForeignKeys()) {
        if (overlaps(relation->referencingColumns(), replaced[relation->referencingTable()])
            || overlaps(relation->referencedColumns(), replaced[relation->referencedTable()]))
            copy.notes.push_back({LookupNote::Kind::NoForeignKey, relation->referencingTable(), relation->name()});
        else
            relations.push_back(std::make_unique<TAdmMDBForeignKey>(*relation));
    }
    auto& made = *copy.file;
    made.setFullPath(file.fullPath());
    made.setSize(file.size());
    made.setCreateDate(file.createDate());
    made.setModifyDate(file.modifyDate());
    made.setLastOpenDate(file.lastOpenDate());
    made.setFormat(file.format());
    made.setDamage(file.damage());
    made.setContents(file.contents());
    made.setTables(std::move(tables));
    made.setAllForeignKeys(std::move(relations));
    made.setActive(true);
    return copy;
}

} // namespace vellumo
