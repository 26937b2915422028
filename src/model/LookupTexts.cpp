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

std::string textOf(const SourceColumn& column, std::size_t row)
{
    std::string text;
    for (const auto& term : column.terms) {
        if (const auto* place = std::get_if<std::size_t>(&term))
            text += column.table->rows().text(row, *place);
        else
            text += std::get<std::string>(term);
    }
    return text;
}

bool isTableSource(const LookupProperties& properties)
{
    return properties.type.empty() || properties.type == "Table/Query"; // which Access need not store
}

// How a column is looked up, which is told before a row is read.
struct LookupPlan {
    LookupState state = LookupState::None;
    SourceColumn bound{}; // of one row of a table with `shown`; without a table: the column's own list
    SourceColumn shown{};
    bool isLimited = false; // rows of the table may not be meant

    [[nodiscard]] const TAdmMDBTable* table() const { return bound.table; }
};

LookupPlan planOf(const TAdmMDBColumn& column)
{
    const auto properties = propertiesOf(column);
    if (!properties.isLookup || column.isOLE()) return {};
    const auto shown = jet::shownLookupColumn(properties.widths, properties.columnCount);
    if (shown == properties.boundColumn) return {};
    if (!shown) return {LookupState::Unresolved};
    if (properties.type == "Value List") {
        const bool isShownAnyway = column.type() == ColumnType::MultipleValues;
        return {isShownAnyway ? LookupState::None : LookupState::Resolved};
    }
    const auto* table = column.table();
    if (!isTableSource(properties) || table == nullptr) return {LookupState::Unresolved};
    auto source = rowSource(*table->file(), properties.source);
    if (!source || std::max(properties.boundColumn, *shown) >= source->columns.size()) return {LookupState::Unresolved};
    auto& boundColumn = source->columns[properties.boundColumn];
    auto& shownColumn = source->columns[*shown];
    const bool areOfOneRow =
        boundColumn.table != nullptr && shownColumn.table != nullptr && boundColumn.place == shownColumn.place;
    if (!areOfOneRow) return {LookupState::Unresolved};
    return {LookupState::Resolved, std::move(boundColumn), std::move(shownColumn), source->isLimited};
}

// Counts the rows, and asks now and then whether to go on.
class Progress {
public:
    explicit Progress(const LookupObserver& observer)
        : m_observer(observer)
    {
    }
    // After a row; false when it is to stop.
    [[nodiscard]] bool advance()
    {
        constexpr std::uint64_t rowsBetween = 1024;
        return ++m_rowsDone % rowsBetween != 0 || !m_observer || m_observer(m_rowsDone);
    }

private:
    const LookupObserver& m_observer;
    std::uint64_t m_rowsDone = 0;
};

// The first row of a key is the one that shows. Where it may be one that is not meant, a key with different texts has
// none, and what is stored stays.
std::optional<TextsByStored> textsOfTable(const LookupPlan& plan, Progress& progress)
{
    TextsByStored texts;
    for (std::size_t row = 0; row < plan.table()->rows().rowCount(); ++row) {
        if (auto stored = textOf(plan.bound, row); !stored.empty()) {
            auto shown = textOf(plan.shown, row);
            const auto [place, isNew] = texts.try_emplace(std::move(stored), shown);
            if (!isNew && plan.isLimited && place->second != shown) place->second.clear();
        }
        if (!progress.advance()) return std::nullopt;
    }
    return texts;
}

std::string shownGroup(const jet::ValueGroup& group, const TextsByStored& texts)
{
    std::string shown;
    std::size_t start = 0;
    for (const auto end : group.ends) {
        const auto stored = std::string_view(group.text).substr(start, end - start);
        const auto found = texts.find(stored);
        if (start != 0) shown += jet::valueSeparator;
        shown += found == texts.end() || found->second.empty() ? stored : found->second;
        start = end + jet::valueSeparator.size();
    }
    return shown;
}

// What the cells of a column of several values show, by what they hold. Values may hold what separates them: where two
// cells look the same and would show different texts, they stay as they are.
std::optional<TextsByStored> textsOfGroups(
    const jet::ValueGroups& stored, const TextsByStored& texts, Progress& progress)
{
    TextsByStored shown;
    for (const auto& [number, group] : stored.all()) {
        auto text = shownGroup(group, texts);
        const auto [place, isNew] = shown.try_emplace(group.text, text);
        if (!isNew && place->second != text) place->second = group.text;
        if (!progress.advance()) return std::nullopt;
    }
    return shown;
}

