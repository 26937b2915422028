// SPDX-License-Identifier: MIT
// The keys and relations of an exact schema.
#include "export/exact/ExactCells.h"
#include "export/sql/ExactSchema.h"
#include "model/TAdmMDBFile.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::size_t numberBytes = 8; // more than enough for what is no text
constexpr std::size_t longestPrefix = 255;

std::vector<std::size_t> columnsOf(const std::vector<ExactKey>& keys)
{
    std::vector<std::size_t> columns;
    for (const auto& key : keys)
        columns.push_back(key.column);
    return columns;
}

bool isLong(const ExactColumn& column)
{
    const auto kind = exactKind(column.column->type());
    return column.column->type() == ColumnType::Memo || kind == ExactKind::Object;
}

bool hasNulls(const ExactTable& table, std::size_t column)
{
    const auto& survey = table.surveys[column];
    return survey.nulls + survey.unreadable + survey.notANumbers + survey.infinities > 0;
}

bool sameColumns(std::vector<std::size_t> a, std::vector<std::size_t> b)
{
    std::ranges::sort(a);
    std::ranges::sort(b);
    return a == b;
}

} // namespace

void ExactSchema::addKeys(ExactTable& made)
{
    TakenNames ownNames;
    auto& taken = m_facts.sharesIndexNames ? m_tableNames : ownNames;
    for (const auto& index : made.table->indices())
        if (index->isPrimaryKey() && made.primaryKey.empty()) setPrimaryKey(*index, made);
    for (const auto& index : made.table->indices()) {
        const bool isTaken =
            index->isPrimaryKey() && sameColumns(columnsOf(keysOf(*index, made)), columnsOf(made.primaryKey));
        if (!isTaken && m_options.includeIndexes) addIndex(*index, taken, made);
    }
    setIdentity(made);
    if (!made.identity || !m_facts.identityNeedsKey) return;
    const auto begins = [&](const std::vector<ExactKey>& keys) {
        return !keys.empty() && keys.front().column == *made.identity;
    };
    if (begins(made.primaryKey)) return;
    made.indexes.insert(
        made.indexes.begin(), {exactName("AutoNumber", NameUse::Other, m_facts, taken), {{*made.identity}}});
}

std::vector<ExactKey> ExactSchema::keysOf(const TAdmMDBIndex& index, const ExactTable& made) const
{
    std::vector<ExactKey> keys;
    for (const auto& key : index.keys())
        if (const auto column = columnIndex(*made.table, key.name)) keys.push_back({*column, key.isAscending});
    return keys;
}

bool ExactSchema::repeats(const std::vector<ExactKey>& keys, const ExactTable& made, const std::string& index)
{
    const auto comparison = m_facts.padsBlanks ? KeyComparison::PaddedBlanks : KeyComparison::Exact;
    const auto count = countRepeats(*made.table, columnsOf(keys), comparison);
    note(ExactLoss::RepeatedKeys, made.table->name(), "", count, index);
    return count > 0;
}

void ExactSchema::setPrimaryKey(const TAdmMDBIndex& index, ExactTable& made)
{
    ExactIndex key{index.name(), keysOf(index, made), true};
    if (key.keys.empty()) return;
    for (const auto& part : key.keys) {
        if (!hasNulls(made, part.column)) continue;
        return note(ExactLoss::NullsAgainstRule, made.table->name(), made.table->columns()[part.column]->name(),
            made.surveys[part.column].nulls + made.surveys[part.column].unreadable);
    }
    if (!fits(key, made) || !key.isUnique || repeats(key.keys, made, index.name())) return;
    made.primaryKey = key.keys;
    for (const auto& part : key.keys)
        made.columns[part.column].isNotNull = true;
}

void ExactSchema::addIndex(const TAdmMDBIndex& index, TakenNames& taken, ExactTable& made)
{
    ExactIndex added{{}, keysOf(index, made), index.isUnique()};
    if (added.keys.empty() || !fits(added, made)) {
        made.remarks.push_back("index " + index.name());
        return note(ExactLoss::IndexLeftOut, made.table->name(), "", 1, index.name());
    }
    if (index.isUnique() && !added.isUnique) note(ExactLoss::IndexShortened, made.table->name(), "", 1, index.name());
    // That of a primary key has been looked at.
    if (added.isUnique && !index.isPrimaryKey()) added.isUnique = !repeats(added.keys, made, index.name());
    if (index.isPrimaryKey()) added.isUnique = false;
    const auto wanted = m_facts.sharesIndexNames ? made.table->name() + '_' + index.name() : index.name();
    added.name = exactName(wanted, NameUse::Other, m_facts, taken);
    made.indexes.push_back(std::move(added));
}

