// SPDX-License-Identifier: MIT
#include "cli/InfoJson.h"

#include "cli/DamageOutput.h"
#include "model/ConnectionText.h"

#include <nlohmann/json.hpp>

namespace vellumo {

namespace {

using Json = nlohmann::ordered_json;

template <typename T> Json orNull(const std::optional<T>& value) { return value ? Json(*value) : Json(); }
// Of a number that is negative where it does not apply.
Json orNull(std::int32_t number) { return number < 0 ? Json() : Json(number); }

template <typename List, typename ToJson> Json arrayOf(const List& list, ToJson toJson)
{
    auto json = Json::array();
    for (const auto& item : list)
        json.push_back(toJson(*item));
    return json;
}

Json propertiesJson(const jet::PropertyList& properties)
{
    auto json = Json::object();
    for (const auto& [name, value] : properties) {
        const auto* text = std::get_if<std::string>(&value);
        if (text != nullptr)
            json[name] = withoutPasswords(*text);
        else
            std::visit([&](const auto& typed) { json[name] = typed; }, value);
    }
    return json;
}

// As the engine that first wrote such files is called.
std::string_view formatName(int version)
{
    constexpr std::string_view inOrderOfVersions[] = {
        "Jet 3", "Jet 4", "ACE 12", "ACE 14", "ACE 15", "ACE 16", "ACE 17"};
    const bool isKnown = version >= 0 && version < std::ssize(inOrderOfVersions);
    return isKnown ? inOrderOfVersions[version] : "";
}

Json fileJson(const TAdmMDBFile& file)
{
    const auto& format = file.format();
    return {{"name", file.label()}, {"path", file.fullPath()}, {"bytes", file.size()},
        {"created", isoText(file.createDate())}, {"modified", isoText(file.modifyDate())},
        {"format", formatName(format.version)}, {"formatVersion", format.version}, {"codePage", format.codePage},
        {"encrypted", format.isEncrypted}};
}

Json columnJson(const TAdmMDBColumn& column)
{
    return {{"name", column.name()}, {"type", column.dataType()}, {"size", orNull(column.fieldSize())},
        {"primaryKey", column.isPrimaryKey()}, {"required", orNull(column.required())},
        {"allowZeroLength", orNull(column.allowZeroLength())}, {"autoNumber", column.isAutoNumber()},
        {"hyperlink", column.isHyperlink()}, {"calculated", column.isCalculatedType()},
        {"precision", orNull(column.precision())}, {"scale", orNull(column.scale())},
        {"properties", propertiesJson(column.properties())}};
}

Json indexJson(const TAdmMDBIndex& index)
{
    auto keys = Json::array();
    for (const auto& key : index.keys())
        keys.push_back({{"name", key.name}, {"ascending", key.isAscending}});
    return {{"name", index.name()}, {"primary", index.isPrimaryKey()}, {"unique", index.isUnique()}, {"columns", keys}};
}

Json relationJson(const TAdmMDBForeignKey& relation)
{
    return {{"name", relation.name()}, {"table", relation.referencingTable()},
        {"columns", relation.referencingColumns()}, {"referencedTable", relation.referencedTable()},
        {"referencedColumns", relation.referencedColumns()}, {"enforced", relation.isEnforced()},
        {"cascadeUpdate", relation.onUpdateCascade()}, {"cascadeDelete", relation.onDeleteCascade()}};
}

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

// Without those of system tables, which are not listed either.
std::vector<const TAdmMDBForeignKey*> listedRelations(const TAdmMDBFile& file)
{
    std::vector<const TAdmMDBForeignKey*> relations;
    for (const auto& relation : file.allForeignKeys())
        if (!relation->referencingTable().starts_with("MSys")) relations.push_back(relation.get());
    return relations;
}

void addContents(const FileContents& contents, Json& json)
{
    auto& queries = json["queries"] = Json::array();
    for (const auto& query : contents.queries)
        queries.push_back({{"name", query.name}, {"type", queryKindName(query.kind)}, {"sql", textOrNull(query.sql)}});
    auto& links = json["links"] = Json::array();
    for (const auto& link : contents.links) {
        auto columns = Json::array();
        for (const auto& column : link.columns)
            columns.push_back({{"name", column.name}, {"type", factsOf(column.type).accessName},
                {"primaryKey", column.isPrimaryKey}});
        links.push_back({{"name", link.name}, {"kind", link.kind}, {"source", textOrNull(link.source)},
            {"connect", textOrNull(link.connect)}, {"columns", std::move(columns)}});
    }
    auto& objects = json["objects"] = Json::array();
    for (const auto& object : contents.objects)
        objects.push_back({{"kind", objectKindName(object.kind)}, {"name", object.name},
            {"created", textOrNull(object.created)}, {"modified", textOrNull(object.modified)}});
}

} // namespace

Json infoJson(const TAdmMDBFile& file)
{
    const auto tableJson = [](const TAdmMDBTable& table) -> Json {
        return {{"name", table.name()}, {"rows", table.rows().rowCount()}, {"columns", table.columns().size()}};
    };
    Json json = {{"file", fileJson(file)}, {"tables", arrayOf(file.tables(), tableJson)},
        {"relations", arrayOf(listedRelations(file), relationJson)}};
    addContents(file.contents(), json);
    json["damage"] = damageJson(file);
    return json;
}

Json infoJson(const TAdmMDBTable& table)
{
    const Json facts = {{"name", table.name()}, {"rows", table.rows().rowCount()},
        {"description", orNull(table.description())}, {"properties", propertiesJson(table.properties())}};
    return {{"table", facts}, {"columns", arrayOf(table.columns(), columnJson)},
        {"indexes", arrayOf(table.indices(), indexJson)}, {"relations", arrayOf(table.foreignKeys(), relationJson)},
        {"damage", damageJson(*table.file(), {&table.name(), 1})}};
}

} // namespace vellumo