// nullopt: stopped.
std::optional<Lookup> lookupOf(const TAdmMDBColumn& column, const LookupPlan& plan, Progress& progress)
{
    if (plan.table() == nullptr) return Lookup{jet::LookupList(column.properties())};
    auto texts = textsOfTable(plan, progress);
    if (texts && column.type() == ColumnType::MultipleValues)
        texts = column.storedValues() ? textsOfGroups(*column.storedValues(), *texts, progress) : TextsByStored();
    if (!texts) return std::nullopt;
    return Lookup{{}, std::move(*texts)};
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// The chunk with what is shown for each of its texts; one that stays as it is says the same of its value. `longest`:
// characters, raised as needed. nullopt: stopped.
std::optional<TextChunk> shownTexts(
    const TextChunk& stored, ColumnType type, const Lookup& lookup, std::size_t& longest, Progress& progress)
{
    const bool isText = type != ColumnType::DateTime && type != ColumnType::DateTimeExtended;
    const auto* notes = isText ? stored.notes() : nullptr;
    TextColumnBuilder builder;
    for (std::uint32_t row = 0; row < stored.rowCount(); ++row) {
        const auto before = stored.text(row);
        const auto text = lookup.shown(before);
        longest = std::max(longest, characterCount(text));
        builder.append(text);
        if (notes != nullptr && text == before) builder.noteAs(*notes, row);
        builder.endText();
        if (!progress.advance()) return std::nullopt;
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
    column.setDefaultValue(std::nullopt); // it is one to be stored
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
TableCopy copyOf(const TAdmMDBTable& table, ShownColumns shown, std::vector<LookupNote>& notes)
{
    TableCopy copy{std::make_unique<TAdmMDBTable>(), {}};
    std::vector<RowGroup> groups(table.rows().groups().begin(), table.rows().groups().end());
    TAdmMDBTable::Columns columns;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        auto& column = columns.emplace_back(std::make_unique<TAdmMDBColumn>(*table.columns()[i]));
        column->setIsPrimaryKey(false); // all of a key that is left out, too
        if (shown[i].state == LookupState::Unresolved)
            notes.push_back({LookupNote::Kind::Unresolved, table.name(), column->name()});
        if (shown[i].state != LookupState::Resolved) continue;
        for (std::size_t group = 0; group < groups.size(); ++group)
            groups[group].texts[i] = std::move(shown[i].texts[group]);
        makeTextColumn(*column, shown[i].longest);
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
    made.setLastAutoNumber(table.lastAutoNumber());
    made.setHistories(table.histories());
    made.setColumns(std::move(columns));
    made.setIndices(std::move(indices));
    made.setColumnPrimaryKey();
    auto rows = made.emptyRows();
    for (auto& group : groups)
        rows.append(std::move(group));
    made.setRows(std::move(rows));
    return copy;
}

std::optional<ShownColumn> lookUpColumn(const TAdmMDBTable& table, std::size_t column, Progress& progress)
{
    const auto& stored = *table.columns()[column];
    const auto plan = planOf(stored);
    ShownColumn shown{plan.state};
    if (plan.state != LookupState::Resolved) return shown;
    const auto lookup = lookupOf(stored, plan, progress);
    if (!lookup) return std::nullopt;
    for (const auto& group : table.rows().groups()) {
        auto texts = shownTexts(group.texts[column], stored.type(), *lookup, shown.longest, progress);
        if (!texts) return std::nullopt;
        shown.texts.push_back(std::move(*texts));
    }
    return shown;
}

} // namespace

LookupState lookupState(const TAdmMDBColumn& column) { return planOf(column).state; }

bool hasTableLookup(const TAdmMDBColumn& column)
{
    const auto properties = propertiesOf(column);
    return properties.isLookup && isTableSource(properties);
}

std::uint64_t lookupRowCount(const TAdmMDBTable& table)
{
    std::uint64_t count = 0;
    for (const auto& column : table.columns()) {
        const auto plan = planOf(*column);
        if (plan.state != LookupState::Resolved) continue;
        count += table.rows().rowCount();
        if (plan.table() != nullptr) count += plan.table()->rows().rowCount();
    }
    return count;
}

std::optional<ShownColumns> lookUp(const TAdmMDBTable& table, const LookupObserver& observer)
{
    Progress progress(observer);
    ShownColumns columns;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        auto shown = lookUpColumn(table, i, progress);
        if (!shown) return std::nullopt;
        columns.push_back(std::move(*shown));
    }
    return columns;
}

std::unique_ptr<TAdmMDBTable> tableWithLookupTexts(const TAdmMDBTable& table, ShownColumns columns)
{
    std::vector<LookupNote> notes;
    auto copy = copyOf(table, std::move(columns), notes);
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

LookupCopy fileWithLookupTexts(const TAdmMDBFile& file, const LookupObserver& observer)
{
    LookupCopy copy{std::make_unique<TAdmMDBFile>(), {}};
    std::map<std::string, std::vector<std::string>, std::less<>> replaced; // columns by table
    TAdmMDBFile::Tables tables;
    for (const auto& table : file.tables()) {
        auto shown = lookUp(*table, observer);
        if (!shown) return {nullptr, {}};
        auto made = copyOf(*table, std::move(*shown), copy.notes);
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
