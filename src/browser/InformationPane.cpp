// SPDX-License-Identifier: MIT
#include "browser/InformationPane.h"

#include "text/Messages.h"

namespace vellumo {

namespace {

struct TypeKeys {
    const char* identifier;
    const char* barLabel;
    const char* paneTitle;
    const char* emptyText;
};

// "forigen" is how the text is known to the message table.
constexpr std::array<TypeKeys, 5> typeKeys = {{
    {"InfoView_File", messageKey("File"), messageKey("File Information"), messageKey("No files selected")},
    {"InfoView_Table", messageKey("Table"), messageKey("Table Information"), nullptr},
    {"InfoView_Column", messageKey("Column"), messageKey("Column Information"), messageKey("No columns")},
    {"InfoView_Index", messageKey("Index"), messageKey("Index Information"), messageKey("No indices")},
    {"InfoView_Relation", messageKey("Relation"), messageKey("Relation Information"), messageKey("No forigen keys")},
}};

InformationPane::Entry entryOf(const TAdmMDBObject& object)
{
    InformationPane::Entry entry{object.name(), {}};
    for (const auto& [id, value] : object.information())
        entry.properties.push_back({infoLabel(id), infoText(value)});
    return entry;
}

template <typename List> std::vector<InformationPane::Entry> entriesOf(const List& objects)
{
    std::vector<InformationPane::Entry> entries;
    entries.reserve(objects.size());
    for (const auto& object : objects)
        entries.push_back(entryOf(*object));
    return entries;
}

} // namespace

InformationTypeDescription describe(InformationType type)
{
    const auto& keys = typeKeys[static_cast<std::size_t>(type)];
    return {keys.identifier, localized(keys.barLabel), localized(keys.paneTitle),
        keys.emptyText == nullptr ? std::string() : localized(keys.emptyText)};
}

bool InformationPane::isTypeShown(Type type) const { return (type != Type::File) == m_isTableShown; }

void InformationPane::showFileType()
{
    m_isTableShown = false;
    m_selectedType = Type::File;
}

void InformationPane::showTableTypes()
{
    m_isTableShown = true;
    if (m_selectedType == Type::File) m_selectedType = Type::Table;
}

void InformationPane::selectType(Type type)
{
    if (isTypeShown(type)) m_selectedType = type;
}

void InformationPane::refreshFileInfo(const TAdmMDBFile* file)
{
    content(Type::File) = {};
    if (file != nullptr) content(Type::File).entries.push_back(entryOf(*file));
}

void InformationPane::refreshTableInfo(const TAdmMDBTable* table)
{
    content(Type::Table) = {};
    if (table != nullptr) content(Type::Table).entries.push_back(entryOf(*table));
}

void InformationPane::refreshColumnInfo(const TAdmMDBTable* table)
{
    content(Type::Column) = {};
    if (table != nullptr) content(Type::Column).entries = entriesOf(table->columns());
}

void InformationPane::refreshIndexInfo(const TAdmMDBTable* table)
{
    content(Type::Index) = {};
    if (table != nullptr) content(Type::Index).entries = entriesOf(table->indices());
}

void InformationPane::refreshRelationInfo(const TAdmMDBTable* table)
{
    content(Type::Relation) = {};
    if (table != nullptr) content(Type::Relation).entries = entriesOf(table->foreignKeys());
}

void InformationPane::selectEntry(Type type, std::size_t index)
{
    if (index < content(type).entries.size()) content(type).selected = index;
}

const std::vector<PropertyRow>& InformationPane::properties(Type type) const
{
    static const std::vector<PropertyRow> none;
    const auto& [entries, selected] = content(type);
    return entries.empty() ? none : entries[selected].properties;
}

} // namespace vellumo
