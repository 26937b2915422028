// SPDX-License-Identifier: MIT
#include "browser/InformationPane.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>

namespace vellumo {

namespace {

struct TypeKeys {
    const char* identifier;
    const char* barLabel;
    const char* paneTitle;
    const char* emptyText;
};

// "forigen" is how the text is known to the message table.
constexpr std::array<TypeKeys, 6> typeKeys = {{
    {"InfoView_File", messageKey("File"), messageKey("File Information"), messageKey("No files selected")},
    {"InfoView_Table", messageKey("Table"), messageKey("Table Information"), nullptr},
    {"InfoView_Column", messageKey("Column"), messageKey("Column Information"), messageKey("No columns")},
    {"InfoView_Index", messageKey("Index"), messageKey("Index Information"), messageKey("No indices")},
    {"InfoView_Relation", messageKey("Relation"), messageKey("Relation Information"), messageKey("No forigen keys")},
    {"InfoView_Contents", messageKey("Contents"), messageKey("File Contents"),
        messageKey("No queries, linked tables or other objects")},
}};

InformationPane::Entry entryOf(const TAdmMDBObject& object)
{
    InformationPane::Entry entry{object.name(), {}};
    for (const auto& [id, value] : object.information())
        entry.properties.push_back({infoLabel(id), infoText(value)});
    return entry;
}

// Of a file that is not there only the name and the place are known.
InformationPane::Entry missingEntry(const TAdmMDBFile& file)
{
    InformationPane::Entry entry{file.name(), {}};
    for (const auto& [id, value] : file.information())
        if (id == PropertyId::Name || id == PropertyId::Where)
            entry.properties.push_back({infoLabel(id), infoText(value)});
    entry.properties.push_back({localized("State"), localized("The file is not there any more.")});
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

void add(InformationPane::Entry& entry, const char* label, const std::string& value)
{
    if (!value.empty()) entry.properties.push_back({localized(label), value});
}

// A form and a report may have one name.
InformationPane::Entry contentsEntry(const std::string& name, const std::string& type, std::string text = {})
{
    InformationPane::Entry entry{format("%@ (%@)", {name, type}), {}, std::move(text)};
    add(entry, messageKey("Name"), name);
    add(entry, messageKey("Type"), type);
    return entry;
}

InformationPane::Entry entryOf(const SavedQuery& query)
{
    return contentsEntry(query.name, queryKindText(query.kind), query.sql);
}

InformationPane::Entry entryOf(const LinkedTable& link)
{
    auto entry = contentsEntry(link.name, localizedFormat("Linked Table, %@", {link.kind}));
    add(entry, messageKey("Source table"), link.source);
    add(entry, messageKey("Connection"), link.connect);
    for (const auto& column : link.columns)
        entry.properties.push_back({column.name, std::string(factsOf(column.type).accessName)});
    return entry;
}

InformationPane::Entry entryOf(const ProgramObject& object)
{
    const auto dayAndTime = [](std::string date) {
        std::ranges::replace(date, 'T', ' ');
        return date;
    };
    auto entry = contentsEntry(object.name, objectKindText(object.kind));
    add(entry, messageKey("Created"), dayAndTime(object.created));
    add(entry, messageKey("Modified"), dayAndTime(object.modified));
    return entry;
}

} // namespace

InformationTypeDescription describe(InformationType type)
{
    const auto& keys = typeKeys[static_cast<std::size_t>(type)];
    return {keys.identifier, localized(keys.barLabel), localized(keys.paneTitle),
        keys.emptyText == nullptr ? std::string() : localized(keys.emptyText)};
}

bool InformationPane::isTypeShown(Type type) const
{
    if (type == Type::Contents) return !m_isTableShown && !content(type).entries.empty();
    return (type != Type::File) == m_isTableShown;
}

void InformationPane::showFileType()
{
    m_isTableShown = false;
    m_selectedType = Type::File;
}

void InformationPane::showTableTypes()
{
    m_isTableShown = true;
    if (m_selectedType == Type::File || m_selectedType == Type::Contents) m_selectedType = Type::Table;
}

void InformationPane::selectType(Type type)
{
    if (isTypeShown(type)) m_selectedType = type;
}

void InformationPane::refreshFileInfo(const TAdmMDBFile* file, bool isMissing)
{
    content(Type::File) = {};
    if (file != nullptr) content(Type::File).entries.push_back(isMissing ? missingEntry(*file) : entryOf(*file));
}

void InformationPane::refreshContentsInfo(const TAdmMDBFile* file)
{
    auto& entries = content(Type::Contents).entries;
    content(Type::Contents) = {};
    const auto addAll = [&](const auto& list) {
        for (const auto& item : list)
            entries.push_back(entryOf(item));
    };
    if (file != nullptr) {
        addAll(file->contents().queries);
        addAll(file->contents().links);
        addAll(file->contents().objects);
    }
    if (entries.empty() && m_selectedType == Type::Contents) m_selectedType = Type::File;
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

const InformationPane::Entry* InformationPane::selectedEntryOf(Type type) const
{
    const auto& [entries, selected] = content(type);
    return entries.empty() ? nullptr : &entries[selected];
}

const std::vector<PropertyRow>& InformationPane::properties(Type type) const
{
    static const std::vector<PropertyRow> none;
    const auto& [entries, selected] = content(type);
    return entries.empty() ? none : entries[selected].properties;
}

} // namespace vellumo
