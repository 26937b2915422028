// SPDX-License-Identifier: MIT
#include "cli/InfoJson.h"

#include "cli/DamageOutput.h"

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
    for (const auto& [name, value] : properties)
        std::visit([&](const auto& typed) { json[name] = typed; }, value);
    return json;
}

Json fileJson(const TAdmMDBFile& file)
{
    const auto& format = file.format();
    return {{"name", file.label()}, {"path", file.fullPath()}, {"bytes", file.size()},
        {"created", isoText(file.createDate())}, {"modified", isoText(file.modifyDate())},
        {"format", format.version == 0 ? "Jet 3" : "Jet 4"}, {"formatVersion", format.version},
        {"codePage", format.codePage}, {"encrypted", format.isEncrypted}};
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

} // namespace

Json infoJson(const TAdmMDBFile& file)
{
    const auto tableJson = [](const TAdmMDBTable& table) -> Json {
        return {{"name", table.name()}, {"rows", table.rows().rowCount()}, {"columns", table.columns().size()}};
    };
    return {{"file", fileJson(file)}, {"tables", arrayOf(file.tables(), tableJson)},
        {"relations", arrayOf(file.allForeignKeys(), relationJson)}, {"damage", damageJson(file)}};
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