std::size_t ExactSchema::keyBytes(const ExactKey& key, const ExactTable& made) const
{
    const auto& column = *made.columns[key.column].column;
    const auto kind = exactKind(column.type());
    if (kind == ExactKind::Binary) return made.surveys[key.column].longestBytes;
    if (kind != ExactKind::Text && kind != ExactKind::Object) return numberBytes;
    const auto stated = column.fieldSize() > 0 ? static_cast<std::size_t>(column.fieldSize()) : 0;
    if (m_facts.bytesInCharacter == 0) return made.surveys[key.column].longestBytes;
    return m_facts.bytesInCharacter * std::max(stated, made.surveys[key.column].longestText);
}

// False when the server cannot have the index. One that is too long may be made of the beginnings of texts.
bool ExactSchema::fits(ExactIndex& index, const ExactTable& made)
{
    std::size_t total = 0;
    std::size_t texts = 0;
    bool isLongText = false;
    for (const auto& key : index.keys) {
        const bool isText = exactKind(made.columns[key.column].column->type()) == ExactKind::Text;
        const bool isLongKey = isLong(made.columns[key.column]);
        if (isLongKey && !m_facts.indexesMemos && (!m_facts.hasPrefixKeys || !isText)) return false;
        isLongText = isLongText || (isLongKey && !m_facts.indexesMemos);
        texts += isText ? 1 : 0;
        total += keyBytes(key, made);
    }
    if (!isLongText && (m_facts.longestKeyBytes == 0 || total <= m_facts.longestKeyBytes)) return true;
    if (!m_facts.hasPrefixKeys || texts == 0) return false;
    const auto room = (m_facts.longestKeyBytes - numberBytes * (index.keys.size() - texts)) / m_facts.bytesInCharacter;
    for (auto& key : index.keys)
        if (exactKind(made.columns[key.column].column->type()) == ExactKind::Text)
            key.prefixLength = std::min(longestPrefix, room / texts);
    index.isUnique = false;
    return true;
}

// A server has one at most, as Access does.
void ExactSchema::setIdentity(ExactTable& made)
{
    for (std::size_t c = 0; c < made.columns.size(); ++c) {
        auto& column = made.columns[c];
        if (!column.column->isAutoNumber() || exactKind(column.column->type()) != ExactKind::Integer || made.identity)
            continue;
        const bool isSoleKey = made.primaryKey.size() == 1 && made.primaryKey.front().column == c;
        if (hasNulls(made, c) || (m_facts.identityIsPrimaryKey && !isSoleKey)) {
            note(ExactLoss::NumberingLost, made.table->name(), column.column->name());
            continue;
        }
        made.identity = c;
        column.isIdentity = true;
        column.isNotNull = true;
        column.defaultValue.clear();
        made.lastNumber = std::max(made.surveys[c].largest, made.table->lastAutoNumber());
    }
}

bool ExactSchema::isInKey(const TAdmMDBColumn& column) const
{
    const auto& table = *column.table();
    const auto names = [&](const auto& list, auto nameOf) {
        return std::ranges::any_of(list, [&](const auto& item) { return nameOf(item) == column.name(); });
    };
    for (const auto& index : table.indices())
        if (names(index->keys(), [](const IndexKey& key) -> const std::string& { return key.name; })) return true;
    const auto self = [](const std::string& name) -> const std::string& { return name; };
    for (const auto& relation : m_file.allForeignKeys()) {
        if (relation->referencingTable() == table.name() && names(relation->referencingColumns(), self)) return true;
        if (relation->referencedTable() == table.name() && names(relation->referencedColumns(), self)) return true;
    }
    return false;
}

void ExactSchema::addRelations()
{
    TakenNames taken;
    for (const auto& relation : m_file.allForeignKeys())
        if (relation->isEnforced()) addRelation(*relation, taken);
}

void ExactSchema::leaveOut(ExactLoss loss, ExactTable& table, std::size_t count, const std::string& relation)
{
    table.remarks.push_back("relation " + relation);
    note(loss, table.table->name(), "", count, relation);
}

void ExactSchema::addRelation(const TAdmMDBForeignKey& relation, TakenNames& taken)
{
    const auto tableNamed = [&](const std::string& name) {
        return std::ranges::find_if(m_tables, [&](const ExactTable& table) { return table.table->name() == name; });
    };
    const auto child = tableNamed(relation.referencingTable());
    const auto parent = tableNamed(relation.referencedTable());
    if (child == m_tables.end() || parent == m_tables.end()) return;
    auto columns = columnIndexes(*child->table, relation.referencingColumns());
    auto referenced = columnIndexes(*parent->table, relation.referencedColumns());
    const bool isSound = columns && referenced && !columns->empty() && columns->size() == referenced->size();
    const auto key = isSound ? uniqueKey(*parent, *referenced) : std::vector<std::size_t>();
    if (key.empty()) return leaveOut(ExactLoss::RelationLeftOut, *child, 1, relation.name());
    ExactRelation added{{}, {}, static_cast<std::size_t>(parent - m_tables.begin()), key, relation.onUpdateCascade(),
        relation.onDeleteCascade()};
    // In the order of the key, which is what some servers look for.
    for (const auto column : key) {
        const auto pair = static_cast<std::size_t>(std::ranges::find(*referenced, column) - referenced->begin());
        added.columns.push_back((*columns)[pair]);
        if (child->columns[added.columns.back()].column->type() != parent->columns[column].column->type())
            return leaveOut(ExactLoss::RelationLeftOut, *child, 1, relation.name());
    }
    const auto orphans =
        countOrphans(*child->table, added.columns, *parent->table, added.referencedColumns, KeyComparison::Exact);
    added.isTrusted = orphans == 0;
    if (!added.isTrusted && m_facts.untrustedRelation.empty())
        return leaveOut(ExactLoss::RelationUnchecked, *child, orphans, relation.name());
    note(ExactLoss::RelationUnchecked, child->table->name(), "", orphans, relation.name());
    added.name = exactName(relation.name(), NameUse::Other, m_facts, taken);
    limitCascades(relation, added, *child);
    if (added.cascadesUpdates && !m_facts.checksCascades)
        for (const auto column : added.columns)
            child->columns[column].isNotEmpty = false;
    child->relations.push_back(std::move(added));
}

// The columns of a unique key over these, in its order; empty when the server will have none that it could rely on.
std::vector<std::size_t> ExactSchema::uniqueKey(const ExactTable& table, const std::vector<std::size_t>& columns) const
{
    auto primary = columnsOf(table.primaryKey);
    if (sameColumns(primary, columns)) return primary;
    const bool hasNullable =
        std::ranges::any_of(columns, [&](std::size_t column) { return !table.columns[column].isNotNull; });
    if (hasNullable && !m_facts.repeatsNullsInUnique) return {};
    for (const auto& index : table.indexes) {
        auto keys = columnsOf(index.keys);
        if (index.isUnique && sameColumns(keys, columns)) return keys;
    }
    return {};
}

void ExactSchema::limitCascades(const TAdmMDBForeignKey& relation, ExactRelation& added, const ExactTable& child)
{
    const bool updates = added.cascadesUpdates;
    const bool deletes = added.cascadesDeletes;
    if (!m_facts.hasOnUpdate) added.cascadesUpdates = false;
    if (m_facts.takesOneCascadePath && (updates || deletes) && !isOnlyCascade(added, child))
        added.cascadesUpdates = added.cascadesDeletes = false;
    if (updates != added.cascadesUpdates || deletes != added.cascadesDeletes)
        note(ExactLoss::CascadeLost, child.table->name(), "", 1, relation.name());
}

// Whether no row could be reached by two cascades: no table has two that reach it, and none comes back to itself.
bool ExactSchema::isOnlyCascade(const ExactRelation& added, const ExactTable& child) const
{
    const auto cascade = [](const ExactTable& table) {
        return std::ranges::find_if(
            table.relations, [](const ExactRelation& r) { return r.cascadesUpdates || r.cascadesDeletes; });
    };
    if (cascade(child) != child.relations.end()) return false;
    const auto* table = &m_tables[added.referencedTable];
    for (std::size_t steps = 0; steps <= m_tables.size(); ++steps) {
        if (table == &child) return false;
        const auto next = cascade(*table);
        if (next == table->relations.end()) return true;
        table = &m_tables[next->referencedTable];
    }
    return false;
}

} // namespace vellumo
